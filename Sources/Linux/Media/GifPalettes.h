#pragma once

#include "Linux/Media/GifColours.h"
#include "Linux/Media/GifPalette.h"

namespace Nimbrel::Media {

enum class PaletteUse {
  OfFile,  ///< the palette of the first image, which stands once in front of all
  OfImage,
};

/// Chooses a palette for one image after the other: that of an earlier one as long as it fits, since a new one costs
/// time and room.
class GifPalettes {
 public:
  struct Choice {
    const GifPalette* palette = nullptr;  ///< valid until the next choice
    PaletteUse use = PaletteUse::OfImage;
    bool isExact = false;  ///< it has all colours as they are
  };

  /// For colours that were counted, at least one; each of them knows afterwards how it is shown.
  [[nodiscard]] Choice choose(GifColours& colours);

 private:
  [[nodiscard]] Choice begin(GifColours& colours);
  [[nodiscard]] Choice useExact(GifColours& colours);
  [[nodiscard]] Choice useGeneral(GifColours& colours) const;

  GifPalette general_;  ///< for images of many colours; at first that of the file
  PaletteUse generalUse_ = PaletteUse::OfFile;
  double generalError_ = 0;  ///< of the image that it was made for
  GifPalette exact_;         ///< for the present image of few
};

}  // namespace Nimbrel::Media
