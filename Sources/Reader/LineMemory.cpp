#include "Reader/LineMemory.h"

#include <functional>
#include <numeric>
#include <string_view>
#include <utility>

namespace Nimbrel::Reader {

namespace {

constexpr std::size_t entrySize = 80;  ///< of a line without its words, with its place in the table

/// Of 64 bits, so that among so few two different crops do not meet.
std::uint64_t hashOf(const Plane& crop) {
  const auto& bytes = crop.bytes();
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return std::hash<std::string_view>()(text) * 31 + static_cast<std::uint64_t>(crop.width());
}

std::size_t sizeOf(const std::vector<Word>& words) {
  // Text that is short lies within the string; counting it twice there does no harm.
  return std::accumulate(words.begin(), words.end(), entrySize,
                         [](std::size_t sum, const Word& word) { return sum + sizeof(Word) + word.text.capacity(); });
}

}  // namespace

std::optional<std::vector<Word>> LineMemory::wordsOf(const Plane& crop) const {
  const auto hash = hashOf(crop);
  const std::scoped_lock lock(mutex_);
  const auto found = words_.find(hash);
  return found == words_.end() ? std::nullopt : std::optional(found->second);
}

void LineMemory::keep(const Plane& crop, std::vector<Word> words) {
  const auto hash = hashOf(crop);
  const auto size = sizeOf(words);
  const std::scoped_lock lock(mutex_);
  if (size > mostBytes_ || words_.contains(hash)) return;
  if (bytes_ + size > mostBytes_) {
    words_.clear();
    bytes_ = 0;
  }
  words_.emplace(hash, std::move(words));
  bytes_ += size;
}

}  // namespace Nimbrel::Reader
