#pragma once

#include <QImage>

#include <cstddef>
#include <cstdint>
#include <list>
#include <string>

namespace Nimbrel {

/// The large pictures shown last, by the path of their file: as many as fit both limits, those used longest ago going
/// first. A picture that is larger than all may be is not kept at all. Main thread.
class GalleryPreviewCache {
 public:
  static constexpr std::size_t countLimit = 16;
  static constexpr std::int64_t costLimit = 100'663'296;  ///< bytes

  /// Keeps a picture, in place of one that the path may have.
  void store(const QImage& image, const std::string& path);
  /// Forgets the picture of a path, if there is one.
  void remove(const std::string& path);
  /// Null when there is none. Whoever reads it uses it.
  [[nodiscard]] QImage image(const std::string& path);
  [[nodiscard]] bool holds(const std::string& path) const;
  /// Bytes of all pictures together.
  [[nodiscard]] std::int64_t totalCost() const;

  /// The bytes that a picture counts for, 1 at least.
  [[nodiscard]] static std::int64_t cost(const QImage& image);

 private:
  struct Entry {
    std::string path;
    QImage image;
  };
  std::list<Entry> entries_;  ///< the one used last in front
};

}  // namespace Nimbrel
