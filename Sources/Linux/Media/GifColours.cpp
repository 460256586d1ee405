#include "Linux/Media/GifColours.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace Nimbrel::Media {

GifColours::GifColours() : entries_(std::size_t{1} << placeBits) {}

void GifColours::clear() {
  if (size_ > 0) std::ranges::fill(entries_, Entry{});
  size_ = 0;
  mask_ = 0xFFFFFFFF;
}

GifColours::Entry& GifColours::insert(QRgb pixel) {
  if (size_ >= entries_.size() / 2) coarsen();
  auto& entry = place(pixel);
  if (entry.colour == 0) {
    entry.colour = pixel | 0xFF000000;
    ++size_;
  }
  return entry;
}

void GifColours::coarsen() {
  auto former = std::exchange(entries_, std::vector<Entry>(entries_.size()));
  std::ranges::sort(former, std::ranges::greater(), &Entry::count);
  size_ = 0;
  mask_ = (mask_ << 1) & 0xFEFEFEFE;
  for (const auto& entry : former) {
    if (entry.colour != 0) insert(entry.colour).count += entry.count;
  }
}

}  // namespace Nimbrel::Media
