#include "CommandTable.h"
#include "FileCommands.h"
#include "ShotArguments.h"
#include "ShotRecord.h"

#include "Analysis/Perceptual.h"

#include <QJsonArray>

#include <algorithm>
#include <unordered_set>

namespace Nimbrel::Ctl {

namespace {

constexpr int bitsOfAHash = 64;

using Groups = std::vector<ShotList>;

Outcome asGroups(const Store& store, const Groups& groups) {
  QJsonArray list;
  std::string text;
  for (const auto& group : groups) {
    QJsonArray ids;
    if (!list.isEmpty()) text += "\n";
    for (const auto& shot : group) {
      ids.append(qint64{shot->id});
      text += shotLine(store, *shot);
    }
    list.append(ids);
  }
  return Outcome::done(list, text);
}

/// Of each group all but those to be kept, or all but the newest where none is.
ShotList doomed(const Groups& groups, const ShotList& keepers) {
  const std::unordered_set<ShotPtr> kept(keepers.begin(), keepers.end());
  const auto isKept = [&](const ShotPtr& shot) { return kept.contains(shot); };
  ShotList rest;
  for (const auto& group : groups) {
    if (std::ranges::any_of(group, isKept)) {
      std::ranges::remove_copy_if(group, std::back_inserter(rest), isKept);
    } else {
      rest.insert(rest.end(), group.begin() + 1, group.end());
    }
  }
  return rest;
}

}  // namespace

Outcome runDuplicates(const CommandLine& line, Session& session) {
  const auto tolerance =
      decimal(line.value("--tolerance").value_or(std::to_string(Perceptual::nearDuplicateTolerance)));
  if (!tolerance || *tolerance < 0 || *tolerance > bitsOfAHash) {
    return Outcome::misused("--tolerance takes a number of bits");
  }
  // "--keep 3 5" is as good as "--keep 3 --keep 5".
  std::vector<std::string> keep(line.values("--keep").begin(), line.values("--keep").end());
  if (keep.empty() && !line.arguments.empty()) return Outcome::misused("too many arguments");
  if (!keep.empty() && !line.has("--trash")) return Outcome::misused("--keep goes with --trash");
  keep.insert(keep.end(), line.arguments.begin(), line.arguments.end());
  return withShots(keep, session, [&](Store& store, const ShotList& keepers) {
    const auto groups = Perceptual::groups(store.shots(), static_cast<int>(*tolerance));
    if (!line.has("--trash")) return asGroups(store, groups);
    const auto rest = doomed(groups, keepers);
    return rest.empty() ? Outcome::changed(store.status()) : trashed(store, rest);
  });
}

}  // namespace Nimbrel::Ctl
