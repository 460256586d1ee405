#include "Reader/LineMemory.h"

#include <functional>
#include <string_view>

namespace Nimbrel::Reader {

namespace {

constexpr std::size_t capacity = 20'000;  ///< a few megabytes

/// Of 64 bits, so that among so few two different crops do not meet.
std::uint64_t hashOf(const Plane& crop) {
  const auto& bytes = crop.bytes();
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return std::hash<std::string_view>()(text) * 31 + static_cast<std::uint64_t>(crop.width());
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
  const std::scoped_lock lock(mutex_);
  if (words_.size() >= capacity) words_.clear();
  words_.insert_or_assign(hash, std::move(words));
}

}  // namespace Nimbrel::Reader
