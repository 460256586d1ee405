#include "Linux/Images/QtDecoder.h"

#include "Linux/Images/AreaReducer.h"
#include "Linux/Images/Colours.h"
#include "Linux/Images/PictureSource.h"
#include "Linux/Images/QuietLibraries.h"

#include <QFile>
#include <QImageReader>

namespace Nimbrel::Images {

using ImageFile::PixelSize;

namespace {

/// Reads from the start of an open file; the stream stays its owner.
struct Reader {
  explicit Reader(std::FILE* stream) {
    quietLibraries();
    std::rewind(stream);
    if (!file.open(stream, QIODevice::ReadOnly)) return;
    reader.setDevice(&file);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
  }

  [[nodiscard]] PixelSize size() {
    const auto known = reader.size();
    return known.isValid() ? PixelSize{.width = known.width(), .height = known.height()} : PixelSize{};
  }

  QFile file;
  QImageReader reader;
};

bool skip(std::FILE* file, long count) { return std::fseek(file, count, SEEK_CUR) == 0; }

/// The table of colours that the flags of a header announce.
bool skipColours(std::FILE* file, int flags) { return (flags & 0x80) == 0 || skip(file, 3L << ((flags & 7) + 1)); }

/// Blocks of a length and as many bytes, up to one of no length.
bool skipBlocks(std::FILE* file) {
  for (;;) {
    const int length = std::fgetc(file);
    if (length <= 0) return length == 0;
    if (!skip(file, length)) return false;
  }
}

}  // namespace

PixelSize qtSize(std::FILE* file) { return Reader(file).size(); }

QImage decodeWithQt(std::FILE* file, int longerSide) {
  Reader source(file);
  if (!fitsInMemory(source.size())) return {};
  const auto image = source.reader.read();
  if (image.isNull()) return {};
  const auto target = fittedSize({.width = image.width(), .height = image.height()}, longerSide);
  return inSrgb(reduced(image, target), image.colorSpace());
}

bool hasWholeGifFrame(std::FILE* file) {
  constexpr int extension = 0x21;
  constexpr int frame = 0x2C;
  constexpr long flagsOfScreen = 10;
  if (std::fseek(file, flagsOfScreen, SEEK_SET) != 0) return false;
  const int screenFlags = std::fgetc(file);
  if (screenFlags == EOF || !skip(file, 2) || !skipColours(file, screenFlags)) return false;
  for (;;) {
    const int block = std::fgetc(file);
    if (block == extension) {
      if (!skip(file, 1) || !skipBlocks(file)) return false;
    } else if (block == frame) {
      if (!skip(file, 8)) return false;
      const int frameFlags = std::fgetc(file);
      return frameFlags != EOF && skipColours(file, frameFlags) && skip(file, 1) && skipBlocks(file);
    } else {
      return false;
    }
  }
}

}  // namespace Nimbrel::Images
