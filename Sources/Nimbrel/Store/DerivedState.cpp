#include "Store/DerivedState.h"

#include "Foundation/NameOrder.h"

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::size_t fewestShotsOfStack = 2;
constexpr std::string_view stackIDPrefix = "stack:";
constexpr std::string_view stackSymbol = "square.stack.3d.up";

}  // namespace

std::size_t DerivedState::GroupHash::operator()(const ContentGroup& group) const {
  const std::hash<std::string> hash;
  return hash(group.key) ^ (hash(group.bundleID) << 1);
}

std::size_t DerivedState::shownGroup(const Member& member) const {
  return member.isLocked || groups_[member.group].kind == ContentGroup::Kind::unknown ? npos : member.group;
}

bool DerivedState::isUnremarkable(const Member& member) const {
  return member.collections.none() && shownGroup(member) == npos;
}

bool DerivedState::rebuild(const ShotList& shots, const IsLocked& isLocked) {
  std::vector<bool> locked;
  locked.reserve(shots.size());
  for (const auto& shot : shots) locked.push_back(isLocked(*shot));
  if (shots == shots_ && std::ranges::equal(members_, locked, {}, &Member::isLocked)) return false;

  auto members = membersFor(shots);
  for (std::size_t i = 0; i < members.size(); ++i) members[i].isLocked = locked[i];
  bool changed = answersDifferFor(members);
  take(shots, std::move(members));

  const auto publish = [&changed]<class T>(T& field, T value) {
    changed = changed || field != value;
    field = std::move(value);
  };
  const auto applications = piles();
  publish(contentGroups_, groupsOf(applications));
  publish(smartCounts_, countCollections());
  publish(shotStacks_, stacksOf(applications));
  markStacks();
  return changed;
}

const ContentGroup& DerivedState::contentOf(ShotID id) const {
  const auto* member = memberOf(id);
  const auto group = member == nullptr ? npos : shownGroup(*member);
  return group == npos ? ContentGroup::unknown() : groups_[group];
}

const ContentGroup& DerivedState::sourceOf(ShotID id) const {
  const auto* member = memberOf(id);
  return member == nullptr ? ContentGroup::unknown() : groups_[member->group];
}

bool DerivedState::isIn(SmartCollection collection, ShotID id) const {
  const auto* member = memberOf(id);
  return member != nullptr && member->collections.test(static_cast<std::size_t>(collection));
}

std::string_view DerivedState::stackOf(ShotID id) const {
  const auto* member = memberOf(id);
  return member == nullptr || member->stack == npos ? std::string_view() : shotStacks_[member->stack].id;
}

const DerivedState::Member* DerivedState::memberOf(ShotID id) const {
  const auto place = places_.find(id);
  return place == places_.end() ? nullptr : &members_[place->second];
}

/// The place that this very value has in the former list, if any. What is likely is looked at first.
std::size_t DerivedState::formerPlaceOf(const ShotPtr& shot, std::size_t likely) const {
  if (likely < shots_.size() && shots_[likely] == shot) return likely;
  const auto place = places_.find(shot->id);
  return place != places_.end() && shots_[place->second] == shot ? place->second : npos;
}

std::size_t DerivedState::numberOf(const ContentGroup& group) {
  const auto [entry, isNew] = numbers_.try_emplace(group, groups_.size());
  if (isNew) groups_.push_back(group);
  return entry->second;
}

DerivedState::Members DerivedState::membersFor(const ShotList& shots) {
  Members members(shots.size());
  ShotList unknown;
  std::vector<std::size_t> placesOfUnknown;
  std::size_t likely = 0;
  for (std::size_t i = 0; i < shots.size(); ++i) {
    if (const auto former = formerPlaceOf(shots[i], likely); former != npos) {
      members[i] = members_[former];
      likely = former + 1;
    } else {
      unknown.push_back(shots[i]);
      placesOfUnknown.push_back(i);
    }
  }
  const auto traits = traitsOf(unknown);
  for (std::size_t i = 0; i < unknown.size(); ++i) {
    members[placesOfUnknown[i]] = {
        .id = unknown[i]->id, .group = numberOf(traits[i].group), .collections = traits[i].collections};
  }
  return members;
}

bool DerivedState::answersDifferFor(const Members& members) const {
  std::size_t remarkable = 0;
  for (const auto& member : members) {
    if (isUnremarkable(member)) continue;
    ++remarkable;
    const auto* former = memberOf(member.id);
    if (former == nullptr || shownGroup(*former) != shownGroup(member) || former->collections != member.collections) {
      return true;
    }
  }
  const auto formerly =
      std::ranges::count_if(members_, [this](const Member& member) { return !isUnremarkable(member); });
  return remarkable != static_cast<std::size_t>(formerly);
}

void DerivedState::take(const ShotList& shots, Members members) {
  members_ = std::move(members);
  places_.clear();
  places_.reserve(members_.size());
  for (std::size_t i = 0; i < members_.size(); ++i) places_.emplace(members_[i].id, i);
  shots_ = shots;
}

/// In the order of their first shots.
std::vector<DerivedState::Pile> DerivedState::piles() const {
  std::vector<Pile> piles;
  std::vector<std::size_t> pileOfGroup(groups_.size(), npos);
  for (std::size_t i = 0; i < members_.size(); ++i) {
    const auto group = shownGroup(members_[i]);
    if (group == npos || groups_[group].kind != ContentGroup::Kind::app) continue;
    auto& pile = pileOfGroup[group];
    if (pile == npos) {
      pile = piles.size();
      piles.push_back({group, {}});
    }
    piles[pile].places.push_back(i);
  }
  return piles;
}

std::vector<ContentGroupCount> DerivedState::groupsOf(const std::vector<Pile>& piles) const {
  std::vector<ContentGroupCount> groups;
  // Applications of one name count together, whatever their identifiers; the first shot's stands for all.
  std::unordered_map<std::string_view, std::size_t> placeOfKey;
  for (const auto& pile : piles) {
    const auto& group = groups_[pile.group];
    const auto [place, isNew] = placeOfKey.try_emplace(group.key, groups.size());
    if (isNew) groups.push_back({group, 0});
    groups[place->second].count += pile.places.size();
  }
  std::ranges::stable_sort(groups, [](const ContentGroupCount& a, const ContentGroupCount& b) {
    return a.count != b.count ? a.count > b.count : NameOrder::compare(a.group.title, b.group.title) < 0;
  });
  return groups;
}

DerivedState::SmartCounts DerivedState::countCollections() const {
  SmartCounts counts;
  for (const auto collection : allSmartCollections) {
    const auto count =
        std::ranges::count_if(members_, [number = static_cast<std::size_t>(collection)](const Member& member) {
          return member.collections.test(number);
        });
    if (count > 0) counts.emplace(collection, static_cast<std::size_t>(count));
  }
  return counts;
}

std::vector<ShotStack> DerivedState::stacksOf(const std::vector<Pile>& piles) const {
  std::vector<ShotStack> stacks;
  for (const auto& [group, places] : piles) {
    if (places.size() < fewestShotsOfStack) continue;
    ShotStack stack{.id = std::string(stackIDPrefix) + groups_[group].key,
                    .title = groups_[group].title,
                    .symbol = std::string(stackSymbol),
                    .bundleID = groups_[group].bundleID,
                    .newest = shots_[places.front()]->date};
    stack.shotIDs.reserve(places.size());
    for (const auto place : places) {
      stack.shotIDs.insert(members_[place].id);
      stack.newest = std::max(stack.newest, shots_[place]->date);
    }
    stacks.push_back(std::move(stack));
  }
  std::ranges::stable_sort(stacks, std::ranges::greater(), &ShotStack::newest);
  return stacks;
}

void DerivedState::markStacks() {
  for (auto& member : members_) member.stack = npos;
  for (std::size_t i = 0; i < shotStacks_.size(); ++i) {
    for (const auto id : shotStacks_[i].shotIDs) members_[places_.at(id)].stack = i;
  }
}

}  // namespace Nimbrel
