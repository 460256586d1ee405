#pragma once

#include "Foundation/Result.h"

#include <QImage>

#include <memory>
#include <optional>
#include <string>

namespace Nimbrel {

/// Writes an animated GIF that plays for ever, frame by frame, with the colours that suit it. It holds one frame at a
/// time and the one before it. One thread at a time.
class GifFile {
 public:
  /// Makes the file, which is its owner's from here on; nothing that stands at the path is replaced. Absent on failure.
  [[nodiscard]] static std::unique_ptr<GifFile> create(const std::string& path);

  /// Leaves what is written; a file that was not finished can be played up to its last whole frame at best.
  virtual ~GifFile() = default;

  /// Adds a frame that is shown for that many seconds. The format knows hundredths: each frame ends at the hundredth
  /// nearest to the sum of all delays so far, so that roundings do not add up. A frame that would be shown for less
  /// than two of them is left out, since viewers would show it for a tenth of a second: its time goes to the next
  /// frame, that of the last one to the frame before. No frame is shown for longer than 655.35 seconds.
  ///
  /// All frames have the size of the first, at most 65,535 pixels a side. Transparency is ignored. False when a frame
  /// does not fit or the disk does not take it.
  [[nodiscard]] virtual bool add(const QImage& frame, double delay) = 0;

  /// Writes the end; the file is then on the disk. To be called once.
  [[nodiscard]] virtual bool finish() = 0;
};

}  // namespace Nimbrel
