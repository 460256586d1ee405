#pragma once

#include "Foundation/Timestamp.h"
#include "Model/Models.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace Nimbrel {

// What the user may want to get rid of. Pure functions, any thread.

/// A shot that could go, and why.
struct CleanupCandidate {
  ShotPtr shot;
  std::string_view reason;  ///< in words for the user

  bool operator==(const CleanupCandidate&) const = default;
};

/// Near duplicates but for the newest of each group, old shots of the Inbox, and small ones without text, in the order
/// given; no favourites. A shot for which there are several reasons tells the last of them.
[[nodiscard]] std::vector<CleanupCandidate> cleanupCandidates(const ShotList& shots, Timestamp now);

enum class PurgeScope { All, Inbox };

/// The shots taken more than so many times 24 hours ago, the oldest first; no favourites.
[[nodiscard]] ShotList purgeMatches(const ShotList& shots, int days, PurgeScope scope, Timestamp now);

enum class ShrinkScope { All, Filed };

/// Whether the name says that the file is HEIC, which there is no use in shrinking.
[[nodiscard]] bool isHeic(const Shot& shot);

/// The shots that are not HEIC, the largest first.
[[nodiscard]] ShotList shrinkCandidates(const ShotList& shots, ShrinkScope scope);

/// The shot to be kept of each group, by the id of the group's first shot.
using DuplicateKeepers = std::unordered_map<ShotID, ShotID>;

/// The one of a group of near duplicates that is to be kept: the first, unless another one of the group was chosen.
[[nodiscard]] const ShotPtr& keeperOf(const ShotList& group, const DuplicateKeepers& keepers);

/// All of the groups but the shots to be kept, in turn.
[[nodiscard]] ShotList doomedDuplicates(const std::vector<ShotList>& groups, const DuplicateKeepers& keepers);

}  // namespace Nimbrel
