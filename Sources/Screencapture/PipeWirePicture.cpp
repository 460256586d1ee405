#include "Screencapture/PipeWirePicture.h"

#include <QRect>

#include <spa/buffer/buffer.h>
#include <spa/buffer/meta.h>
#include <spa/param/buffers.h>
#include <spa/param/format-utils.h>
#include <spa/param/video/format-utils.h>
#include <spa/pod/builder.h>

#include <cstdint>
#include <optional>

namespace Nimbrel::Screencapture {

namespace {

constexpr int bytesOfPixel = 4;
constexpr std::uint32_t longestSide = 32'767;

/// How Qt calls the format, transparency left out: what is drawn already stands on black.
std::optional<QImage::Format> imageFormat(spa_video_format format) {
  switch (format) {
    case SPA_VIDEO_FORMAT_BGRx:
    case SPA_VIDEO_FORMAT_BGRA:
      return QImage::Format_RGB32;
    case SPA_VIDEO_FORMAT_RGBx:
    case SPA_VIDEO_FORMAT_RGBA:
      return QImage::Format_RGBX8888;
    default:
      return std::nullopt;
  }
}

/// The part of the picture that counts; all of it unless the buffer says otherwise. A window may be smaller than the
/// buffers that were made for it.
QRect cropOf(const spa_buffer& buffer, const QRect& whole) {
  const auto* meta = static_cast<const spa_meta_region*>(
      spa_buffer_find_meta_data(&buffer, SPA_META_VideoCrop, sizeof(spa_meta_region)));
  if (meta == nullptr || !spa_meta_region_is_valid(meta)) return whole;
  const auto& [position, size] = meta->region;
  const auto crop = QRect(position.x, position.y, static_cast<int>(size.width), static_cast<int>(size.height)) & whole;
  return crop.isEmpty() ? whole : crop;
}

/// The rows of the picture where they lie; empty when they are not all there.
std::span<const uchar> rowsIn(const spa_data& data, int stride, int height) {
  const auto needed = static_cast<std::uint64_t>(stride) * static_cast<std::uint64_t>(height);
  const std::uint32_t offset = data.chunk->offset;
  if (offset > data.maxsize || needed > data.maxsize - offset || needed > data.chunk->size) return {};
  return {static_cast<const uchar*>(data.data) + offset, static_cast<std::size_t>(needed)};
}

}  // namespace

const spa_pod* wantedFormats(spa_pod_builder& builder) {
  const spa_rectangle usual{1920, 1080};
  const spa_rectangle least{1, 1};
  const spa_rectangle most{longestSide, longestSide};
  // A rate of 0: pictures come when something has changed.
  const spa_fraction rate{30, 1};
  const spa_fraction slowest{0, 1};
  const spa_fraction fastest{1000, 1};
  return static_cast<const spa_pod*>(spa_pod_builder_add_object(
      &builder, SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat, SPA_FORMAT_mediaType, SPA_POD_Id(SPA_MEDIA_TYPE_video),
      SPA_FORMAT_mediaSubtype, SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw), SPA_FORMAT_VIDEO_format,
      SPA_POD_CHOICE_ENUM_Id(5, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA,
                             SPA_VIDEO_FORMAT_RGBx, SPA_VIDEO_FORMAT_RGBA),
      SPA_FORMAT_VIDEO_size, SPA_POD_CHOICE_RANGE_Rectangle(&usual, &least, &most), SPA_FORMAT_VIDEO_framerate,
      SPA_POD_CHOICE_RANGE_Fraction(&rate, &slowest, &fastest)));
}

const spa_pod* wantedBuffers(spa_pod_builder& builder) {
  return static_cast<const spa_pod*>(
      spa_pod_builder_add_object(&builder, SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers, SPA_PARAM_BUFFERS_buffers,
                                 SPA_POD_CHOICE_RANGE_Int(4, 2, 8), SPA_PARAM_BUFFERS_dataType,
                                 SPA_POD_CHOICE_FLAGS_Int((1 << SPA_DATA_MemPtr) | (1 << SPA_DATA_MemFd))));
}

const spa_pod* wantedCrop(spa_pod_builder& builder) {
  return static_cast<const spa_pod*>(spa_pod_builder_add_object(
      &builder, SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type, SPA_POD_Id(SPA_META_VideoCrop),
      SPA_PARAM_META_size, SPA_POD_Int(sizeof(spa_meta_region))));
}

spa_video_info_raw agreedFormat(const spa_pod* format) {
  std::uint32_t type = 0;
  std::uint32_t subtype = 0;
  spa_video_info_raw agreed{};
  if (spa_format_parse(format, &type, &subtype) < 0 || type != SPA_MEDIA_TYPE_video ||
      subtype != SPA_MEDIA_SUBTYPE_raw || spa_format_video_raw_parse(format, &agreed) < 0 ||
      !imageFormat(agreed.format) || agreed.size.width > longestSide || agreed.size.height > longestSide) {
    return {};
  }
  return agreed;
}

QImage pictureIn(const spa_buffer& buffer, const spa_video_info_raw& format) {
  const auto pixels = imageFormat(format.format);
  if (!pixels || buffer.n_datas == 0 || buffer.datas[0].data == nullptr) return {};
  const spa_data& data = buffer.datas[0];
  if ((data.chunk->flags & SPA_CHUNK_FLAG_CORRUPTED) != 0 || data.chunk->size == 0) return {};
  const QRect whole(0, 0, static_cast<int>(format.size.width), static_cast<int>(format.size.height));
  const int stride = data.chunk->stride == 0 ? whole.width() * bytesOfPixel : data.chunk->stride;
  if (whole.isEmpty() || stride < whole.width() * bytesOfPixel) return {};
  const auto rows = rowsIn(data, stride, whole.height());
  if (rows.empty()) return {};
  const QImage borrowed(rows.data(), whole.width(), whole.height(), stride, *pixels);
  return borrowed.copy(cropOf(buffer, whole)).convertToFormat(QImage::Format_RGB32);
}

}  // namespace Nimbrel::Screencapture
