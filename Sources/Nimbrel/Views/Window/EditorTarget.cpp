#include "Views/Window/EditorTarget.h"

#include <algorithm>
#include <utility>

namespace Nimbrel {

EditorTarget::EditorTarget(Store& store, QObject* parent) : QObject(parent), store_(store) {
  connect(&store, &Store::unlockedSensitiveIDsChanged, this, &EditorTarget::closeLocked);
  // With protection switched on, shots are locked that were never unlocked.
  connect(&store, &Store::sensitiveLocked, this, &EditorTarget::closeLocked);
  connect(&store, &Store::editRequestNonceChanged, this, &EditorTarget::takeRequest);
}

void EditorTarget::setShot(std::optional<ShotPtr> shot) {
  if (shot == shot_) return;
  if (shot && shot_ && !isSameRow(**shot, **shot_)) {
    // The sheet that is up is that of the former one, which goes first.
    shot_.reset();
    Q_EMIT changed();
  }
  shot_ = std::move(shot);
  Q_EMIT changed();
}

void EditorTarget::closeLocked() {
  if (!shot_) return;
  // What was read off it since it was opened may be sensitive.
  const bool isProtectedNow = std::ranges::any_of(
      store_.shots(), [this](const ShotPtr& row) { return isSameRow(*row, **shot_) && store_.isProtected(*row); });
  if (isProtectedNow || store_.isProtected(**shot_)) setShot(std::nullopt);
}

void EditorTarget::takeRequest() {
  const auto id = store_.editRequestShotID();
  if (!id) return;
  const auto found = std::ranges::find_if(store_.shots(), [&id](const ShotPtr& shot) { return shot->id == *id; });
  if (found != store_.shots().end()) setShot(*found);
}

}  // namespace Nimbrel
