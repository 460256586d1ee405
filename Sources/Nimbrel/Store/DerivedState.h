#pragma once

#include "Analysis/ContentGrouping.h"
#include "Model/Models.h"
#include "Model/ProductivityModels.h"

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

namespace Nimbrel {

/// A group of the sidebar and the number of its shots.
struct ContentGroupCount {
  ContentGroup group;
  std::size_t count = 0;

  bool operator==(const ContentGroupCount&) const = default;
};

/// What follows from the shots of a catalogue as a whole: groups, smart collections, stacks. What follows from a single
/// shot is remembered by its pointer and worked out again only for new values; many new ones are worked out on all
/// cores. Main thread.
class DerivedState {
 public:
  using SmartCounts = std::map<SmartCollection, std::size_t>;
  /// Whether a shot must not give away where it comes from.
  using IsLocked = std::function<bool(const Shot&)>;

  /// Works everything out for these shots, which replace the former ones.
  void rebuild(const ShotList& shots, const IsLocked& isLocked);

  /// The group of a shot of the list; the unknown group for a locked shot, and for an id that is not in the list.
  [[nodiscard]] const ContentGroup& contentOf(ShotID id) const;
  /// Whether the shot of the list belongs to the collection, locked or not; false for an id that is not in the list.
  [[nodiscard]] bool isIn(SmartCollection collection, ShotID id) const;
  /// The id of the stack that holds the shot; empty when none does.
  [[nodiscard]] std::string_view stackOf(ShotID id) const;

  /// Groups of applications, the largest first, equal ones by title.
  [[nodiscard]] const std::vector<ContentGroupCount>& contentGroups() const { return contentGroups_; }
  /// Numbers of members, of collections that have any.
  [[nodiscard]] const SmartCounts& smartCounts() const { return smartCounts_; }
  /// Applications with at least two shots that are not locked, the one with the newest shot first.
  [[nodiscard]] const std::vector<ShotStack>& shotStacks() const { return shotStacks_; }

 private:
  std::vector<ContentGroupCount> contentGroups_;
  SmartCounts smartCounts_;
  std::vector<ShotStack> shotStacks_;
};

}  // namespace Nimbrel
