#pragma once

#include "Analysis/ContentGrouping.h"
#include "Analysis/ShotTraits.h"
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
/// cores. A value: a copy may be worked on in another thread while the original is read.
class DerivedState {
 public:
  using SmartCounts = std::map<SmartCollection, std::size_t>;
  /// Whether a shot must not give away where it comes from.
  using IsLocked = std::function<bool(const Shot&)>;

  /// Works everything out for these shots, which replace the former ones. Returns whether any answer changed.
  bool rebuild(const ShotList& shots, const IsLocked& isLocked);

  [[nodiscard]] bool contains(ShotID id) const { return places_.contains(id); }
  /// The group of a shot of the list; the unknown group for a locked shot, and for an id that is not in the list.
  [[nodiscard]] const ContentGroup& contentOf(ShotID id) const;
  /// The same by what the picture says, locked or not: to act on, never to show.
  [[nodiscard]] const ContentGroup& sourceOf(ShotID id) const;
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
  struct GroupHash {
    std::size_t operator()(const ContentGroup& group) const;
  };
  static constexpr auto npos = static_cast<std::size_t>(-1);
  /// What is known of one shot of the list.
  struct Member {
    ShotID id = 0;
    std::size_t group = npos;  ///< number of what the picture says, locked or not
    SmartCollectionSet collections;
    bool isLocked = false;
    std::size_t stack = npos;  ///< place in the list of stacks
  };
  using Members = std::vector<Member>;
  /// Places of members that are not locked, of one application.
  struct Pile {
    std::size_t group;
    std::vector<std::size_t> places;
  };

  /// What a locked shot does not give away; npos for the unknown group.
  [[nodiscard]] std::size_t shownGroup(const Member& member) const;
  /// Whether all answers are those for an id that is not in the list.
  [[nodiscard]] bool isUnremarkable(const Member& member) const;
  [[nodiscard]] const Member* memberOf(ShotID id) const;
  [[nodiscard]] std::size_t formerPlaceOf(const ShotPtr& shot, std::size_t likely) const;
  [[nodiscard]] std::size_t numberOf(const ContentGroup& group);
  [[nodiscard]] Members membersFor(const ShotList& shots);
  [[nodiscard]] bool answersDifferFor(const Members& members) const;
  void take(const ShotList& shots, Members members);
  [[nodiscard]] std::vector<Pile> piles() const;
  [[nodiscard]] std::vector<ContentGroupCount> groupsOf(const std::vector<Pile>& piles) const;
  [[nodiscard]] SmartCounts countCollections() const;
  [[nodiscard]] std::vector<ShotStack> stacksOf(const std::vector<Pile>& piles) const;
  void markStacks();

  std::vector<ContentGroup> groups_;  // all ever met, by number
  std::unordered_map<ContentGroup, std::size_t, GroupHash> numbers_;
  ShotList shots_;   // held, so that no other shot can have the address of one of them
  Members members_;  // of each shot in turn
  std::unordered_map<ShotID, std::size_t> places_;
  std::vector<ContentGroupCount> contentGroups_;
  SmartCounts smartCounts_;
  std::vector<ShotStack> shotStacks_;
};

}  // namespace Nimbrel
