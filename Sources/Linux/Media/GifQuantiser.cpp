#include "Linux/Media/GifQuantiser.h"

#include <QtGlobal>

#include <libimagequant.h>

#include <cmath>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace Nimbrel::Media {

namespace {

template <auto release>
struct Release {
  template <class Handle>
  void operator()(Handle* handle) const {
    release(handle);
  }
};

using Attributes = std::unique_ptr<liq_attr, Release<&liq_attr_destroy>>;
using Histogram = std::unique_ptr<liq_histogram, Release<&liq_histogram_destroy>>;
using Quantisation = std::unique_ptr<liq_result, Release<&liq_result_destroy>>;

/// libimagequant's quickest ways lose little that the rounds below do not bring back.
constexpr int speed = 9;
constexpr int rounds = 2;

struct WeightedColour {
  QRgb colour = 0;
  unsigned weight = 0;
};

/// A large area weighs less than it has pixels, lest a wallpaper leave no colours to the words in front of it.
std::vector<WeightedColour> weighted(const GifColours& colours) {
  constexpr double power = 0.7;
  std::vector<WeightedColour> result;
  result.reserve(colours.size());
  colours.forEach([&](const GifColours::Entry& entry) {
    const auto weight = std::lround(std::pow(entry.count, power));
    result.push_back({.colour = entry.colour, .weight = static_cast<unsigned>(weight)});
  });
  return result;
}

liq_histogram_entry histogramEntry(const WeightedColour& colour) {
  const auto channel = [](int value) { return static_cast<unsigned char>(value); };
  return {.color = {.r = channel(qRed(colour.colour)),
                    .g = channel(qGreen(colour.colour)),
                    .b = channel(qBlue(colour.colour)),
                    .a = 255},
          .count = colour.weight};
}

/// The library fails for want of memory alone.
GifPalette quantised(std::span<const WeightedColour> colours) {
  const Attributes attributes(liq_attr_create());
  Q_CHECK_PTR(attributes);
  liq_set_max_colors(attributes.get(), GifPalette::mostColours);
  liq_set_speed(attributes.get(), speed);
  const Histogram histogram(liq_histogram_create(attributes.get()));
  Q_CHECK_PTR(histogram);
  std::vector<liq_histogram_entry> entries;
  entries.reserve(colours.size());
  for (const auto& colour : colours) entries.push_back(histogramEntry(colour));
  liq_histogram_add_colors(histogram.get(), attributes.get(), entries.data(), static_cast<int>(entries.size()), 0);
  liq_result* found = nullptr;
  const auto error = liq_histogram_quantize(histogram.get(), attributes.get(), &found);
  const Quantisation quantisation(error == LIQ_OK ? found : nullptr);
  Q_CHECK_PTR(quantisation);
  const auto* palette = liq_get_palette(quantisation.get());
  std::vector<QRgb> result;
  for (const auto& colour : std::span(palette->entries, palette->count)) {
    result.push_back(qRgb(colour.r, colour.g, colour.b));
  }
  return GifPalette(std::move(result));
}

/// The colours that come closest to one of the palette.
struct Cluster {
  double red = 0;
  double green = 0;
  double blue = 0;
  double weight = 0;
  WeightedColour heaviest;

  void add(const WeightedColour& colour) {
    red += static_cast<double>(colour.weight) * qRed(colour.colour);
    green += static_cast<double>(colour.weight) * qGreen(colour.colour);
    blue += static_cast<double>(colour.weight) * qBlue(colour.colour);
    weight += colour.weight;
    if (colour.weight > heaviest.weight) heaviest = colour;
  }

  /// Their mean, or the one that outweighs all others: a plain area keeps its colour.
  [[nodiscard]] QRgb centre() const {
    if (2.0 * heaviest.weight >= weight) return heaviest.colour;
    const auto channel = [this](double sum) { return static_cast<int>(std::lround(sum / weight)); };
    return qRgb(channel(red), channel(green), channel(blue));
  }
};

/// A round of Lloyd's algorithm (k-means).
GifPalette refined(const GifPalette& palette, std::span<const WeightedColour> colours) {
  std::vector<Cluster> clusters(palette.colours().size());
  for (const auto& colour : colours) clusters[palette.nearest(colour.colour)].add(colour);
  std::vector<QRgb> centres;
  for (const auto& cluster : clusters) {
    if (cluster.weight > 0) centres.push_back(cluster.centre());
  }
  return GifPalette(std::move(centres));
}

}  // namespace

GifPalette paletteFor(const GifColours& colours) {
  const auto all = weighted(colours);
  if (all.size() <= GifPalette::mostColours) {
    std::vector<QRgb> exact;
    exact.reserve(all.size());
    for (const auto& colour : all) exact.push_back(colour.colour);
    return GifPalette(std::move(exact));
  }
  auto palette = quantised(all);
  for (int round = 0; round < rounds; ++round) palette = refined(palette, all);
  return palette;
}

}  // namespace Nimbrel::Media
