#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace Nimbrel::Reader {

/// Finds things by the height of the picture that they stand at, without looking at all of them.
class Bands {
 public:
  using Band = std::vector<std::uint32_t>;

  /// Enters a thing that reaches from `top` to `bottom`; a second time only where it was not yet.
  void enter(std::uint32_t index, double top, double bottom) {
    const auto last = at(bottom);
    if (last >= bands_.size()) bands_.resize(last + 1);
    for (auto band = at(top); band <= last; ++band) {
      if (std::ranges::find(bands_[band], index) == bands_[band].end()) bands_[band].push_back(index);
    }
  }

  /// Calls `visit` with each thing that may stand between `top` and `bottom`, some more than once; it says whether
  /// the thing is worth keeping.
  template <typename Visit>
  void between(double top, double bottom, const Visit& visit) {
    const auto end = std::min(at(bottom) + 1, bands_.size());
    for (auto band = at(top); band < end; ++band)
      std::erase_if(bands_[band], [&](auto index) { return !visit(index); });
  }

 private:
  static constexpr std::size_t height = 16;

  static std::size_t at(double y) { return static_cast<std::size_t>(std::max(0.0, y)) / height; }

  std::vector<Band> bands_;
};

}  // namespace Nimbrel::Reader
