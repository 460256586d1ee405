#include "Linux/Desktop/QtPasteboard.h"

#include "Linux/Desktop/FileUri.h"
#include "Linux/X11/X11ClipboardManager.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <utility>

namespace Nimbrel {

namespace {

/// Waits until what we copied is safe. Belongs to whoever asked.
class HandOver final : public QObject {
 public:
  HandOver(QObject* context, const std::shared_ptr<XcbConnection>& x11, std::function<void()> then)
      : QObject(context), then_(std::move(then)) {
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &HandOver::look);
    // Later, since whoever asked may be about to end the event loop in answer.
    QMetaObject::invokeMethod(this, &HandOver::look, Qt::QueuedConnection);
    if (!x11) return;
    manager_ = std::make_unique<X11ClipboardManager>(x11);
    connect(manager_.get(), &X11ClipboardManager::saved, this, &HandOver::end);
    QMetaObject::invokeMethod(manager_.get(), &X11ClipboardManager::save, Qt::QueuedConnection);
  }

 private:
  void look() {
    if (!QGuiApplication::clipboard()->ownsClipboard()) end();
  }
  void end() {
    deleteLater();
    if (const auto then = std::exchange(then_, nullptr)) then();
  }

  std::function<void()> then_;
  std::unique_ptr<X11ClipboardManager> manager_;
};

class QtPasteboard final : public Pasteboard {
 public:
  explicit QtPasteboard(std::shared_ptr<XcbConnection> x11) : x11_(std::move(x11)) {}

  void writePicture(const QImage& picture) override { QGuiApplication::clipboard()->setImage(picture); }

  void writeText(std::string_view text) override {
    auto* clipboard = QGuiApplication::clipboard();
    if (text.empty()) return clipboard->clear();
    clipboard->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
  }

  void writeFile(const std::string& path) override {
    const auto uri = QByteArray::fromStdString(fileUri(path));
    auto offered = std::make_unique<QMimeData>();
    offered->setData(QStringLiteral("text/uri-list"), uri + "\r\n");
    // Some file managers look for what they call this alone.
    offered->setData(QStringLiteral("x-special/gnome-copied-files"), "copy\n" + uri);
    QGuiApplication::clipboard()->setMimeData(offered.release());
  }

  void handOver(QObject* context, std::function<void()> then) override { new HandOver(context, x11_, std::move(then)); }

 private:
  std::shared_ptr<XcbConnection> x11_;
};

}  // namespace

std::unique_ptr<Pasteboard> makeQtPasteboard(std::shared_ptr<XcbConnection> x11) {
  return std::make_unique<QtPasteboard>(std::move(x11));
}

}  // namespace Nimbrel
