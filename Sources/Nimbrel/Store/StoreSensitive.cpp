#include "Analysis/Sensitive.h"
#include "Platform/Process.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <variant>

namespace Nimbrel {

namespace {

constexpr std::string_view unlockReason = "Reveal sensitive screenshot content";
constexpr std::string_view cannotUnlock = "Cannot unlock sensitive previews on this Mac";
constexpr std::string_view remainsLocked = "Sensitive preview remains locked";

}  // namespace

std::size_t Store::rescanSensitive() {
  const Operation operation(*this);
  const Database::QuickCommits quickly(*database_);
  std::size_t found = 0;
  for (const auto& shot : shots_) {
    if (Process::isEnding()) break;
    if (!shot->ocrDone || shot->ocr.empty()) continue;
    const auto kinds = Sensitive::kindsIn(shot->ocr);
    if (kinds != shot->sensitive) database_->setOCR(shot->id, shot->ocr, kinds);
    if (!kinds.empty()) ++found;
  }
  reloadIfChanged();
  return found;
}

bool Store::isProtected(const Shot& shot) const {
  return settings_.protectSensitive() && !shot.sensitive.empty() && !unlocked_.contains(shot);
}

void Store::withAccess(const ShotList& shots, std::function<void()> action) {
  ShotList locked;
  std::ranges::copy_if(shots, std::back_inserter(locked), [this](const ShotPtr& shot) { return isProtected(*shot); });
  if (locked.empty()) return action();

  auto& authentication = *context_.services.ownerAuthentication;
  if (!authentication.canEvaluate()) return setStatus(std::string(cannotUnlock));
  authentication.evaluate(this, std::string(unlockReason),
                          [this, locked = std::move(locked), action = std::move(action)](bool granted) {
                            if (!granted) return setStatus(std::string(remainsLocked));
                            unlock(locked);
                            action();
                            if (!isApplicationActive_) lockSensitive();
                          });
}

void Store::unlock(const ShotList& shots) {
  const Operation operation(*this);
  publish(unlocked_, unlocked_.with(shots), Fact::unlockedSensitiveIDs);
  reload();
}

void Store::lockSensitive() {
  const Operation operation(*this);
  Q_EMIT sensitiveLocked();
  publish(unlocked_, UnlockedShots(), Fact::unlockedSensitiveIDs);
  setStatus({});
  // Reading a large catalogue again each time that the user looks elsewhere would be felt.
  isSnapshotCurrent() ? derive() : reload();

  const auto* content = std::get_if<Filter::Content>(&filter_.choice);
  if (content == nullptr) return;
  const bool stands = std::ranges::any_of(
      derived_->contentGroups(), [&](const ContentGroupCount& counted) { return counted.group.key == content->key; });
  if (!stands) publish(filter_, Filter{Filter::All{}}, Fact::filter);
}

void Store::setApplicationActive(bool active) {
  const bool resigns = isApplicationActive_ && !active;
  isApplicationActive_ = active;
  if (resigns) lockSensitive();
}

}  // namespace Nimbrel
