#pragma once

#include "Linux/Media/GifColours.h"
#include "Linux/Media/GifPalette.h"

#include <cstdint>

namespace Nimbrel::Media {

/// Looks up the nearest colour for each, unmixed. Returns the mean squared error of a pixel.
double match(GifColours& colours, const GifPalette& palette);

/// Has colours that fall between two of the palette, as in a gradient, shown as a pattern of both. What the palette
/// shows as it is or nearly so stays plain. To be called after match(), with the same palette.
void mix(GifColours& colours, const GifPalette& palette);

/// The index for a pixel at that place: the same there each time, so that a picture that stands still does not flicker.
/// The pattern is Bayer's ordered dither of 8 by 8 pixels.
[[nodiscard]] std::uint8_t indexAt(int x, int y, const GifColours::Entry& entry);

}  // namespace Nimbrel::Media
