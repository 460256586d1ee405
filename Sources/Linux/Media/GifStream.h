#pragma once

#include "Linux/Media/GifCanvas.h"

#include <QSize>

#include <gif_lib.h>

#include <cstdio>
#include <memory>
#include <string>

namespace Nimbrel::Media {

/// The parts of an animated GIF, written to a file of their own one behind the other.
class GifStream {
 public:
  /// Makes the file; nothing that stands at the path is replaced. Absent on failure.
  [[nodiscard]] static std::unique_ptr<GifStream> create(const std::string& path);
  ~GifStream();
  GifStream(const GifStream&) = delete;
  GifStream& operator=(const GifStream&) = delete;

  /// What stands in front: the size, the palette of the file, and that it plays for ever. To be called once, first.
  [[nodiscard]] bool begin(QSize size, const GifPalette& palette);

  /// Adds an image that is laid over those before it and shown for so many hundredths of a second.
  [[nodiscard]] bool put(const GifImage& image, int delay);

  /// How long the last image is shown instead.
  [[nodiscard]] bool setLastDelay(int delay);

  /// Writes the end and waits until all is on the disk. To be called once, last.
  [[nodiscard]] bool finish();

 private:
  struct ClosingFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  explicit GifStream(std::FILE* file);
  [[nodiscard]] bool putDelay(int delay, int transparent);
  [[nodiscard]] bool putPixels(const GifImage& image);
  [[nodiscard]] bool putNothing(int delay);

  std::unique_ptr<std::FILE, ClosingFile> file_;
  GifFileType* gif_;
  int transparent_ = 0;  ///< in the palette of the file
  long delayPlace_ = 0;  ///< where in the file the last delay stands
};

}  // namespace Nimbrel::Media
