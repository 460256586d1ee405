#pragma once

#include "Platform/Pasteboard.h"

#include <QImage>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Nimbrel::Testing {

/// A clipboard that nobody else sees. Holds a picture, a text, a file or nothing.
class FakePasteboard final : public Pasteboard {
 public:
  void writePicture(const QImage& newPicture) override {
    ++writes;
    picture = newPicture;
    text.reset();
    file.reset();
  }
  void writeText(std::string_view newText) override {
    ++writes;
    picture.reset();
    file.reset();
    text = newText.empty() ? std::nullopt : std::optional(std::string(newText));
  }
  void writeFile(const std::string& path) override {
    ++writes;
    picture.reset();
    text.reset();
    file = path;
  }
  void handOver(QObject* context, std::function<void()> then) override {
    QMetaObject::invokeMethod(context, std::move(then), Qt::QueuedConnection);
  }

  int writes = 0;
  std::optional<QImage> picture;
  std::optional<std::string> text;
  std::optional<std::string> file;
};

}  // namespace Nimbrel::Testing
