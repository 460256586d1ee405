// How the Store comes to know what is in the catalogue.

#include "Store/ReloadRun.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <QThreadPool>

#include <chrono>
#include <utility>

namespace Nimbrel {

namespace {

/// The pictures of a window that opens come first.
constexpr std::chrono::milliseconds firstScreen{300};

/// Lets another thread free what takes long to free.
template <class T>
void disposeElsewhere(T value) {
  QThreadPool::globalInstance()->start([held = std::make_shared<T>(std::move(value))]() mutable { held.reset(); });
}

}  // namespace

/// The window shows the newest shots of a large catalogue before it has read the rest.
void Store::load() {
  if (context_.role != ProcessRole::mainApplication) return reload();
  const Operation operation(*this);
  reloadRun_ = std::make_unique<ReloadRun>(*database_);
  if (reloadRun_->readFirst()) return endReading();
  publish(shots_, reloadRun_->shots(), Fact::shots);
  publish(tags_, tagsOf(shots_), Fact::tags);
  derive();
  readOn(firstScreen);
}

void Store::reload() {
  const Operation operation(*this);
  reloadRun_ = std::make_unique<ReloadRun>(*database_, shots_);
  reloadRun_->readAll();
  endReading();
}

/// Works everything else out at once.
void Store::endReading() {
  stateRead_ = reloadRun_->state();
  publish(shots_, reloadRun_->take(), Fact::shots);
  reloadRun_.reset();
  publish(unlocked_, unlocked_.among(shots_), Fact::unlockedSensitiveIDs);
  publish(tags_, tagsOf(shots_), Fact::tags);
  derive();
  keepSelected();
}

bool Store::isSnapshotCurrent() const { return stateRead_ == CatalogueState::of(*database_); }

void Store::reloadIfChanged() {
  // Reading a large catalogue costs more than a whole scan of the folders.
  if (!isSnapshotCurrent()) reload();
}

void Store::derive() {
  // The former answers are still read where the next ones are worked out.
  if (derived_.use_count() > 1) derived_ = std::make_shared<DerivedState>(*derived_);
  if (derived_->rebuild(shots_, [this](const Shot& shot) { return isProtected(shot); })) note(Fact::derived);
}

void Store::reloadInTurns() {
  if (reloadRun_) return;
  const Operation operation(*this);
  reloadRun_ = std::make_unique<ReloadRun>(*database_, shots_);
  reloadRun_->readFirst() ? endReading() : readOn({});
}

void Store::readOn(std::chrono::milliseconds pause) {
  connect(reloadRun_.get(), &ReloadRun::read, this, &Store::deriveElsewhere);
  connect(reloadRun_.get(), &ReloadRun::derived, this, &Store::takeIn);
  reloadRun_->readOn(pause);
}

void Store::deriveElsewhere() { reloadRun_->derive(protection(), derived_); }

void Store::takeIn(Reloaded& reloaded) {
  const Operation operation(*this);
  reloadRun_.release()->deleteLater();
  stateRead_ = reloaded.state;
  if (shots_ != reloaded.shots) note(Fact::shots);
  if (reloaded.hasDerivedChanged) note(Fact::derived);
  std::swap(shots_, reloaded.shots);
  std::swap(derived_, reloaded.derived);
  publish(tags_, std::move(reloaded.tags), Fact::tags);
  publish(unlocked_, unlocked_.among(shots_), Fact::unlockedSensitiveIDs);
  if (reloaded.protection != protection()) derive();
  keepSelected();
  disposeElsewhere(std::move(reloaded));
}

/// What has left the catalogue is not selected any more.
void Store::keepSelected() {
  ShotIDSet remaining;
  for (const auto id : selection_) {
    if (derived_->contains(id)) remaining.insert(id);
  }
  publish(selection_, std::move(remaining), Fact::selection);
}

Protection Store::protection() const { return {.isOn = settings_.protectSensitive(), .unlocked = unlocked_}; }

}  // namespace Nimbrel
