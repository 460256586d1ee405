#include "Views/Gallery/GallerySelection.h"

#include <algorithm>
#include <iterator>

namespace Nimbrel::GallerySelection {

namespace {

auto find(const ShotList& shots, ShotID id) {
  return std::ranges::find(shots, id, [](const ShotPtr& shot) { return shot->id; });
}

ShotIDSet toggled(ShotID id, ShotIDSet selection) {
  if (selection.erase(id) == 0) selection.insert(id);
  return selection;
}

std::optional<ShotIDSet> extended(ShotID id, ShotIDSet selection, const ShotList& visible) {
  auto from = find(visible, *selection.begin());
  auto to = find(visible, id);
  if (from == visible.end() || to == visible.end()) return std::nullopt;
  if (to < from) std::swap(from, to);
  std::transform(from, std::next(to), std::inserter(selection, selection.end()),
                 [](const ShotPtr& shot) { return shot->id; });
  return selection;
}

}  // namespace

std::optional<ShotIDSet> clicked(ShotID id, const ShotIDSet& selection, const ShotList& visible,
                                 Qt::KeyboardModifiers modifiers) {
  if (modifiers.testFlag(Qt::ControlModifier)) return toggled(id, selection);
  if (modifiers.testFlag(Qt::ShiftModifier) && !selection.empty()) return extended(id, selection, visible);
  return ShotIDSet{id};
}

ShotList targets(const ShotPtr& shot, const ShotIDSet& selection, const ShotList& visible) {
  if (selection.size() < 2 || !selection.contains(shot->id)) return {shot};
  ShotList selected;
  std::ranges::copy_if(visible, std::back_inserter(selected),
                       [&](const ShotPtr& other) { return selection.contains(other->id); });
  return selected;
}

std::optional<ShotIDSet> scrolledTo(ShotID id, const ShotIDSet& selection, const ShotList& ordered) {
  if (selection == ShotIDSet{id} || find(ordered, id) == ordered.end()) return std::nullopt;
  return ShotIDSet{id};
}

std::optional<ShotID> scrollTarget(const ShotIDSet& selection) {
  if (selection.size() != 1) return std::nullopt;
  return *selection.begin();
}

std::optional<ShotID> start(const std::optional<ShotPtr>& focused, const ShotList& ordered) {
  if (focused) return (*focused)->id;
  if (ordered.empty()) return std::nullopt;
  return ordered.front()->id;
}

}  // namespace Nimbrel::GallerySelection
