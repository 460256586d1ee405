#include "Editing/Blur.h"

#include "Editing/GaussianBlur.h"
#include "Editing/PixelSpace.h"

#include <QPoint>
#include <QRect>
#include <QSize>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <vector>

namespace Nimbrel::Flatten {

namespace {

using Places = std::span<const QRect>;

std::vector<QRect> placesOf(std::span<const Annotation> marks, QSize picture) {
  std::vector<QRect> places;
  for (const auto& mark : marks) {
    if (!hasPlace(mark)) continue;
    const auto place = touchedPixels(inPixels(mark, picture), picture);
    if (!place.isEmpty()) places.push_back(place);
  }
  return places;
}

QRect around(Places places) {
  QRect all;
  for (const auto& place : places) all = all.united(place);
  return all;
}

/// How many pixels are looked at to blur a part.
std::int64_t workOn(const QRect& part, double deviation) {
  const int margin = static_cast<int>(3 * deviation);
  return std::int64_t{part.width() + 2 * margin} * (part.height() + 2 * margin);
}

/// Whether it is less work to blur each place by itself than all that lies between them.
bool isLessWorkOneByOne(Places places, double deviation) {
  std::int64_t work = 0;
  for (const auto& place : places) work += workOn(place, deviation);
  return work < workOn(around(places), deviation);
}

/// Not with a painter, of which Qt promises nothing beyond coordinates of 32767.
void copyPixels(const QImage& piece, QPoint origin, const QRect& place, QImage& output) {
  for (int y = place.top(); y <= place.bottom(); ++y) {
    const auto* from = reinterpret_cast<const QRgb*>(piece.constScanLine(y - origin.y())) + place.left() - origin.x();
    auto* to = reinterpret_cast<QRgb*>(output.scanLine(y)) + place.left();
    std::memcpy(to, from, static_cast<std::size_t>(place.width()) * sizeof(QRgb));
  }
}

void blurPlaces(const QImage& source, Places places, double deviation, QImage& output) {
  const auto part = around(places);
  const auto piece = gaussianBlurred(source, part, deviation);
  for (const auto& place : places) copyPixels(piece, part.topLeft(), place, output);
}

}  // namespace

QImage blurred(const QImage& source, std::span<const Annotation> marks) {
  if (marks.empty()) return {};
  auto output = source.copy();
  if (output.isNull()) throw std::bad_alloc();
  const auto places = placesOf(marks, source.size());
  if (places.empty()) return output;
  const double deviation = MarkSizes(source.size()).blurRadius;
  if (isLessWorkOneByOne(places, deviation)) {
    for (const auto& place : places) blurPlaces(source, {&place, 1}, deviation, output);
  } else {
    blurPlaces(source, places, deviation, output);
  }
  return output;
}

}  // namespace Nimbrel::Flatten
