#pragma once

#include <QObject>
#include <QRectF>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel {

/// A piece of recognised text: what stands on one visual line without a wide gap.
struct TextBlock {
  std::string text;
  QRectF rect;  ///< in the upright picture: 0 to 1 on both axes, origin at the upper left

  bool operator==(const TextBlock&) const = default;
};

/// What was read off a picture.
struct PictureReading {
  std::vector<TextBlock> blocks;   ///< in no particular order
  std::vector<std::string> codes;  ///< payloads of the codes in it, repetitions included
};

/// Reads text and codes off pictures. Main thread; the work is done elsewhere, one picture at a time, in the order of
/// asking.
class PictureReader {
 public:
  enum class Wanted { Text, Codes, TextAndCodes };
  using Then = std::function<void(PictureReading)>;

  virtual ~PictureReader() = default;

  /// Reads the picture at `path` and calls `then` with what was found, in a later turn of the event loop; never once
  /// `context` is gone. A file that is no picture, or one that the reader fails on, reads as an empty one.
  virtual void read(QObject* context, const std::string& path, Wanted wanted, Then then) = 0;
};

/// Where nothing can read: every picture is an empty one.
class NullPictureReader final : public PictureReader {
 public:
  void read(QObject* context, const std::string&, Wanted, Then then) override {
    QMetaObject::invokeMethod(
        context, [then = std::move(then)] { then({}); }, Qt::QueuedConnection);
  }
};

}  // namespace Nimbrel
