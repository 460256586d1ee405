#pragma once

#include <QRgb>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Nimbrel::Media {

/// The distinct colours of a picture, and how a palette shows each of them. When there are more than 32,768, those that
/// differ in the last bit of their channels alone are taken together under the most frequent one, and so on.
class GifColours {
 public:
  struct Entry {
    QRgb colour = 0;          ///< opaque; 0 in a place that is free
    std::uint32_t count = 0;  ///< pixels that have it
    std::uint8_t near = 0;    ///< the index of the palette's colour that is nearest
    std::uint8_t far = 0;     ///< of that which lies on its other side
    std::uint8_t share = 0;   ///< how many of 64 pixels are to have the latter
  };

  GifColours();

  void clear();

  /// Counts a pixel. What is known of the palette is out of date from here on.
  void add(QRgb pixel) {
    auto* entry = &place(pixel);
    if (entry->colour == 0) entry = &insert(pixel);
    ++entry->count;
  }

  [[nodiscard]] std::size_t size() const { return size_; }

  /// The entry of a pixel that was counted; of another one, either an entry that is like it or a free one.
  [[nodiscard]] const Entry& of(QRgb pixel) const { return entries_[placeOf(pixel)]; }

  template <class Visit>
  void forEach(Visit visit) {
    for (auto& entry : entries_) {
      if (entry.colour != 0) visit(entry);
    }
  }
  template <class Visit>
  void forEach(Visit visit) const {
    for (const auto& entry : entries_) {
      if (entry.colour != 0) visit(entry);
    }
  }

 private:
  static constexpr int placeBits = 16;

  [[nodiscard]] QRgb keyOf(QRgb pixel) const { return (pixel & mask_) | 0xFF000000; }
  [[nodiscard]] std::size_t placeOf(QRgb pixel) const {
    constexpr std::uint32_t golden = 0x9E3779B1;  // spreads what is alike
    const QRgb key = keyOf(pixel);
    std::size_t at = (key * golden) >> (32 - placeBits);
    while (entries_[at].colour != 0 && keyOf(entries_[at].colour) != key) at = (at + 1) % entries_.size();
    return at;
  }
  [[nodiscard]] Entry& place(QRgb pixel) { return entries_[placeOf(pixel)]; }
  Entry& insert(QRgb pixel);
  void coarsen();

  std::vector<Entry> entries_;  ///< each at the place that its colour tells or behind it; never more than half full
  std::size_t size_ = 0;
  QRgb mask_ = 0xFFFFFFFF;
};

}  // namespace Nimbrel::Media
