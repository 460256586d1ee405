#include "Reader/Resampler.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace Nimbrel::Reader {

namespace {

/// Cubic convolution after Keys, with the usual slope of -1/2.
double cubic(double x) {
  x = std::abs(x);
  if (x < 1) return (1.5 * x - 2.5) * x * x + 1;
  if (x < 2) return ((-0.5 * x + 2.5) * x - 4) * x + 2;
  return 0;
}

/// What one target pixel is made of: weights, summing to 1, of the source pixels from `first` on.
struct Taps {
  int first = 0;
  std::vector<float> weights;
};

std::vector<Taps> tapsFor(int source, int target) {
  const double step = static_cast<double>(source) / target;
  const double stretch = std::max(1.0, step);
  std::vector<Taps> all(static_cast<std::size_t>(target));
  for (int i = 0; i < target; ++i) {
    const double centre = (i + 0.5) * step - 0.5;
    const int first = std::clamp(static_cast<int>(std::ceil(centre - 2 * stretch)), 0, source - 1);
    const int last = std::clamp(static_cast<int>(std::floor(centre + 2 * stretch)), first, source - 1);
    auto& taps = all[static_cast<std::size_t>(i)];
    taps.first = first;
    double sum = 0;
    for (int at = first; at <= last; ++at) sum += cubic((at - centre) / stretch);
    for (int at = first; at <= last; ++at) {
      taps.weights.push_back(static_cast<float>(cubic((at - centre) / stretch) / sum));
    }
  }
  return all;
}

/// Rounded in whole numbers: the library's functions would be called for every pixel.
std::uint8_t byte(float value) {
  const auto halves = static_cast<int>(2 * std::clamp(value, 0.0F, 255.0F));
  return static_cast<std::uint8_t>((halves + 1) / 2);
}

}  // namespace

Plane resampled(const Plane& plane, int width, int height) {
  const auto rows = tapsFor(plane.height(), height);
  const auto columns = tapsFor(plane.width(), width);
  std::vector<float> sums(static_cast<std::size_t>(plane.width()));
  Plane result(width, height);
  for (int y = 0; y < height; ++y) {
    const auto& taps = rows[static_cast<std::size_t>(y)];
    std::ranges::fill(sums, 0.0F);
    for (std::size_t i = 0; i < taps.weights.size(); ++i) {
      const auto* source = plane.row(taps.first + static_cast<int>(i));
      const float weight = taps.weights[i];
      for (std::size_t x = 0; x < sums.size(); ++x) sums[x] += weight * static_cast<float>(source[x]);
    }
    auto* target = result.row(y);
    for (int x = 0; x < width; ++x) {
      const auto& column = columns[static_cast<std::size_t>(x)];
      float sum = 0;
      for (std::size_t i = 0; i < column.weights.size(); ++i) sum += column.weights[i] * sums[column.first + i];
      target[x] = byte(sum);
    }
  }
  return result;
}

}  // namespace Nimbrel::Reader
