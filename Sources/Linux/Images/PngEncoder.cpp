#include "Linux/Images/PngEncoder.h"

#include <png.h>

#include <csetjmp>
#include <cstdint>
#include <new>
#include <vector>

namespace Nimbrel::Images {

namespace {

/// Screenshots are mostly flat: beside the row above little of them remains, and more effort than this gains a few
/// hundredths of the size for twice the time.
constexpr int compressionLevel = 2;
constexpr int rowFilter = PNG_FILTER_UP;
constexpr std::size_t chunkSize = 1 << 16;

void ignoreWarning(png_structp, png_const_charp) {}
[[noreturn]] void giveUp(png_structp png, png_const_charp) { png_longjmp(png, 1); }
void flushNothing(png_structp) {}

/// Called by libpng, through which no exception may pass.
void append(png_structp png, png_bytep bytes, std::size_t count) {
  bool isAppended = true;
  try {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), count);
  } catch (const std::bad_alloc&) {
    isAppended = false;
  }
  if (!isAppended) png_error(png, "no memory");
}

/// The state of libpng, freed at the end. As for reading: the library leaves its functions by a jump, so each call of
/// it is made inside `attempt`, in steps that hold nothing that would have to be destroyed.
class PngWriter {
 public:
  explicit PngWriter(std::string& bytes)
      : png_(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, giveUp, ignoreWarning)) {
    if (!png_) return;
    info_ = png_create_info_struct(png_);
    png_set_write_fn(png_, &bytes, append, flushNothing);
  }
  ~PngWriter() { png_destroy_write_struct(&png_, &info_); }
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;

  [[nodiscard]] bool writeHeader(const QImage& picture) {
    return info_ && attempt([&] {
             const int colourType = picture.hasAlphaChannel() ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB;
             png_set_IHDR(png_, info_, static_cast<png_uint_32>(picture.width()),
                          static_cast<png_uint_32>(picture.height()), 8, colourType, PNG_INTERLACE_NONE,
                          PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
             png_set_sRGB(png_, info_, PNG_sRGB_INTENT_PERCEPTUAL);
             png_set_compression_level(png_, compressionLevel);
             png_set_compression_buffer_size(png_, chunkSize);
             png_set_filter(png_, PNG_FILTER_TYPE_BASE, rowFilter);
             png_write_info(png_, info_);
           });
  }

  [[nodiscard]] bool writeRow(const std::uint8_t* row) {
    return attempt([this, row] { png_write_row(png_, row); });
  }

  [[nodiscard]] bool writeEnd() {
    return attempt([this] { png_write_end(png_, nullptr); });
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
};

bool isTransparentSomewhere(const QImage& picture) {
  for (int y = 0; y < picture.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    QRgb common = 0xFF000000;
    for (int x = 0; x < picture.width(); ++x) common &= line[x];
    if (common != 0xFF000000) return true;
  }
  return false;
}

/// In a form whose pixels can be taken apart as they stand, with an alpha channel only where it says something.
QImage prepared(const QImage& picture) {
  if (!picture.hasAlphaChannel()) return picture.convertToFormat(QImage::Format_RGB32);
  auto image = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  if (!isTransparentSomewhere(image)) image.reinterpretAsFormat(QImage::Format_RGB32);
  return image;
}

void fillOpaqueRow(const QRgb* line, int width, std::uint8_t* bytes) {
  for (int x = 0; x < width; ++x, bytes += 3) {
    bytes[0] = static_cast<std::uint8_t>(qRed(line[x]));
    bytes[1] = static_cast<std::uint8_t>(qGreen(line[x]));
    bytes[2] = static_cast<std::uint8_t>(qBlue(line[x]));
  }
}

void fillRow(const QRgb* line, int width, std::uint8_t* bytes) {
  for (int x = 0; x < width; ++x, bytes += 4) {
    const auto pixel = qUnpremultiply(line[x]);
    fillOpaqueRow(&pixel, 1, bytes);
    bytes[3] = static_cast<std::uint8_t>(qAlpha(pixel));
  }
}

}  // namespace

std::string pngOf(const QImage& picture) {
  std::string bytes;
  const auto image = prepared(picture);
  if (image.isNull()) return {};
  PngWriter png(bytes);
  if (!png.writeHeader(image)) return {};
  const auto fill = image.hasAlphaChannel() ? fillRow : fillOpaqueRow;
  std::vector<std::uint8_t> row(static_cast<std::size_t>(image.width()) * 4);
  for (int y = 0; y < image.height(); ++y) {
    fill(reinterpret_cast<const QRgb*>(image.constScanLine(y)), image.width(), row.data());
    if (!png.writeRow(row.data())) return {};
  }
  return png.writeEnd() ? bytes : std::string();
}

}  // namespace Nimbrel::Images
