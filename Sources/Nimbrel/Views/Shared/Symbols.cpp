#include "Views/Shared/Symbols.h"

#include "Foundation/Log.h"
#include "Views/Shared/Painting.h"

#include <QFile>
#include <QIconEngine>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <cmath>

namespace Nimbrel::Symbols {

namespace {

/// The vectors in that colour; empty when the name is unknown.
QByteArray vectors(const QString& name, const QColor& color) {
  QFile file(QStringLiteral(":/Symbols/%1.svg").arg(name));
  if (name.contains(QLatin1Char('/')) || !file.open(QIODevice::ReadOnly)) return {};
  return file.readAll().replace("currentColor", color.name().toLatin1());
}

QPixmap drawn(const QByteArray& vectors, int pixels, const QColor& color) {
  QSvgRenderer renderer(vectors);
  QPixmap pixmap(pixels, pixels);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setOpacity(color.alphaF());
  renderer.render(&painter);
  return pixmap;
}

class SymbolEngine final : public QIconEngine {
 public:
  SymbolEngine(QString name, IconTokens tokens) : name_(std::move(name)), tokens_(tokens) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State /*state*/) override {
    Symbols::paint(*painter, place, name_, std::min(place.width(), place.height()), colorOf(mode));
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    return scaledPixmap(size, mode, state, 1);
  }
  /// `size` is in pixels of the screen here.
  QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/, qreal scale) override {
    return Symbols::pixmap(name_, std::min(size.width(), size.height()) / scale, colorOf(mode), scale);
  }
  [[nodiscard]] QIconEngine* clone() const override { return new SymbolEngine(*this); }
  bool isNull() override { return false; }

 private:
  [[nodiscard]] QColor colorOf(QIcon::Mode mode) const {
    if (mode == QIcon::Disabled) return themeColor(tokens_.disabled);
    return themeColor(mode == QIcon::Selected ? tokens_.selected : tokens_.normal);
  }

  QString name_;
  IconTokens tokens_;
};

}  // namespace

QPixmap pixmap(const QString& name, double size, const QColor& color, double scale) {
  const auto pixels = static_cast<int>(std::lround(size * scale));
  if (pixels <= 0) return {};
  const auto key = QStringLiteral("symbol %1 %2 %3 %4")
                       .arg(name, color.name(QColor::HexArgb), QString::number(pixels), QString::number(scale));
  QPixmap kept;
  if (QPixmapCache::find(key, &kept)) return kept;
  const auto content = vectors(name, color);
  if (content.isEmpty()) {
    Log::write("There is no symbol \"" + name.toStdString() + "\"");
    return {};
  }
  kept = drawn(content, pixels, color);
  kept.setDevicePixelRatio(scale);
  QPixmapCache::insert(key, kept);
  return kept;
}

void paint(QPainter& painter, const QRectF& place, const QString& name, double size, const QColor& color) {
  const auto scale = Painting::scaleOf(painter);
  const auto picture = pixmap(name, size, color, scale);
  // On whole pixels of the screen, or its lines would blur.
  const auto onGrid = [scale](double value) { return std::round(value * scale) / scale; };
  painter.drawPixmap(QPointF(onGrid(place.center().x() - size / 2), onGrid(place.center().y() - size / 2)), picture);
}

QIcon icon(const QString& name, IconTokens tokens) { return QIcon(new SymbolEngine(name, tokens)); }

}  // namespace Nimbrel::Symbols
