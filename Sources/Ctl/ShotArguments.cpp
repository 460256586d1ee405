#include "ShotArguments.h"

#include "CommandLine.h"

#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Nimbrel::Ctl {

namespace {

Result<ShotList> shotsWithIDs(const Store& store, const std::vector<ShotID>& ids) {
  std::unordered_map<ShotID, ShotPtr> shotOfID;
  for (const auto& shot : store.shots()) shotOfID.emplace(shot->id, shot);
  ShotList shots;
  for (const auto id : ids) {
    const auto found = shotOfID.find(id);
    if (found == shotOfID.end()) return Error{"no shot has the id " + std::to_string(id)};
    shots.push_back(found->second);
  }
  return shots;
}

}  // namespace

Outcome withStore(Session& session, const StoreAction& action) {
  const auto store = session.store();
  return store ? action(*store.value()) : Outcome::failed(store.error().message);
}

Outcome withShots(std::span<const std::string> ids, Session& session, const ShotsAction& action) {
  std::vector<ShotID> numbers;
  std::unordered_set<ShotID> known;
  for (const auto& word : ids) {
    const auto id = decimal(word);
    if (!id) return Outcome::misused("not a row id: " + word);
    if (known.insert(*id).second) numbers.push_back(*id);
  }
  return withStore(session, [&](Store& store) {
    const auto shots = shotsWithIDs(store, numbers);
    return shots ? action(store, shots.value()) : Outcome::failed(shots.error().message);
  });
}

}  // namespace Nimbrel::Ctl
