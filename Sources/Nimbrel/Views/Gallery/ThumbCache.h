#pragma once

#include "Views/Gallery/CompactImage.h"

#include <QImage>

#include <cstddef>
#include <deque>
#include <string>
#include <unordered_map>

namespace Nimbrel {

/// The thumbnails decoded last, by the path of their file: first in, first out, so that what is scrolled through once
/// pushes out what was scrolled through before it. A file that changes in place keeps its old thumbnail. Main thread.
class ThumbCache {
 public:
  static constexpr std::size_t limit = 400;

  /// Keeps a thumbnail. One for a path that is there already takes the place of the old one and is no younger for it.
  void store(CompactImage image, const std::string& path);
  /// Forgets the thumbnail of a file that is no shot's any more, if there is one.
  void remove(const std::string& path);
  [[nodiscard]] bool holds(const std::string& path) const { return cache_.contains(path); }
  /// Null when there is none. Reading makes nothing younger.
  [[nodiscard]] QImage image(const std::string& path) const;
  /// The same as it is kept, for who unpacks it later; null when there is none.
  [[nodiscard]] CompactImage packed(const std::string& path) const;
  [[nodiscard]] std::size_t size() const { return cache_.size(); }

 private:
  std::unordered_map<std::string, CompactImage> cache_;
  std::deque<std::string> order_;  ///< the keys, the first stored in front
};

}  // namespace Nimbrel
