#include "Views/Gallery/ThumbCache.h"

#include <utility>

namespace Nimbrel {

void ThumbCache::store(CompactImage image, const std::string& path) {
  if (!holds(path)) order_.push_back(path);
  cache_.insert_or_assign(path, std::move(image));
  while (order_.size() > limit) {
    cache_.erase(order_.front());
    order_.pop_front();
  }
}

void ThumbCache::remove(const std::string& path) {
  if (cache_.erase(path) > 0) std::erase(order_, path);
}

QImage ThumbCache::image(const std::string& path) const { return packed(path).image(); }

CompactImage ThumbCache::packed(const std::string& path) const {
  const auto found = cache_.find(path);
  return found == cache_.end() ? CompactImage() : found->second;
}

}  // namespace Nimbrel
