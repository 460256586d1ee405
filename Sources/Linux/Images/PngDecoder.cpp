#include "Linux/Images/PngDecoder.h"

#include "Linux/Images/AreaReducer.h"
#include "Linux/Images/Colours.h"
#include "Linux/Images/Orientation.h"
#include "Linux/Images/PictureSource.h"

#include <png.h>

#include <csetjmp>
#include <memory>
#include <vector>

namespace Nimbrel::Images {

using ImageFile::PixelSize;

namespace {

void ignoreWarning(png_structp, png_const_charp) {}
[[noreturn]] void giveUp(png_structp png, png_const_charp) { png_longjmp(png, 1); }

/// The state of libpng, freed at the end. The library leaves its functions by a jump when a file is bad: each call of
/// it is therefore made inside `attempt`, in steps that hold nothing that would have to be destroyed.
class PngReader {
 public:
  explicit PngReader(std::FILE* file)
      : png_(png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, giveUp, ignoreWarning)) {
    if (!png_) return;
    info_ = png_create_info_struct(png_);
    if (info_) png_init_io(png_, file);
  }
  ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  /// Reads up to the pixels and asks for 8 bits a channel, grey or colour, with alpha where there is any.
  [[nodiscard]] bool readHeader() {
    return info_ && attempt([this] {
             png_read_info(png_, info_);
             png_set_expand(png_);
             png_set_scale_16(png_);
             passes_ = png_set_interlace_handling(png_);
             png_read_update_info(png_, info_);
           });
  }

  /// Reads the next row, or improves it by the present pass of an interlaced picture.
  [[nodiscard]] bool readRow(std::uint8_t* row) {
    return attempt([this, row] { png_read_row(png_, row, nullptr); });
  }

  /// Reads what stands behind the pixels; false when the end is missing.
  [[nodiscard]] bool readEnd() {
    return attempt([this] { png_read_end(png_, info_); });
  }

  [[nodiscard]] int passes() const { return passes_; }
  [[nodiscard]] std::size_t rowBytes() const { return png_get_rowbytes(png_, info_); }

  [[nodiscard]] PixelSize size() const {
    return {.width = static_cast<int>(png_get_image_width(png_, info_)),
            .height = static_cast<int>(png_get_image_height(png_, info_))};
  }

  [[nodiscard]] PixelLayout layout() const {
    switch (png_get_channels(png_, info_)) {
      case 1:
        return PixelLayout::Grey;
      case 2:
        return PixelLayout::GreyAlpha;
      case 3:
        return PixelLayout::Rgb;
      default:
        return PixelLayout::Rgba;
    }
  }

  [[nodiscard]] QByteArray profile() const {
    png_charp name = nullptr;
    png_bytep bytes = nullptr;
    png_uint_32 size = 0;
    int compression = 0;
    if (png_get_iCCP(png_, info_, &name, &compression, &bytes, &size) == 0) return {};
    return {reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)};
  }

  [[nodiscard]] int orientation() const {
    png_bytep bytes = nullptr;
    png_uint_32 size = 0;
    return png_get_eXIf_1(png_, info_, &size, &bytes) == 0 ? 1 : exifOrientation({bytes, size});
  }

 private:
  template <typename Step>
  bool attempt(Step step) {
    if (setjmp(png_jmpbuf(png_)) != 0) return false;
    step();
    return true;
  }

  png_structp png_;
  png_infop info_ = nullptr;
  int passes_ = 1;
};

bool reduceRows(PngReader& png, AreaReducer& reducer) {
  std::vector<std::uint8_t> row(png.rowBytes());
  for (int y = 0; y < png.size().height; ++y) {
    if (!png.readRow(row.data())) return false;
    reducer.addRow(row.data());
  }
  return true;
}

/// The rows of an interlaced picture are complete only after the last pass.
bool reduceInterlaced(PngReader& png, AreaReducer& reducer) {
  if (!fitsInMemory(png.size())) return false;
  const auto height = static_cast<std::size_t>(png.size().height);
  const auto bytes = std::make_unique_for_overwrite<std::uint8_t[]>(png.rowBytes() * height);
  const auto row = [&](std::size_t y) { return bytes.get() + y * png.rowBytes(); };
  for (int pass = 0; pass < png.passes(); ++pass) {
    for (std::size_t y = 0; y < height; ++y) {
      if (!png.readRow(row(y))) return false;
    }
  }
  for (std::size_t y = 0; y < height; ++y) reducer.addRow(row(y));
  return true;
}

}  // namespace

QImage decodePng(std::FILE* file, int longerSide) {
  PngReader png(file);
  if (!png.readHeader()) return {};
  AreaReducer reducer(png.size(), png.layout(), fittedSize(png.size(), longerSide));
  if (!reducer.isValid()) return {};
  if (!(png.passes() > 1 ? reduceInterlaced(png, reducer) : reduceRows(png, reducer))) return {};
  if (!png.readEnd()) return {};
  return upright(inSrgb(reducer.takeImage(), png.profile()), png.orientation());
}

}  // namespace Nimbrel::Images
