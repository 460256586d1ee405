#include "Views/Gallery/GalleryPreviewCache.h"

#include <algorithm>
#include <numeric>

namespace Nimbrel {

void GalleryPreviewCache::store(const QImage& image, const std::string& path) {
  remove(path);
  // Else it would push out all others and go itself then.
  if (cost(image) > costLimit) return;
  entries_.push_front({path, image});
  while (entries_.size() > countLimit || totalCost() > costLimit) entries_.pop_back();
}

void GalleryPreviewCache::remove(const std::string& path) {
  entries_.remove_if([&](const Entry& entry) { return entry.path == path; });
}

QImage GalleryPreviewCache::image(const std::string& path) {
  const auto found = std::ranges::find(entries_, path, &Entry::path);
  if (found == entries_.end()) return {};
  entries_.splice(entries_.begin(), entries_, found);
  return found->image;
}

bool GalleryPreviewCache::holds(const std::string& path) const {
  return std::ranges::find(entries_, path, &Entry::path) != entries_.end();
}

std::int64_t GalleryPreviewCache::totalCost() const {
  return std::accumulate(entries_.begin(), entries_.end(), std::int64_t{0},
                         [](std::int64_t sum, const Entry& entry) { return sum + cost(entry.image); });
}

std::int64_t GalleryPreviewCache::cost(const QImage& image) {
  return std::max(std::int64_t{1}, std::int64_t{image.width()} * image.height() * 4);
}

}  // namespace Nimbrel
