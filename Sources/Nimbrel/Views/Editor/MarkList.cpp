#include "Views/Editor/MarkList.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int blackInk = 4;

/// As much of the shift as keeps both coordinates where the picture is.
double limited(double shift, double one, double other) {
  const auto [low, high] = std::minmax(one, other);
  // A mark that reaches beyond an edge already moves no further that way.
  return std::clamp(shift, std::min(0.0, -low), std::max(0.0, 1 - high));
}

}  // namespace

std::size_t MarkList::countOf(Annotation::Kind kind) const {
  return static_cast<std::size_t>(std::ranges::count(items_, kind, &Annotation::kind));
}

void MarkList::add(Annotation mark) {
  if (mark.kind == Annotation::Kind::crop) {
    std::erase_if(items_, [](const Annotation& item) { return item.kind == Annotation::Kind::crop; });
  }
  items_.push_back(std::move(mark));
  taken_.clear();
}

void MarkList::addRedaction(const QRectF& rect) {
  Annotation mark;
  mark.kind = Annotation::Kind::redact;
  mark.start = rect.topLeft();
  mark.end = rect.bottomRight();
  mark.colorIndex = blackInk;
  const bool isCovered = std::ranges::any_of(items_, [&mark](const Annotation& item) {
    return item.kind == Annotation::Kind::redact && item.rect() == mark.rect();
  });
  if (!isCovered) add(std::move(mark));
}

void MarkList::undo() {
  if (items_.empty()) return;
  taken_.push_back({std::move(items_.back())});
  items_.pop_back();
}

void MarkList::clear() {
  if (items_.empty()) return;
  taken_.push_back(std::exchange(items_, {}));
}

void MarkList::redo() {
  if (taken_.empty()) return;
  std::ranges::move(taken_.back(), std::back_inserter(items_));
  taken_.pop_back();
}

void MarkList::nudge(QSizeF pixels, QSizeF picture) {
  if (items_.empty() || picture.isEmpty()) return;
  auto& mark = items_.back();
  const QPointF shift(limited(pixels.width() / picture.width(), mark.start.x(), mark.end.x()),
                      limited(pixels.height() / picture.height(), mark.start.y(), mark.end.y()));
  mark.start += shift;
  mark.end += shift;
}

void MarkList::setText(const QUuid& id, std::string text) {
  const auto found = std::ranges::find(items_, id, &Annotation::id);
  if (found != items_.end()) found->text = std::move(text);
}

}  // namespace Nimbrel
