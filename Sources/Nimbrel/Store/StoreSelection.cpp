#include "Store/Store.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace Nimbrel {

namespace {

std::ptrdiff_t stepOf(Store::Direction direction, int columns) {
  const std::ptrdiff_t row = std::max(columns, 1);
  switch (direction) {
    case Store::Direction::Up:
      return -row;
    case Store::Direction::Down:
      return row;
    case Store::Direction::Left:
      return -1;
    case Store::Direction::Right:
      return 1;
  }
  return 0;
}

}  // namespace

ShotList Store::selectedShots() const {
  auto shots = visible();
  std::erase_if(shots, [this](const ShotPtr& shot) { return !selection_.contains(shot->id); });
  return shots;
}

std::optional<ShotPtr> Store::focused() const {
  if (selection_.size() != 1) return std::nullopt;
  const auto found = std::ranges::find(shots_, *selection_.begin(), [](const ShotPtr& shot) { return shot->id; });
  return found == shots_.end() ? std::nullopt : std::optional(*found);
}

void Store::selectAll() {
  ShotIDSet ids;
  for (const auto& shot : visible()) ids.insert(shot->id);
  setSelection(std::move(ids));
}

void Store::move(Direction direction, Extend extend) {
  const auto list = ordered();
  if (list.empty()) return;
  const auto anchor = selection_.empty()
                          ? list.end()
                          : std::ranges::find(list, *selection_.begin(), [](const ShotPtr& shot) { return shot->id; });
  if (anchor == list.end()) return setSelection({list.front()->id});

  const auto from = std::distance(list.begin(), anchor);
  const auto target = std::clamp(from + stepOf(direction, gridColumns_), std::ptrdiff_t{0}, std::ssize(list) - 1);
  if (extend == Extend::No) return setSelection({list[static_cast<std::size_t>(target)]->id});
  auto extended = selection_;
  for (auto i = std::min(from, target); i <= std::max(from, target); ++i) {
    extended.insert(list[static_cast<std::size_t>(i)]->id);
  }
  setSelection(std::move(extended));
}

}  // namespace Nimbrel
