#include "Linux/Images/HeifDecoder.h"

#include "Linux/Images/AreaReducer.h"
#include "Linux/Images/Colours.h"
#include "Linux/Images/HeifHandles.h"
#include "Linux/Images/PictureSource.h"

namespace Nimbrel::Images {

using ImageFile::PixelSize;

namespace {

/// A file and its primary image; the handle is null when there is none.
struct Primary {
  explicit Primary(const std::string& path) : context(heif_context_alloc()) {
    if (!context) return;
    heif_context_set_max_decoding_threads(context.get(), 0);
    if (heif_context_read_from_file(context.get(), path.c_str(), nullptr).code != heif_error_Ok) return;
    heif_image_handle* found = nullptr;
    if (heif_context_get_primary_image_handle(context.get(), &found).code == heif_error_Ok) handle.reset(found);
  }

  [[nodiscard]] bool hasAlpha() const { return heif_image_handle_has_alpha_channel(handle.get()) != 0; }

  HeifContext context;
  HeifHandle handle;
};

HeifImage decode(const Primary& primary) {
  const HeifDecodingOptions options(heif_decoding_options_alloc());
  if (!options) return nullptr;
  options->convert_hdr_to_8bit = 1;
  options->strict_decoding = 1;
  const auto chroma = primary.hasAlpha() ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB;
  heif_image* image = nullptr;
  const auto error = heif_decode_image(primary.handle.get(), &image, heif_colorspace_RGB, chroma, options.get());
  return HeifImage(error.code == heif_error_Ok ? image : nullptr);
}

QByteArray profile(const Primary& primary) {
  const auto size = heif_image_handle_get_raw_color_profile_size(primary.handle.get());
  QByteArray bytes(static_cast<qsizetype>(size), '\0');
  if (size == 0) return bytes;
  const auto error = heif_image_handle_get_raw_color_profile(primary.handle.get(), bytes.data());
  return error.code == heif_error_Ok ? bytes : QByteArray();
}

}  // namespace

PixelSize heifSize(const std::string& path) {
  const Primary primary(path);
  if (!primary.handle) return {};
  return {.width = heif_image_handle_get_ispe_width(primary.handle.get()),
          .height = heif_image_handle_get_ispe_height(primary.handle.get())};
}

QImage decodeHeif(const std::string& path, int longerSide) {
  const Primary primary(path);
  if (!primary.handle) return {};
  const PixelSize declared{.width = heif_image_handle_get_width(primary.handle.get()),
                           .height = heif_image_handle_get_height(primary.handle.get())};
  if (!fitsInMemory(declared)) return {};
  const auto image = decode(primary);
  if (!image) return {};

  int stride = 0;
  const auto* row = heif_image_get_plane_readonly(image.get(), heif_channel_interleaved, &stride);
  const PixelSize size{.width = heif_image_get_width(image.get(), heif_channel_interleaved),
                       .height = heif_image_get_height(image.get(), heif_channel_interleaved)};
  if (!row || size.width < 1 || size.height < 1) return {};
  AreaReducer reducer(size, primary.hasAlpha() ? PixelLayout::Rgba : PixelLayout::Rgb, fittedSize(size, longerSide));
  for (int y = 0; y < size.height; ++y, row += stride) reducer.addRow(row);
  return inSrgb(reducer.takeImage(), profile(primary));
}

}  // namespace Nimbrel::Images
