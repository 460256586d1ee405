#pragma once

#include <QByteArray>
#include <QImage>

namespace Nimbrel {

/// A picture in about a twentieth of the memory of its pixels, for hundreds that are kept to be shown small: JPEG at a
/// quality at which nothing is seen of that, PNG where something is transparent. A plain value, cheap to copy; any
/// thread.
class CompactImage {
 public:
  CompactImage() = default;
  /// Takes a few milliseconds for a thumbnail, and so belongs in the background.
  explicit CompactImage(const QImage& image);

  [[nodiscard]] bool isNull() const { return bytes_.isNull(); }
  /// The picture in its full size; null when there is none.
  [[nodiscard]] QImage image() const;
  /// What it takes of memory.
  [[nodiscard]] qsizetype byteCount() const { return bytes_.size(); }

 private:
  QByteArray bytes_;
};

}  // namespace Nimbrel
