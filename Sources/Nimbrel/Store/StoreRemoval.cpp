#include "Store/Store.h"
#include "Store/StoreOperation.h"

namespace Nimbrel {

void Store::trash(const ShotList& shots) {
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

void Store::dropTrashed(const ShotList& shots) {
  const Database::QuickCommits quickly(*database_);
  for (const auto& shot : shots) {
    // Meanwhile the row may have gone, and its id to another file.
    const auto row = database_->shot(shot->id);
    if (row && row->path == shot->path) database_->remove(shot->id, Database::IgnorePath::No);
  }
}

void Store::forget(const ShotList& shots) {
  const Operation operation(*this);
  const Database::QuickCommits quickly(*database_);
  // The list may be our own, which the reload replaces.
  const auto count = shots.size();
  for (const auto& shot : shots) database_->remove(shot->id, Database::IgnorePath::Yes);
  database_->waitForDisk();
  setSelection({});
  reload();
  setStatus("Removed " + std::to_string(count) + " from the catalogue");
}

}  // namespace Nimbrel
