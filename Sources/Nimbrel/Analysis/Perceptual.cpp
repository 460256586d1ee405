#include "Analysis/Perceptual.h"

#include "Analysis/HashIndex.h"
#include "Platform/ImageFile.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace Nimbrel::Perceptual {

namespace {

constexpr int columns = 9;
constexpr int rows = 8;

/// Brightness from 0 to 255 over white (weights of ITU-R BT.601).
double greyOverWhite(QRgb premultiplied) {
  const double white = 255.0 - qAlpha(premultiplied);
  return 0.299 * (qRed(premultiplied) + white) + 0.587 * (qGreen(premultiplied) + white) +
         0.114 * (qBlue(premultiplied) + white);
}

/// How much of the unit interval that begins at `unit` lies between `from` and `to`.
double coverage(int unit, double from, double to) {
  return std::min(to, unit + 1.0) - std::max(from, static_cast<double>(unit));
}

/// The mean brightness of one cell, by the area that each pixel has in it.
int cellGrey(const QImage& image, int column, int row) {
  const double left = static_cast<double>(image.width()) * column / columns;
  const double right = static_cast<double>(image.width()) * (column + 1) / columns;
  const double top = static_cast<double>(image.height()) * row / rows;
  const double bottom = static_cast<double>(image.height()) * (row + 1) / rows;
  double sum = 0;
  double area = 0;
  for (int y = static_cast<int>(top); y < bottom && y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = static_cast<int>(left); x < right && x < image.width(); ++x) {
      const double weight = coverage(x, left, right) * coverage(y, top, bottom);
      sum += weight * greyOverWhite(line[x]);
      area += weight;
    }
  }
  return static_cast<int>(std::lround(sum / area));
}

bool newerFirst(const ShotPtr& a, const ShotPtr& b) { return a->date > b->date; }
bool largerFirst(const ShotList& a, const ShotList& b) { return a.size() > b.size(); }

}  // namespace

std::int64_t hash(const std::string& path) {
  const auto images = ImageFile::thumbnails(path, hashThumbnailSizes);
  return images.empty() ? 0 : hash(images.back());
}

std::int64_t hash(const QImage& thumbnail) {
  if (thumbnail.isNull()) return 0;
  const auto image = thumbnail.convertToFormat(QImage::Format_ARGB32_Premultiplied);
  std::uint64_t bits = 0;
  for (int row = 0; row < rows; ++row) {
    int grey = cellGrey(image, 0, row);
    for (int column = 0; column + 1 < columns; ++column) {
      const int next = cellGrey(image, column + 1, row);
      if (grey > next) bits |= std::uint64_t{1} << (8 * row + column);
      grey = next;
    }
  }
  return bits <= 1 ? 1 : static_cast<std::int64_t>(bits);
}

int distance(std::int64_t a, std::int64_t b) { return std::popcount(static_cast<std::uint64_t>(a ^ b)); }

std::vector<ShotList> groups(const ShotList& shots, int tolerance) {
  ShotList hashed;
  std::vector<std::uint64_t> hashes;
  for (const auto& shot : shots) {
    if (shot->phash == 0) continue;
    hashed.push_back(shot);
    hashes.push_back(static_cast<std::uint64_t>(shot->phash));
  }

  std::vector<ShotList> found;
  HashIndex index(hashes, tolerance);
  for (std::size_t first = 0; first < hashed.size(); ++first) {
    const auto members = index.takeNeighbours(first);
    if (members.size() < 2) continue;
    ShotList group;
    for (const auto member : members) group.push_back(hashed[member]);
    std::ranges::stable_sort(group, newerFirst);
    found.push_back(std::move(group));
  }
  std::ranges::stable_sort(found, largerFirst);
  return found;
}

}  // namespace Nimbrel::Perceptual
