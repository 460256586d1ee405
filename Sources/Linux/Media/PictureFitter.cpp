#include "Linux/Media/PictureFitter.h"

#include "Linux/Media/AvError.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

namespace Nimbrel::Media {

namespace {

constexpr AVPixelFormat target = AV_PIX_FMT_YUV420P;
/// Every pixel counts for the colours, which is also quicker than every second one.
constexpr int scaling = SWS_BICUBIC | SWS_FULL_CHR_H_INP;

bool isRgb(int format) {
  const auto* description = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(format));
  return description && (description->flags & AV_PIX_FMT_FLAG_RGB) != 0;
}

/// One less where odd, if that leaves the wanted size; otherwise all of it.
int usedSide(int side, int wanted) { return side == wanted + 1 ? wanted : side; }

int setColours(SwsContext& scaler, const AVFrame& picture, const Colours& colours) {
  constexpr int one = 1 << 16;
  const bool isFull = isRgb(picture.format) || picture.color_range == AVCOL_RANGE_JPEG;
  return sws_setColorspaceDetails(&scaler, sws_getCoefficients(picture.colorspace), isFull,
                                  sws_getCoefficients(colours.space), colours.range == AVCOL_RANGE_JPEG, 0, one, one);
}

}  // namespace

Colours coloursOf(const AVCodecContext& decoder) {
  if (isRgb(decoder.pix_fmt)) return {};
  const bool isFull = decoder.color_range == AVCOL_RANGE_JPEG || decoder.pix_fmt == AV_PIX_FMT_YUVJ420P ||
                      decoder.pix_fmt == AV_PIX_FMT_YUVJ422P || decoder.pix_fmt == AV_PIX_FMT_YUVJ444P;
  return {.range = isFull ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG,
          .primaries = decoder.color_primaries,
          .transfer = decoder.color_trc,
          .space = decoder.colorspace};
}

PictureFitter::PictureFitter(int width, int height, const Colours& colours)
    : width_(width), height_(height), colours_(colours), result_(av_frame_alloc()) {}

bool PictureFitter::fits(const AVFrame& picture) const {
  return (picture.format == AV_PIX_FMT_YUV420P || picture.format == AV_PIX_FMT_YUVJ420P) &&
         usedSide(picture.width, width_) == width_ && usedSide(picture.height, height_) == height_;
}

Result<AVFrame*> PictureFitter::fitted(const AVFrame& picture) {
  if (!result_) return avError(AVERROR(ENOMEM));
  av_frame_unref(result_.get());
  if (!fits(picture)) {
    if (const int code = convert(picture); code < 0) return avError(code);
  }
  const AVFrame& pixels = fits(picture) ? picture : *converted_;
  if (const int code = av_frame_ref(result_.get(), &pixels); code < 0) return avError(code);
  result_->format = target;
  result_->width = width_;
  result_->height = height_;
  // Otherwise the encoder would take over which pictures stood for themselves in the source.
  result_->pict_type = AV_PICTURE_TYPE_NONE;
  result_->pts = AV_NOPTS_VALUE;
  return result_.get();
}

int PictureFitter::convert(const AVFrame& picture) {
  scaler_.reset(sws_getCachedContext(scaler_.release(), usedSide(picture.width, width_),
                                     usedSide(picture.height, height_), static_cast<AVPixelFormat>(picture.format),
                                     width_, height_, target, scaling, nullptr, nullptr, nullptr));
  if (!scaler_ || setColours(*scaler_, picture, colours_) < 0) return AVERROR(EINVAL);
  if (!converted_ || av_frame_is_writable(converted_.get()) == 0) {
    // The encoder may still look at the last one.
    converted_.reset(av_frame_alloc());
    if (!converted_) return AVERROR(ENOMEM);
    converted_->format = target;
    converted_->width = width_;
    converted_->height = height_;
    if (const int code = av_frame_get_buffer(converted_.get(), 0); code < 0) return code;
  }
  return sws_scale(scaler_.get(), picture.data, picture.linesize, 0, usedSide(picture.height, height_),
                   converted_->data, converted_->linesize);
}

}  // namespace Nimbrel::Media
