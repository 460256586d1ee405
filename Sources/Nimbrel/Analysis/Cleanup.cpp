#include "Analysis/Cleanup.h"

#include "Analysis/Perceptual.h"
#include "Foundation/FilePath.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <iterator>

namespace Nimbrel {

namespace {

using Reasons = std::unordered_map<ShotID, std::string_view>;
using Days = std::chrono::duration<double, std::ratio<86'400>>;

constexpr Days oldInboxAge(30);
constexpr Days lowInformationAge(7);
constexpr std::int64_t mostBytesOfLowInformation = 99'999;

void addNearDuplicates(Reasons& reasons, const ShotList& shots) {
  for (const auto& group : Perceptual::groups(shots, Perceptual::nearDuplicateTolerance)) {
    for (auto shot = std::next(group.begin()); shot != group.end(); ++shot) {
      if (!(*shot)->favorite) reasons[(*shot)->id] = "Near duplicate";
    }
  }
}

bool isOldInboxItem(const Shot& shot, Timestamp now) {
  return !shot.favorite && !shot.filed && shot.date < now - oldInboxAge;
}

bool isLowInformation(const Shot& shot, Timestamp now) {
  return !shot.favorite && shot.ocrDone && shot.ocr.empty() && shot.date < now - lowInformationAge &&
         shot.bytes <= mostBytesOfLowInformation;
}

}  // namespace

std::vector<CleanupCandidate> cleanupCandidates(const ShotList& shots, Timestamp now) {
  Reasons reasons;
  addNearDuplicates(reasons, shots);
  for (const auto& shot : shots) {
    if (isOldInboxItem(*shot, now)) reasons[shot->id] = "Old Inbox item";
    if (isLowInformation(*shot, now)) reasons[shot->id] = "Low-information capture";
  }
  std::vector<CleanupCandidate> candidates;
  for (const auto& shot : shots) {
    if (const auto reason = reasons.find(shot->id); reason != reasons.end()) {
      candidates.push_back({shot, reason->second});
    }
  }
  return candidates;
}

ShotList purgeMatches(const ShotList& shots, int days, PurgeScope scope, Timestamp now) {
  const auto limit = now - Days(days);
  ShotList matches;
  std::ranges::copy_if(shots, std::back_inserter(matches), [&](const ShotPtr& shot) {
    return shot->date < limit && !shot->favorite && (scope == PurgeScope::All || !shot->filed);
  });
  std::ranges::stable_sort(matches, {}, [](const ShotPtr& shot) { return shot->date; });
  return matches;
}

bool isHeic(const Shot& shot) { return Text::lowered(FilePath::extension(shot.path)) == "heic"; }

ShotList shrinkCandidates(const ShotList& shots, ShrinkScope scope) {
  ShotList candidates;
  std::ranges::copy_if(shots, std::back_inserter(candidates), [&](const ShotPtr& shot) {
    return !isHeic(*shot) && (scope == ShrinkScope::All || shot->filed);
  });
  std::ranges::stable_sort(candidates, std::greater(), [](const ShotPtr& shot) { return shot->bytes; });
  return candidates;
}

const ShotPtr& keeperOf(const ShotList& group, const DuplicateKeepers& keepers) {
  const auto& first = group.front();
  const auto chosen = keepers.find(first->id);
  if (chosen == keepers.end()) return first;
  // One that has left the group keeps none of it, and the group must not go as a whole.
  const auto keeper = std::ranges::find(group, chosen->second, [](const ShotPtr& shot) { return shot->id; });
  return keeper == group.end() ? first : *keeper;
}

ShotList doomedDuplicates(const std::vector<ShotList>& groups, const DuplicateKeepers& keepers) {
  ShotList doomed;
  for (const auto& group : groups) {
    std::ranges::remove_copy(group, std::back_inserter(doomed), keeperOf(group, keepers));
  }
  return doomed;
}

}  // namespace Nimbrel
