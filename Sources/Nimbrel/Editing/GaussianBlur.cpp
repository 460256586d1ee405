#include "Editing/GaussianBlur.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <new>
#include <numeric>
#include <vector>

namespace Nimbrel {

namespace {

constexpr int channels = 4;
constexpr int linesAtOnce = 16;
constexpr int passes = 3;
constexpr float half = 0.5F;
/// A box is twice as wide, and the sum of that many samples, each up to 255 * 256, just fits into 31 bits.
constexpr double largestDeviation = 16'000;
/// Where the Gaussian reaches so many times farther than the picture, nearly all that counts are the two edges, and
/// there is nothing to gain from adding them up over and over.
constexpr int mostLengths = 4;

using Radii = std::array<int, passes>;

/// Boxes of two neighbouring odd widths, mixed so that their variances add up to that of the Gaussian.
Radii boxRadii(double wanted, int length) {
  const double deviation = std::min({wanted, largestDeviation, 1.0 * mostLengths * length});
  const double twelveVariances = 12 * deviation * deviation;
  const double ideal = std::sqrt(twelveVariances / passes + 1);
  const int narrow = (static_cast<int>(ideal) - 1) / 2 * 2 + 1;
  const double width = narrow;
  const auto narrowBoxes =
      std::lround((twelveVariances - passes * width * width - 4 * passes * width - 3 * passes) / (-4 * width - 4));
  Radii radii{};
  for (int i = 0; i < passes; ++i) radii.at(i) = (i < narrowBoxes ? narrow : narrow + 2) / 2;
  return radii;
}

int reach(const Radii& radii) { return std::accumulate(radii.begin(), radii.end(), 0); }

/// Pixels in lines along which they are blurred: the rows of a picture, or its columns.
template <typename Byte>
struct Lines {
  Byte* first;
  qsizetype step;     ///< bytes from a pixel to the next one of its line
  qsizetype between;  ///< bytes from a line to the next one

  [[nodiscard]] Byte* pixel(qsizetype position, qsizetype line) const {
    return first + position * step + line * between;
  }
};

/// A few lines side by side, so that each step works on all of them at once. Samples have 8 bits behind the point.
class Strip {
 public:
  Strip(int positions, int lines)
      : lanes_(static_cast<std::size_t>(lines) * channels),
        sums_(lanes_),
        samples_(static_cast<std::size_t>(positions) * lanes_) {}

  /// Takes in lines from the position `start` on, which may lie before the first; the last one is `last`.
  void load(const Lines<const uchar>& lines, int start, int last) {
    const auto count = samples_.size() / lanes_;
    for (std::size_t i = 0; i < count; ++i) {
      const auto position = std::clamp<qsizetype>(start + static_cast<qsizetype>(i), 0, last);
      auto* sample = &samples_[i * lanes_];
      for (std::size_t lane = 0; lane < lanes_; lane += channels) {
        const auto* pixel = lines.pixel(position, static_cast<qsizetype>(lane / channels));
        for (int c = 0; c < channels; ++c) sample[lane + c] = static_cast<std::uint16_t>(pixel[c] << 8);
      }
    }
  }

  /// Each sample becomes the mean of a box that begins with it, which takes 2 * radius positions off the end.
  void average(int radius) {
    const std::size_t before = 2 * static_cast<std::size_t>(radius) * lanes_;
    const float share = 1.0F / static_cast<float>(2 * radius + 1);
    std::ranges::fill(sums_, 0);
    for (std::size_t i = 0; i < before; i += lanes_) {
      for (std::size_t lane = 0; lane < lanes_; ++lane) sums_[lane] += samples_[i + lane];
    }
    for (std::size_t i = 0; i + before < samples_.size(); i += lanes_) {
      step(&samples_[i], &samples_[i + before], share);
    }
    samples_.resize(samples_.size() - before);
  }

  void store(const Lines<uchar>& lines) const {
    for (std::size_t i = 0; i * lanes_ < samples_.size(); ++i) {
      const auto* sample = &samples_[i * lanes_];
      for (std::size_t lane = 0; lane < lanes_; lane += channels) {
        auto* pixel = lines.pixel(static_cast<qsizetype>(i), static_cast<qsizetype>(lane / channels));
        for (int c = 0; c < channels; ++c) pixel[c] = static_cast<uchar>((sample[lane + c] + 128) >> 8);
      }
    }
  }

 private:
  void step(std::uint16_t* leaving, const std::uint16_t* entering, float share) {
    for (std::size_t lane = 0; lane < lanes_; ++lane) {
      const std::int32_t sum = sums_[lane] + entering[lane];
      sums_[lane] = sum - leaving[lane];
      // Cut off rather than rounded by a function, which the compiler would not make part of the vector.
      const float rounded = static_cast<float>(sum) * share + half;
      leaving[lane] = static_cast<std::uint16_t>(static_cast<std::int32_t>(rounded));
    }
  }

  std::size_t lanes_;
  std::vector<std::int32_t> sums_;
  std::vector<std::uint16_t> samples_;
};

/// What is blurred along lines, and what comes out: `count` lines of `length` pixels from `start` on.
struct Job {
  Lines<const uchar> from;
  Lines<uchar> to;
  int start;
  int last;  ///< the last position that there is in `from`
  int length;
  int count;
};

void blurAlong(const Job& job, const Radii& radii) {
  const int margin = reach(radii);
  for (int line = 0; line < job.count; line += linesAtOnce) {
    Strip strip(job.length + 2 * margin, std::min(linesAtOnce, job.count - line));
    strip.load({job.from.pixel(0, line), job.from.step, job.from.between}, job.start - margin, job.last);
    for (const int radius : radii) strip.average(radius);
    strip.store({job.to.pixel(0, line), job.to.step, job.to.between});
  }
}

QImage made(int width, int height, QImage::Format format) {
  QImage image(width, height, format);
  if (image.isNull()) throw std::bad_alloc();
  return image;
}

}  // namespace

QImage gaussianBlurred(const QImage& picture, const QRect& part, double deviation) {
  const auto columnRadii = boxRadii(deviation, picture.height());
  const int margin = reach(columnRadii);
  const int top = std::max(part.top() - margin, 0);
  const int rows = std::min(part.bottom() + margin, picture.height() - 1) - top + 1;

  auto across = made(part.width(), rows, picture.format());
  blurAlong({.from = {picture.constScanLine(top), channels, picture.bytesPerLine()},
             .to = {across.bits(), channels, across.bytesPerLine()},
             .start = part.left(),
             .last = picture.width() - 1,
             .length = part.width(),
             .count = rows},
            boxRadii(deviation, picture.width()));
  auto both = made(part.width(), part.height(), picture.format());
  blurAlong({.from = {across.constBits(), across.bytesPerLine(), channels},
             .to = {both.bits(), both.bytesPerLine(), channels},
             .start = part.top() - top,
             .last = rows - 1,
             .length = part.height(),
             .count = part.width()},
            columnRadii);
  return both;
}

}  // namespace Nimbrel
