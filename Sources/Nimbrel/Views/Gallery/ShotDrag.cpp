#include "Views/Gallery/ShotDrag.h"

#include "Platform/ImageFile.h"
#include "Views/Gallery/CellPainter.h"

#include <QByteArray>
#include <QPainter>
#include <QUrl>

#include <utility>

namespace Nimbrel {

namespace {

constexpr QSize previewSize(160, 110);

QString pictureFormat() { return QStringLiteral("application/x-qt-image"); }

/// The name of a file is bytes, which QUrl keeps when they come percent-encoded.
QUrl urlOf(const std::string& path) {
  const auto bytes = QByteArray::fromStdString(path).toPercentEncoding(QByteArrayLiteral("/"));
  return QUrl::fromEncoded("file://" + bytes, QUrl::StrictMode);
}

class ShotData final : public QMimeData {
 public:
  explicit ShotData(std::string path) : path_(std::move(path)) { setUrls({urlOf(path_)}); }

  [[nodiscard]] QStringList formats() const override { return QMimeData::formats() << pictureFormat(); }
  [[nodiscard]] bool hasFormat(const QString& format) const override {
    return format == pictureFormat() || QMimeData::hasFormat(format);
  }

 protected:
  [[nodiscard]] QVariant retrieveData(const QString& format, QMetaType type) const override {
    if (format != pictureFormat()) return QMimeData::retrieveData(format, type);
    // Most that take a file never ask.
    if (picture_.isNull()) picture_ = ImageFile::picture(path_);
    return picture_.isNull() ? QVariant() : QVariant(picture_);
  }

 private:
  std::string path_;
  mutable QImage picture_;
};

}  // namespace

std::unique_ptr<QMimeData> dragData(const Store& store, const Shot& shot) {
  if (store.isProtected(shot)) return nullptr;
  return std::make_unique<ShotData>(shot.path);
}

QPixmap dragPreview(const QPixmap* picture, double scale) {
  QPixmap preview(previewSize * scale);
  preview.setDevicePixelRatio(scale);
  preview.fill(Qt::transparent);
  QPainter painter(&preview);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  if (picture == nullptr) {
    CellPainter::paintMissing(painter, QRect(QPoint(), previewSize));
    return preview;
  }
  const auto size = picture->deviceIndependentSize().scaled(previewSize, Qt::KeepAspectRatio);
  const QRectF place(QPointF((previewSize.width() - size.width()) / 2, (previewSize.height() - size.height()) / 2),
                     size);
  painter.drawPixmap(place, *picture, QRectF(picture->rect()));
  return preview;
}

}  // namespace Nimbrel
