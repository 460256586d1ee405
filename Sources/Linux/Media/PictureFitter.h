#pragma once

#include "Foundation/Result.h"
#include "Linux/Media/AvHandles.h"

namespace Nimbrel::Media {

/// How the colours of pictures are to be understood.
struct Colours {
  AVColorRange range = AVCOL_RANGE_MPEG;
  AVColorPrimaries primaries = AVCOL_PRI_BT709;
  AVColorTransferCharacteristic transfer = AVCOL_TRC_BT709;
  AVColorSpace space = AVCOL_SPC_BT709;
};

/// How the pictures of a track are to be understood; as far as it does not say, as its kind is understood usually.
[[nodiscard]] Colours coloursOf(const AVCodecContext& decoder);

/// Gives pictures the size and the form that an encoder takes: 8 bits, a sample of colour for four of brightness. A
/// column or a row too many is left out at the right or bottom; any other size is scaled.
class PictureFitter {
 public:
  PictureFitter(int width, int height, const Colours& colours);

  /// A picture that refers to the same pixels where they fit already, else to converted ones. Valid until the next
  /// call; it carries no time and leaves it to the encoder how to store it.
  [[nodiscard]] Result<AVFrame*> fitted(const AVFrame& picture);

 private:
  [[nodiscard]] bool fits(const AVFrame& picture) const;
  [[nodiscard]] int convert(const AVFrame& picture);

  int width_;
  int height_;
  Colours colours_;
  Scaler scaler_;
  Frame converted_;
  Frame result_;
};

}  // namespace Nimbrel::Media
