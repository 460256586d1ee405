#pragma once

#include "Linux/Media/GifColours.h"
#include "Linux/Media/GifPalette.h"

namespace Nimbrel::Media {

/// The palette that suits the colours: themselves when they are few enough, and otherwise what libimagequant chooses,
/// brought closer to them. Colours of large plain areas are then in it as they are. There must be one colour at least.
[[nodiscard]] GifPalette paletteFor(const GifColours& colours);

}  // namespace Nimbrel::Media
