#include "CommandTable.h"
#include "FileCommands.h"
#include "ShotArguments.h"
#include "ShotRecord.h"

#include "Analysis/Cleanup.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <iterator>

namespace Nimbrel::Ctl {

namespace {

constexpr std::int64_t mostDays = 1'000'000;

/// What the command says when there is nothing to move is what was said last.
Outcome toTrash(Store& store, const ShotList& shots) {
  return shots.empty() ? Outcome::changed(store.status()) : trashed(store, shots);
}

Outcome suggestions(Store& store, const std::vector<CleanupCandidate>& candidates) {
  QJsonArray list;
  std::string text;
  for (const auto& [shot, reason] : candidates) {
    list.append(QJsonObject{{QStringLiteral("id"), qint64{shot->id}}, {QStringLiteral("reason"), jsonString(reason)}});
    text += std::string(reason) + ": " + shotLine(store, *shot);
  }
  return Outcome::done(list, text);
}

Outcome listed(const Store& store, const ShotList& shots) {
  QJsonArray ids;
  std::string text;
  for (const auto& shot : shots) {
    ids.append(qint64{shot->id});
    text += shotLine(store, *shot);
  }
  return Outcome::done(ids, text);
}

}  // namespace

Outcome runCleanup(const CommandLine& line, Session& session) {
  return withStore(session, [&](Store& store) {
    const auto candidates = cleanupCandidates(store.shots(), store.now());
    if (!line.has("--trash")) return suggestions(store, candidates);
    ShotList shots;
    std::ranges::transform(candidates, std::back_inserter(shots), &CleanupCandidate::shot);
    return toTrash(store, shots);
  });
}

Outcome runPurge(const CommandLine& line, Session& session) {
  const auto days = decimal(line.value("--days").value_or(""));
  if (!days || *days < 0 || *days > mostDays) return Outcome::misused("--days takes a number of days");
  const auto scope = line.has("--inbox-only") ? PurgeScope::Inbox : PurgeScope::All;
  return withStore(session, [&](Store& store) {
    const auto matches = purgeMatches(store.shots(), static_cast<int>(*days), scope, store.now());
    return line.has("--trash") ? toTrash(store, matches) : listed(store, matches);
  });
}

}  // namespace Nimbrel::Ctl
