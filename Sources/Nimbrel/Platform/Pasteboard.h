#pragma once

#include <QImage>
#include <QObject>

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace Nimbrel {

/// The clipboard of the desktop. Other programs fetch what was copied from this process when they need it. Main thread
/// only.
class Pasteboard {
 public:
  virtual ~Pasteboard() = default;

  /// Offers the picture, and nothing else, in place of what was there.
  virtual void writePicture(const QImage& picture) = 0;

  /// Offers the text, plain, and nothing else, in place of what was there. An empty text leaves nothing there.
  virtual void writeText(std::string_view text) = 0;

  /// Offers the file for pasting in a file manager, in place of what was there. The name is bytes.
  virtual void writeFile(const std::string& path) = 0;

  /// Calls `then`, in a later turn of the event loop, once nothing that was copied here would be lost with this
  /// process: a clipboard manager has it, or another program has taken the clipboard, which may take for ever. To be
  /// asked once, before the event loop ends; nothing is called once `context` is gone.
  virtual void handOver(QObject* context, std::function<void()> then) = 0;
};

/// Where there is no clipboard: what is written is dropped.
class NullPasteboard final : public Pasteboard {
 public:
  void writePicture(const QImage&) override {}
  void writeText(std::string_view) override {}
  void writeFile(const std::string&) override {}
  void handOver(QObject* context, std::function<void()> then) override {
    QMetaObject::invokeMethod(context, std::move(then), Qt::QueuedConnection);
  }
};

}  // namespace Nimbrel
