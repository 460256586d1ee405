#include "Linux/Media/GifCanvas.h"

#include "Linux/Media/GifMixing.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace Nimbrel::Media {

namespace {

/// A pixel stays as it is though its new colour would be this much closer (squared), which cannot be seen: two shades
/// in each channel. Compression makes colours tremble like that where nothing happens.
constexpr int tremble = 12;

/// So few unchanged pixels between changed ones are stored in less room with their colours than without.
constexpr std::ptrdiff_t shortGap = 8;

const QRgb* rowOf(const QImage& image, int y) { return reinterpret_cast<const QRgb*>(image.constScanLine(y)); }

bool rowsDiffer(const QImage& one, const QImage& other, int y) {
  return std::memcmp(rowOf(one, y), rowOf(other, y), static_cast<std::size_t>(one.width()) * sizeof(QRgb)) != 0;
}

/// The smallest part in which all differences lie.
QRect changedPart(const QImage& one, const QImage& other) {
  int top = 0;
  int bottom = one.height();
  while (top < bottom && !rowsDiffer(one, other, top)) ++top;
  while (bottom > top && !rowsDiffer(one, other, bottom - 1)) --bottom;
  int left = one.width();
  int right = 0;
  for (int y = top; y < bottom; ++y) {
    const auto* a = rowOf(one, y);
    const auto* b = rowOf(other, y);
    left = static_cast<int>(std::mismatch(a, a + left, b).first - a);
    int end = one.width();
    while (end > right && a[end - 1] == b[end - 1]) --end;
    right = end;
  }
  return {left, top, right - left, bottom - top};
}

/// From the first to the last pixel of a row that is not transparent; empty when all are.
QRect drawnPart(std::span<const std::uint8_t> row, std::uint8_t transparent, int left, int y) {
  const auto isDrawn = [=](std::uint8_t index) { return index != transparent; };
  const auto first = std::ranges::find_if(row, isDrawn);
  if (first == row.end()) return {};
  const auto last = std::find_if(row.rbegin(), row.rend(), isDrawn).base();
  return {left + static_cast<int>(first - row.begin()), y, static_cast<int>(last - first), 1};
}

}  // namespace

GifImage GifCanvas::next(const QImage& frame) {
  if (!hasFrame_) {
    shown_ = QImage(frame.size(), QImage::Format_RGB32);
    shown_.fill(Qt::black);
  }
  const QRect changed = hasFrame_ ? changedPart(frame, source_) : frame.rect();
  const auto image = changed.isEmpty() ? GifImage{} : imageOf(frame, changed);
  source_ = frame;
  hasFrame_ = true;
  return image;
}

GifImage GifCanvas::imageOf(const QImage& frame, const QRect& changed) {
  count(frame, changed);
  palette_ = palettes_.choose(colours_);
  const QRect drawn = draw(frame, changed);
  const auto stride = static_cast<std::ptrdiff_t>(changed.width());
  auto* indices = indices_.data() + (drawn.top() - changed.top()) * stride + (drawn.left() - changed.left());
  return {.place = drawn, .indices = indices, .stride = stride, .palette = palette_};
}

void GifCanvas::count(const QImage& frame, const QRect& place) {
  colours_.clear();
  for (int y = place.top(); y <= place.bottom(); ++y) {
    const auto* now = rowOf(frame, y);
    const auto* before = hasFrame_ ? rowOf(source_, y) : nullptr;
    for (int x = place.left(); x <= place.right(); ++x) {
      if (!before || now[x] != before[x]) colours_.add(now[x]);
    }
  }
}

QRect GifCanvas::draw(const QImage& frame, const QRect& place) {
  const auto width = static_cast<std::size_t>(place.width());
  indices_.resize(width * static_cast<std::size_t>(place.height()));
  auto* indices = indices_.data();
  QRect drawn;
  for (int y = place.top(); y <= place.bottom(); ++y, indices += width) {
    drawRow(rowOf(frame, y), y, indices, place);
    drawn |= drawnPart({indices, width}, palette_.palette->transparent(), place.left(), y);
    if (hasFrame_) fillGaps({indices, width}, rowOf(shown_, y) + place.left());
  }
  return drawn;
}

void GifCanvas::drawRow(const QRgb* frame, int y, std::uint8_t* indices, const QRect& place) {
  const auto* before = hasFrame_ ? rowOf(source_, y) : nullptr;
  auto* shown = reinterpret_cast<QRgb*>(shown_.scanLine(y));
  for (int x = place.left(); x <= place.right(); ++x, ++indices) {
    *indices = palette_.palette->transparent();
    if (before && frame[x] == before[x]) continue;
    const auto index = indexAt(x, y, colours_.of(frame[x]));
    const QRgb colour = palette_.palette->colour(index);
    if (before && canStay(shown[x], frame[x], colour)) continue;
    shown[x] = colour;
    *indices = index;
  }
}

bool GifCanvas::canStay(QRgb shown, QRgb wanted, QRgb instead) const {
  return distance(shown, wanted) <= distance(instead, wanted) + (palette_.isExact ? 0 : tremble);
}

void GifCanvas::fillGaps(std::span<std::uint8_t> indices, const QRgb* shown) const {
  const auto transparent = palette_.palette->transparent();
  const auto isDrawn = [=](std::uint8_t index) { return index != transparent; };
  auto at = std::ranges::find_if(indices, isDrawn);
  while (at != indices.end()) {
    at = std::find(at, indices.end(), transparent);
    const auto end = std::find_if(at, indices.end(), isDrawn);
    const bool isShort = end != indices.end() && end - at <= shortGap;
    for (; at != end; ++at) {
      *at = indexFor(shown[at - indices.begin()], *std::prev(at), isShort ? Search::All : Search::Last);
      if (*at == transparent) break;
    }
    at = end;
  }
}

std::uint8_t GifCanvas::indexFor(QRgb shown, std::uint8_t last, Search search) const {
  const auto& palette = *palette_.palette;
  if (palette.colour(last) == shown) return last;
  if (search == Search::Last) return palette.transparent();
  const auto& entry = colours_.of(shown);
  const bool isKnown = entry.colour == shown && palette.colour(entry.near) == shown;
  return isKnown ? entry.near : palette.transparent();
}

}  // namespace Nimbrel::Media
