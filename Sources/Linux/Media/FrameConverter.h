#pragma once

#include "Foundation/Result.h"
#include "Linux/Media/AvHandles.h"

#include <QImage>
#include <QSize>
#include <QTransform>

#include <cstdint>

namespace Nimbrel::Media {

/// Makes images of decoded pictures: upright, RGB32, and all of one size, should a track change its own on the way.
class FrameConverter {
 public:
  /// `size` is that of the pictures as they are stored; `displayMatrix` are nine numbers, or null.
  FrameConverter(QSize size, const std::int32_t* displayMatrix);

  [[nodiscard]] Result<QImage> image(const AVFrame& picture);

 private:
  [[nodiscard]] int convert(const AVFrame& picture, QImage& image);

  QSize size_;
  QTransform upright_;
  Scaler scaler_;
};

}  // namespace Nimbrel::Media
