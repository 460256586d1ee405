#pragma once

#include "Linux/Media/GifColours.h"
#include "Linux/Media/GifPalettes.h"

#include <QImage>
#include <QRect>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace Nimbrel::Media {

/// What is stored of a frame: the colours of a part of it, as indices of a palette. Borrowed from the canvas until it
/// is asked for the next one.
struct GifImage {
  QRect place;                      ///< empty when nothing is to change
  std::uint8_t* indices = nullptr;  ///< of its upper left pixel; whoever writes them may change them
  std::ptrdiff_t stride = 0;        ///< from row to row
  GifPalettes::Choice palette;
};

/// What a viewer shows so far, and what it has to be given to show the next frame: only where that differs from the
/// frame before it, and only what brings the viewer closer to it. What stands still therefore never flickers. All
/// frames have the format RGB32 and the size of the first.
class GifCanvas {
 public:
  [[nodiscard]] GifImage next(const QImage& frame);

 private:
  [[nodiscard]] GifImage imageOf(const QImage& frame, const QRect& changed);
  void count(const QImage& frame, const QRect& place);
  [[nodiscard]] QRect draw(const QImage& frame, const QRect& place);
  void drawRow(const QRgb* frame, int y, std::uint8_t* indices, const QRect& place);
  [[nodiscard]] bool canStay(QRgb shown, QRgb wanted, QRgb instead) const;
  void fillGaps(std::span<std::uint8_t> indices, const QRgb* shown) const;
  enum class Search { Last, All };
  [[nodiscard]] std::uint8_t indexFor(QRgb shown, std::uint8_t last, Search search) const;

  bool hasFrame_ = false;
  QImage source_;                      ///< the frame before, or as much of nothing
  QImage shown_;                       ///< what the viewer made of it
  std::vector<std::uint8_t> indices_;  ///< of the changed part, row by row
  GifColours colours_;                 ///< of its pixels that have changed
  GifPalettes palettes_;
  GifPalettes::Choice palette_;  ///< of the present frame
};

}  // namespace Nimbrel::Media
