#include "Platform/HeicEncoder.h"

#include "Linux/Images/HeifHandles.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>
#include <utility>

namespace Nimbrel::HeicEncoder {

using namespace Images;

namespace {

constexpr int bandHeight = 64;  ///< rows of the encoder's largest blocks
constexpr int bandCount = 2;
/// With more bits a pixel than this a screenshot is never so far above its limit that the bands could foretell it.
constexpr double promisingBitsPerPixel = 0.6;
/// How far the bands may be from the whole.
constexpr double doubt = 1.5;

bool succeeded(const heif_error& error) { return error.code == heif_error_Ok; }

HeifEncoder encoderFor(const HeifContext& context, double quality) {
  heif_encoder* found = nullptr;
  if (!succeeded(heif_context_get_encoder_for_format(context.get(), heif_compression_HEVC, &found))) return nullptr;
  HeifEncoder encoder(found);
  const bool isSet = quality >= 1 ? succeeded(heif_encoder_set_lossless(found, 1))
                                  : succeeded(heif_encoder_set_lossy_quality(
                                        found, static_cast<int>(std::lround(std::max(quality, 0.0) * 100))));
  if (!isSet || !succeeded(heif_encoder_set_parameter_string(found, "chroma", "444"))) return nullptr;
  return encoder;
}

/// sRGB, said in the file, so that no viewer has to guess.
HeifColours colours() {
  HeifColours profile(heif_nclx_color_profile_alloc());
  if (!profile) return nullptr;
  profile->color_primaries = heif_color_primaries_ITU_R_BT_709_5;
  profile->transfer_characteristics = heif_transfer_characteristic_IEC_61966_2_1;
  profile->matrix_coefficients = heif_matrix_coefficients_ITU_R_BT_601_6;
  profile->full_range_flag = 1;
  return profile;
}

HeifImage imageOf(const QImage& picture) {
  const bool hasAlpha = picture.hasAlphaChannel();
  const auto source = picture.convertToFormat(hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
  heif_image* made = nullptr;
  const auto chroma = hasAlpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB;
  if (source.isNull() ||
      !succeeded(heif_image_create(source.width(), source.height(), heif_colorspace_RGB, chroma, &made))) {
    return nullptr;
  }
  HeifImage image(made);
  if (!succeeded(heif_image_add_plane(made, heif_channel_interleaved, source.width(), source.height(), 8))) {
    return nullptr;
  }
  int stride = 0;
  auto* plane = heif_image_get_plane(made, heif_channel_interleaved, &stride);
  const auto rowLength = static_cast<std::size_t>(source.width()) * (hasAlpha ? 4 : 3);
  for (int y = 0; y < source.height(); ++y) {
    std::memcpy(plane + static_cast<std::ptrdiff_t>(stride) * y, source.constScanLine(y), rowLength);
  }
  return image;
}

heif_error append(heif_context*, const void* bytes, size_t count, void* file) {
  try {
    static_cast<std::string*>(file)->append(static_cast<const char*>(bytes), count);
  } catch (const std::bad_alloc&) {
    return {heif_error_Memory_allocation_error, heif_suberror_Unspecified, "too large"};
  }
  return {heif_error_Ok, heif_suberror_Unspecified, ""};
}

std::optional<std::string> fileOf(const QImage& picture, double quality) {
  const HeifContext context(heif_context_alloc());
  if (!context) return std::nullopt;
  const auto encoder = encoderFor(context, quality);
  const auto profile = colours();
  const HeifEncodingOptions options(heif_encoding_options_alloc());
  const auto image = imageOf(picture);
  if (!encoder || !profile || !options || !image) return std::nullopt;
  options->output_nclx_profile = profile.get();
  if (!succeeded(heif_context_encode_image(context.get(), image.get(), encoder.get(), options.get(), nullptr))) {
    return std::nullopt;
  }
  std::string file;
  heif_writer writer{.writer_api_version = 1, .write = append};
  if (!succeeded(heif_context_write(context.get(), &writer, &file))) return std::nullopt;
  return file;
}

/// Bands from all over the picture, one below the other.
QImage bandsOf(const QImage& picture) {
  QImage bands(picture.width(), bandCount * bandHeight, picture.format());
  for (int band = 0; band < bandCount; ++band) {
    const int top = (picture.height() - bandHeight) * (band + 1) / (bandCount + 1);
    for (int y = 0; y < bandHeight; ++y) {
      std::memcpy(bands.scanLine(band * bandHeight + y), picture.constScanLine(top + y),
                  static_cast<std::size_t>(picture.bytesPerLine()));
    }
  }
  return bands;
}

bool mayStayBelow(std::int64_t limit, const QImage& picture, double quality) {
  const double pixels = static_cast<double>(picture.width()) * picture.height();
  const double share = static_cast<double>(bandCount) * bandHeight / picture.height();
  if (static_cast<double>(limit) * 8 > pixels * promisingBitsPerPixel || share > 0.25) return true;
  const auto bands = bandsOf(picture);
  const auto file = bands.isNull() ? std::nullopt : fileOf(bands, quality);
  return !file || static_cast<double>(file->size()) < share * doubt * static_cast<double>(limit);
}

}  // namespace

std::optional<std::string> encode(const QImage& picture, double quality, std::int64_t limit) {
  try {
    if (picture.isNull() || !mayStayBelow(limit, picture, quality)) return std::nullopt;
    auto file = fileOf(picture, quality);
    if (file && std::cmp_less(file->size(), limit)) return file;
  } catch (const std::bad_alloc&) {
    // As if it had become too large.
  }
  return std::nullopt;
}

}  // namespace Nimbrel::HeicEncoder
