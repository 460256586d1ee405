#include "Linux/Media/GifPalettes.h"

#include "Linux/Media/GifMixing.h"
#include "Linux/Media/GifQuantiser.h"

namespace Nimbrel::Media {

namespace {

/// A palette fits while its error is at most so much larger than it was where it came from.
constexpr double errorFactor = 1.25;
constexpr double errorMargin = 1;

}  // namespace

GifPalettes::Choice GifPalettes::choose(GifColours& colours) {
  if (general_.colours().empty()) return begin(colours);
  const double error = match(colours, general_);
  if (error == 0) return {.palette = &general_, .use = generalUse_, .isExact = true};
  if (colours.size() <= GifPalette::mostColours) return useExact(colours);
  if (error > generalError_ * errorFactor + errorMargin) {
    general_ = paletteFor(colours);
    generalUse_ = PaletteUse::OfImage;
    generalError_ = match(colours, general_);
  }
  return useGeneral(colours);
}

GifPalettes::Choice GifPalettes::begin(GifColours& colours) {
  general_ = paletteFor(colours);
  generalError_ = match(colours, general_);
  if (generalError_ == 0) return {.palette = &general_, .use = generalUse_, .isExact = true};
  return useGeneral(colours);
}

GifPalettes::Choice GifPalettes::useExact(GifColours& colours) {
  exact_ = paletteFor(colours);
  match(colours, exact_);
  return {.palette = &exact_, .use = PaletteUse::OfImage, .isExact = true};
}

GifPalettes::Choice GifPalettes::useGeneral(GifColours& colours) const {
  mix(colours, general_);
  return {.palette = &general_, .use = generalUse_, .isExact = false};
}

}  // namespace Nimbrel::Media
