#include "Linux/Media/FrameConverter.h"

#include "Linux/Media/AvError.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <array>

namespace Nimbrel::Media {

namespace {

/// Quarter turns and mirror images; nobody records at other angles.
QTransform turning(const std::int32_t* matrix) {
  if (!matrix) return {};
  const auto sign = [matrix](int index) { return (matrix[index] > 0) - (matrix[index] < 0); };
  const bool isSideways = sign(0) == 0 && sign(4) == 0 && sign(1) != 0 && sign(3) != 0;
  if (isSideways) return {0, static_cast<qreal>(sign(1)), static_cast<qreal>(sign(3)), 0, 0, 0};
  if (sign(0) == 0 || sign(4) == 0) return {};
  return {static_cast<qreal>(sign(0)), 0, 0, static_cast<qreal>(sign(4)), 0, 0};
}

bool isFullRange(const AVFrame& picture) {
  const auto format = static_cast<AVPixelFormat>(picture.format);
  const auto* description = av_pix_fmt_desc_get(format);
  const bool isRgb = description && (description->flags & AV_PIX_FMT_FLAG_RGB) != 0;
  return isRgb || picture.color_range == AVCOL_RANGE_JPEG || format == AV_PIX_FMT_YUVJ420P ||
         format == AV_PIX_FMT_YUVJ422P || format == AV_PIX_FMT_YUVJ444P;
}

/// What does not say how its colours were made is taken for what is usual at its size.
int colourSpace(const AVFrame& picture) {
  if (picture.colorspace != AVCOL_SPC_UNSPECIFIED) return picture.colorspace;
  constexpr int largestStandardDefinition = 576;
  const bool isLarge = picture.height > largestStandardDefinition || picture.width > 1024;
  return isLarge ? SWS_CS_ITU709 : SWS_CS_ITU601;
}

}  // namespace

FrameConverter::FrameConverter(QSize size, const std::int32_t* displayMatrix)
    : size_(size), upright_(turning(displayMatrix)) {}

Result<QImage> FrameConverter::image(const AVFrame& picture) {
  QImage image(size_, QImage::Format_RGB32);
  if (image.isNull()) return avError(AVERROR(ENOMEM));
  if (const int code = convert(picture, image); code < 0) return avError(code);
  return upright_.isIdentity() ? image : image.transformed(upright_);
}

int FrameConverter::convert(const AVFrame& picture, QImage& image) {
  // The quicker ways brighten all colours by one and blur those of thin strokes.
  constexpr int flags = SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT;
  constexpr int one = 1 << 16;
  scaler_.reset(sws_getCachedContext(scaler_.release(), picture.width, picture.height,
                                     static_cast<AVPixelFormat>(picture.format), size_.width(), size_.height(),
                                     AV_PIX_FMT_0RGB32, flags, nullptr, nullptr, nullptr));
  if (!scaler_) return AVERROR(EINVAL);
  // Fails where there is nothing to be set, from RGB to RGB.
  sws_setColorspaceDetails(scaler_.get(), sws_getCoefficients(colourSpace(picture)), isFullRange(picture),
                           sws_getCoefficients(SWS_CS_DEFAULT), true, 0, one, one);
  const std::array<std::uint8_t*, 4> planes{image.bits()};
  const std::array<int, 4> strides{static_cast<int>(image.bytesPerLine())};
  return sws_scale(scaler_.get(), picture.data, picture.linesize, 0, picture.height, planes.data(), strides.data());
}

}  // namespace Nimbrel::Media
