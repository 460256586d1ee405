#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>
#include <unordered_set>

namespace Nimbrel {

namespace {

ShotList eachOnce(const ShotList& shots) {
  ShotList list;
  std::unordered_set<ShotID> ids;
  for (const auto& shot : shots) {
    if (ids.insert(shot->id).second) list.push_back(shot);
  }
  return list;
}

}  // namespace

void Store::trash(const ShotList& given) {
  const auto shots = eachOnce(given);
  if (!std::ranges::all_of(shots, [this](const ShotPtr& shot) { return isWhereItWas(*shot); })) {
    setStatus("Trash failed: It has been moved meanwhile");
    return;
  }
  std::vector<std::string> paths;
  for (const auto& shot : shots) paths.push_back(shot->path);
  // Not announced to the file events: when only some of them get there, the scan that these bring drops their rows.
  context_.services.trash->recycle(this, std::move(paths), [this, shots](const std::optional<Error>& failure) {
    const Operation operation(*this);
    if (failure) {
      setStatus("Trash failed: " + failure->message);
      return;
    }
    dropTrashed(shots);
    setSelection({});
    reload();
    setStatus("Moved " + std::to_string(shots.size()) + " to Trash");
  });
}

bool Store::isWhereItWas(const Shot& shot) const {
  const auto row = database_->shot(shot.id);
  return row && row->path == shot.path;
}

void Store::dropTrashed(const ShotList& shots) {
  const Database::QuickCommits quickly(*database_);
  for (const auto& shot : shots) dropRowAt(*shot);
}

void Store::dropRowAt(const Shot& shot) {
  // Meanwhile the row may have gone, and its id to another file.
  if (isWhereItWas(shot)) database_->remove(shot.id, Database::IgnorePath::No);
}

void Store::forget(const ShotList& shots) {
  const Operation operation(*this);
  const Database::QuickCommits quickly(*database_);
  // The list may be our own, which the reload replaces.
  const auto count = shots.size();
  for (const auto& shot : shots) {
    if (currentRow(*shot)) {
      database_->remove(shot->id, Database::IgnorePath::Yes);
    } else {
      database_->ignore(shot->path);
    }
  }
  database_->waitForDisk();
  setSelection({});
  reload();
  setStatus("Removed " + std::to_string(count) + " from the catalogue");
}

}  // namespace Nimbrel
