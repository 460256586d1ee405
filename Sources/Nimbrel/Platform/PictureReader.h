#pragma once

#include <QObject>
#include <QRectF>

#include <functional>
#include <optional>
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

  bool operator==(const PictureReading&) const = default;
};

/// Reads text and codes off pictures. Main thread; the work is done elsewhere, one picture at a time, in the order of
/// asking.
class PictureReader {
 public:
  enum class Wanted { Text, Codes, TextAndCodes };

  /// Absent: the picture could not be looked at now, since nothing here can read any (a program is missing or does not
  /// start). It says nothing about the picture, which is to be asked for again later; the next one would fare the same.
  /// A reading, also an empty one, is the picture's own and final: to ask again would give nothing else.
  using Then = std::function<void(std::optional<PictureReading>)>;

  virtual ~PictureReader() = default;

  /// Reads the picture at `path` and calls `then` with what was found, in a later turn of the event loop; never once
  /// `context` or the reader is gone. A file that is no picture, or one that makes the reading fail, has an empty one.
  virtual void read(QObject* context, const std::string& path, Wanted wanted, Then then) = 0;
};

/// Where nothing can read: no picture is looked at.
class NullPictureReader final : public PictureReader {
 public:
  void read(QObject* context, const std::string&, Wanted, Then then) override {
    QMetaObject::invokeMethod(
        context, [then = std::move(then)] { then(std::nullopt); }, Qt::QueuedConnection);
  }
};

}  // namespace Nimbrel
