#pragma once

#include "Reader/Plane.h"
#include "Reader/Words.h"

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
  [[nodiscard]] std::optional<std::vector<Word>> wordsOf(const Plane& crop) const;
  void keep(const Plane& crop, std::vector<Word> words);

 private:
  mutable std::mutex mutex_;
  std::unordered_map<std::uint64_t, std::vector<Word>> words_;  ///< by a hash of the crop
};

}  // namespace Nimbrel::Reader
