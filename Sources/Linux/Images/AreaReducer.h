#pragma once

#include "Platform/ImageFile.h"

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Nimbrel::Images {

/// How the pixels of a row lie in memory. Rgb32 and Argb32 are the words of QImage, the latter premultiplied; the alpha
/// of the others is not yet multiplied in.
enum class PixelLayout { Grey, GreyAlpha, Rgb, Rgba, Rgb32, Argb32 };

[[nodiscard]] int channelCount(PixelLayout layout);

/// The size of a picture whose longer side is at most `longerSide`: proportions kept, never larger, no side below 1.
[[nodiscard]] ImageFile::PixelSize fittedSize(ImageFile::PixelSize size, int longerSide);

/// How much each of a line of pixels adds to each pixel of a shorter line.
struct AxisWeights {
  /// A pixel is the sum over `count` source pixels from `first` on; their weights stand at `weights` and sum to 256.
  struct Pixel {
    int first;
    int count;
    std::size_t weights;
  };

  AxisWeights(int sourceLength, int targetLength);

  std::vector<Pixel> pixels;
  std::vector<std::uint16_t> weights;
};

/// Makes a smaller picture out of rows that come one after the other: each pixel is the average of the area that it
/// covers, transparent pixels counting less. Keeps one row of sums.
class AreaReducer {
 public:
  /// Neither side of the target is longer than that of the source, and none is 0.
  AreaReducer(ImageFile::PixelSize source, PixelLayout layout, ImageFile::PixelSize target);

  /// False when there was no memory for the target.
  [[nodiscard]] bool isValid() const { return !image_.isNull(); }

  /// The next row from the top. Rows beyond the last are passed over.
  void addRow(const std::uint8_t* row);

  /// The picture, Format_RGB32 or, where something of it is transparent, Format_ARGB32_Premultiplied. Null before the
  /// last row; to be asked once.
  [[nodiscard]] QImage takeImage();

 private:
  [[nodiscard]] const std::uint8_t* premultiplied(const std::uint8_t* row);
  void finishTargetRow();

  PixelLayout layout_;
  int sourceWidth_;
  AxisWeights columns_;
  AxisWeights rows_;
  QImage image_;
  int sourceRow_ = 0;
  int targetRow_ = 0;
  bool opaque_ = true;
  std::vector<std::uint16_t> sums_;
  std::vector<float> columnSums_;
  std::vector<float> columnWeights_;
  std::vector<std::uint8_t> premultiplied_;
};

/// A picture in memory reduced in the same way.
[[nodiscard]] QImage reduced(const QImage& image, ImageFile::PixelSize target);

}  // namespace Nimbrel::Images
