#include "Reader/Components.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <utility>

namespace Nimbrel::Reader {

namespace {

/// Marked pixels side by side in one row.
struct Run {
  int begin;
  int end;
  std::uint8_t marks;
  std::uint32_t component;
};

/// The components so far; those that turned out to be one point to the first of them.
class Forest {
 public:
  std::uint32_t add() {
    parents_.push_back(static_cast<std::uint32_t>(parents_.size()));
    components_.emplace_back();
    return parents_.back();
  }

  void grow(std::uint32_t index, const Box& run, std::uint8_t marks) {
    auto& component = components_[root(index)];
    if (component.pixels == 0) component.startX = run.left;
    component.box = component.pixels == 0 ? run : component.box.unitedWith(run);
    component.pixels += run.width();
    component.marks |= marks;
  }

  std::uint32_t root(std::uint32_t index) {
    while (parents_[index] != index) {
      parents_[index] = parents_[parents_[index]];
      index = parents_[index];
    }
    return index;
  }

  std::uint32_t join(std::uint32_t one, std::uint32_t other) {
    const auto [first, second] = std::minmax({root(one), root(other)});
    if (first == second) return first;
    parents_[second] = first;
    if (components_[second].box.top < components_[first].box.top)
      components_[first].startX = components_[second].startX;
    components_[first].box = components_[first].box.unitedWith(components_[second].box);
    components_[first].pixels += components_[second].pixels;
    components_[first].marks |= components_[second].marks;
    return first;
  }

  [[nodiscard]] std::vector<Component> takeComponents() {
    std::vector<Component> result;
    for (std::size_t i = 0; i < parents_.size(); ++i) {
      if (parents_[i] == i) result.push_back(components_[i]);
    }
    return result;
  }

 private:
  std::vector<std::uint32_t> parents_;
  std::vector<Component> components_;
};

std::vector<Run> runsOf(const std::uint8_t* row, int width) {
  std::vector<Run> runs;
  for (int x = 0; x < width;) {
    // Most of a picture is empty: eight pixels at once.
    std::uint64_t word = 0;
    if (x + 8 <= width && (std::memcpy(&word, row + x, sizeof(word)), word == 0)) {
      x += 8;
    } else if (row[x] == 0) {
      ++x;
    } else {
      const int begin = x;
      std::uint8_t marks = 0;
      while (x < width && row[x] != 0) marks |= row[x++];
      runs.push_back({begin, x, marks, 0});
    }
  }
  return runs;
}

/// Gives each run of a row the component of the runs above that it touches, or one of its own.
void assign(std::vector<Run>& runs, const std::vector<Run>& above, int y, Forest& forest) {
  auto candidate = above.begin();
  for (auto& run : runs) {
    while (candidate != above.end() && candidate->end < run.begin) ++candidate;
    std::optional<std::uint32_t> component;
    for (auto touching = candidate; touching != above.end() && touching->begin <= run.end; ++touching) {
      component = component ? forest.join(*component, touching->component) : touching->component;
    }
    run.component = component ? *component : forest.add();
    forest.grow(run.component, {run.begin, y, run.end, y + 1}, run.marks);
  }
}

}  // namespace

void erase(Plane& mask, const Component& component) {
  const Box page{0, 0, mask.width(), mask.height()};
  std::vector<std::pair<int, int>> open{{component.startX, component.box.top}};
  mask.row(component.box.top)[component.startX] = 0;
  while (!open.empty()) {
    const auto [x, y] = open.back();
    open.pop_back();
    const auto around = Box{x - 1, y - 1, x + 2, y + 2}.cutTo(page);
    for (int nextY = around.top; nextY < around.bottom; ++nextY) {
      auto* row = mask.row(nextY);
      for (int nextX = around.left; nextX < around.right; ++nextX) {
        if (std::exchange(row[nextX], std::uint8_t{0}) != 0) open.emplace_back(nextX, nextY);
      }
    }
  }
}

std::vector<Component> componentsOf(const Plane& mask) {
  Forest forest;
  std::vector<Run> above;
  for (int y = 0; y < mask.height(); ++y) {
    auto runs = runsOf(mask.row(y), mask.width());
    assign(runs, above, y, forest);
    above = std::move(runs);
  }
  return forest.takeComponents();
}

}  // namespace Nimbrel::Reader
