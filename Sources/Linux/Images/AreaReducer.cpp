#include "Linux/Images/AreaReducer.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <span>
#include <utility>

// Weights sum to 256 on either axis. A sum of bytes over one axis therefore fits in 16 bits, which lets the compiler
// work on eight or more of them at once, and over both in 24.
namespace Nimbrel::Images {

using ImageFile::PixelSize;

static_assert(std::endian::native == std::endian::little, "the words of QImage are read as blue, green, red, alpha");

namespace {

constexpr int weightSum = 1 << 8;

void setWeighted(std::uint16_t* __restrict sums, const std::uint8_t* __restrict row, std::size_t count,
                 std::uint16_t weight) {
  for (std::size_t i = 0; i < count; ++i) sums[i] = static_cast<std::uint16_t>(row[i] * weight);
}

void addWeighted(std::uint16_t* __restrict sums, const std::uint8_t* __restrict row, std::size_t count,
                 std::uint16_t weight) {
  for (std::size_t i = 0; i < count; ++i) sums[i] = static_cast<std::uint16_t>(sums[i] + row[i] * weight);
}

/// The channels of one pixel. All sums stay below 2^24 and are thus exact; of whole numbers there is no product of four
/// at once on every processor.
using Lanes [[gnu::vector_size(16)]] = float;

Lanes load(const float* values) {
  Lanes lanes;
  std::memcpy(&lanes, values, sizeof(lanes));
  return lanes;
}

/// Four sums over both axes as bytes, the first lowest.
QRgb rounded(Lanes sums) {
  using Quads [[gnu::vector_size(16)]] = std::int32_t;
  using Pairs [[gnu::vector_size(16)]] = std::uint64_t;
  constexpr int bits = 16;
  constexpr float half = 1 << (bits - 1);
  const auto quads = __builtin_convertvector(sums + half, Quads) >> bits;
  // Not lane by lane, which the compiler would make of a conversion to bytes: two and two are pushed together first.
  auto pairs = std::bit_cast<Pairs>(quads);
  pairs |= pairs >> 24;
  return static_cast<QRgb>((pairs[0] & 0xFFFF) | (pairs[1] & 0xFFFF) << 16);
}

template <PixelLayout layout>
QRgb pixelOf(Lanes sums) {
  constexpr QRgb opaque = 0xFF000000U;
  const auto reversed = [&] { return __builtin_shufflevector(sums, sums, 2, 1, 0, 3); };
  switch (layout) {
    case PixelLayout::Grey:
      return opaque | rounded(__builtin_shufflevector(sums, sums, 0, 0, 0, 0));
    case PixelLayout::GreyAlpha:
      return rounded(__builtin_shufflevector(sums, sums, 0, 0, 0, 1));
    case PixelLayout::Rgb:
      return opaque | rounded(reversed());
    case PixelLayout::Rgba:
      return rounded(reversed());
    case PixelLayout::Rgb32:
      return opaque | rounded(sums);
    case PixelLayout::Argb32:
      return rounded(sums);
  }
}

/// Reads four values for each pixel whatever the channels, so that `sums` needs to reach three values further.
template <PixelLayout layout, int channels>
void averageColumns(const float* sums, std::span<const AxisWeights::Pixel> columns, const float* weights,
                    QRgb* target) {
  for (const auto& pixel : columns) {
    const auto* source = sums + static_cast<std::ptrdiff_t>(pixel.first) * channels;
    const auto* weight = weights + pixel.weights;
    Lanes total{};
    for (int i = 0; i < pixel.count; ++i, source += channels) total += load(source) * weight[i];
    *target++ = pixelOf<layout>(total);
  }
}

/// The alpha is the highest byte of a word, as in a QRgb; the order of the others does not matter.
void premultiplyWords(const std::uint8_t* row, int width, std::uint8_t* target) {
  for (int x = 0; x < width; ++x, row += sizeof(QRgb), target += sizeof(QRgb)) {
    QRgb word = 0;
    std::memcpy(&word, row, sizeof(word));
    word = qPremultiply(word);
    std::memcpy(target, &word, sizeof(word));
  }
}

void premultiplyGrey(const std::uint8_t* row, int width, std::uint8_t* target) {
  for (int x = 0; x < width; ++x, row += 2, target += 2) {
    target[0] = static_cast<std::uint8_t>((row[0] * row[1] + 127) / 255);
    target[1] = row[1];
  }
}

/// Whether the last of each group of bytes, the alpha, is 255 throughout.
template <typename Pixel>
bool isOpaque(const std::uint8_t* row, int width) {
  Pixel all = static_cast<Pixel>(~Pixel{0});
  for (int x = 0; x < width; ++x) {
    Pixel pixel;
    std::memcpy(&pixel, row + static_cast<std::size_t>(x) * sizeof(Pixel), sizeof(Pixel));
    all = static_cast<Pixel>(all & pixel);
  }
  return all >> (8 * (sizeof(Pixel) - 1)) == 255;
}

bool isOpaque(const std::uint8_t* row, int width, PixelLayout layout) {
  return layout == PixelLayout::GreyAlpha ? isOpaque<std::uint16_t>(row, width) : isOpaque<std::uint32_t>(row, width);
}

bool hasAlpha(PixelLayout layout) {
  return layout == PixelLayout::GreyAlpha || layout == PixelLayout::Rgba || layout == PixelLayout::Argb32;
}

}  // namespace

int channelCount(PixelLayout layout) {
  switch (layout) {
    case PixelLayout::Grey:
      return 1;
    case PixelLayout::GreyAlpha:
      return 2;
    case PixelLayout::Rgb:
      return 3;
    case PixelLayout::Rgba:
    case PixelLayout::Rgb32:
    case PixelLayout::Argb32:
      break;
  }
  return 4;
}

PixelSize fittedSize(PixelSize size, int longerSide) {
  const int longer = std::max(size.width, size.height);
  if (longer <= longerSide) return size;
  const auto fitted = [&](int side) {
    return std::max(1, static_cast<int>(std::lround(static_cast<double>(side) * longerSide / longer)));
  };
  return {.width = fitted(size.width), .height = fitted(size.height)};
}

AxisWeights::AxisWeights(int sourceLength, int targetLength) {
  const std::int64_t source = sourceLength;
  const std::int64_t target = targetLength;
  pixels.reserve(static_cast<std::size_t>(target));
  weights.reserve(static_cast<std::size_t>(source + target));
  for (std::int64_t i = 0; i < target; ++i) {
    const auto first = i * source / target;
    const auto end = ((i + 1) * source + target - 1) / target;
    pixels.push_back({static_cast<int>(first), static_cast<int>(end - first), weights.size()});
    // What was covered so far is rounded, not each weight, so that the sum comes out whatever the rounding.
    std::int64_t former = 0;
    for (auto next = first + 1; next <= end; ++next) {
      const auto part = std::min(next * target - i * source, source);
      const auto covered = (2 * part * weightSum + source) / (2 * source);
      weights.push_back(static_cast<std::uint16_t>(covered - former));
      former = covered;
    }
  }
}

AreaReducer::AreaReducer(PixelSize source, PixelLayout layout, PixelSize target)
    : layout_(layout),
      sourceWidth_(source.width),
      columns_(source.width, target.width),
      rows_(source.height, target.height),
      image_(target.width, target.height, QImage::Format_RGB32),
      sums_(static_cast<std::size_t>(source.width) * static_cast<std::size_t>(channelCount(layout))),
      columnSums_(sums_.size() + 3),
      columnWeights_(columns_.weights.begin(), columns_.weights.end()) {}

void AreaReducer::addRow(const std::uint8_t* row) {
  if (!isValid()) return;
  const auto* source = hasAlpha(layout_) ? premultiplied(row) : row;
  // A row that lies across an edge belongs to the pixels on both sides of it.
  while (targetRow_ < image_.height()) {
    const auto& pixel = rows_.pixels[static_cast<std::size_t>(targetRow_)];
    const int index = sourceRow_ - pixel.first;
    if (index < 0) break;
    const auto weight = rows_.weights[pixel.weights + static_cast<std::size_t>(index)];
    (index == 0 ? setWeighted : addWeighted)(sums_.data(), source, sums_.size(), weight);
    if (index + 1 < pixel.count) break;
    finishTargetRow();
  }
  ++sourceRow_;
}

const std::uint8_t* AreaReducer::premultiplied(const std::uint8_t* row) {
  if (isOpaque(row, sourceWidth_, layout_)) return row;
  opaque_ = false;
  if (layout_ == PixelLayout::Argb32) return row;
  premultiplied_.resize(sums_.size());
  (layout_ == PixelLayout::Rgba ? premultiplyWords : premultiplyGrey)(row, sourceWidth_, premultiplied_.data());
  return premultiplied_.data();
}

void AreaReducer::finishTargetRow() {
  auto* target = reinterpret_cast<QRgb*>(image_.scanLine(targetRow_++));
  std::copy(sums_.begin(), sums_.end(), columnSums_.begin());
  const auto* sums = columnSums_.data();
  const auto* weights = columnWeights_.data();
  switch (layout_) {
    case PixelLayout::Grey:
      return averageColumns<PixelLayout::Grey, 1>(sums, columns_.pixels, weights, target);
    case PixelLayout::GreyAlpha:
      return averageColumns<PixelLayout::GreyAlpha, 2>(sums, columns_.pixels, weights, target);
    case PixelLayout::Rgb:
      return averageColumns<PixelLayout::Rgb, 3>(sums, columns_.pixels, weights, target);
    case PixelLayout::Rgba:
      return averageColumns<PixelLayout::Rgba, 4>(sums, columns_.pixels, weights, target);
    case PixelLayout::Rgb32:
      return averageColumns<PixelLayout::Rgb32, 4>(sums, columns_.pixels, weights, target);
    case PixelLayout::Argb32:
      return averageColumns<PixelLayout::Argb32, 4>(sums, columns_.pixels, weights, target);
  }
}

QImage AreaReducer::takeImage() {
  if (targetRow_ < image_.height()) return {};
  if (!opaque_) image_.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
  return std::exchange(image_, QImage());
}

QImage reduced(const QImage& image, PixelSize target) {
  const bool alpha = image.hasAlphaChannel();
  const auto source = image.convertToFormat(alpha ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
  if (source.isNull()) return {};
  AreaReducer reducer({.width = source.width(), .height = source.height()},
                      alpha ? PixelLayout::Argb32 : PixelLayout::Rgb32, target);
  for (int y = 0; y < source.height(); ++y) reducer.addRow(source.constScanLine(y));
  return reducer.takeImage();
}

}  // namespace Nimbrel::Images
