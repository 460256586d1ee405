#pragma once

#include "Reader/Plane.h"
#include "Reader/Words.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <unordered_map>
#include <vector>

namespace Nimbrel::Reader {

/// What was read off crops that may come again: the same sidebar and the same buttons are on many screenshots. Safe to
/// use from several threads.
class LineMemory {
 public:
  /// Forgets everything before it takes more than `mostBytes`. By default that is room for some 20,000 lines.
  explicit LineMemory(std::size_t mostBytes = std::size_t{8} << 20) : mostBytes_(mostBytes) {}

  [[nodiscard]] std::optional<std::vector<Word>> wordsOf(const Plane& crop) const;
  void keep(const Plane& crop, std::vector<Word> words);

 private:
  const std::size_t mostBytes_;
  mutable std::mutex mutex_;
  std::unordered_map<std::uint64_t, std::vector<Word>> words_;  ///< by a hash of the crop
  std::size_t bytes_ = 0;                                       ///< that they take, about
};

}  // namespace Nimbrel::Reader
