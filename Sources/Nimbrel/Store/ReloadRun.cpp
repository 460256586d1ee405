#include "Store/ReloadRun.h"

#include "Foundation/Background.h"
#include "Model/ProductivityModels.h"

#include <algorithm>
#include <chrono>
#include <set>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::chrono::milliseconds stretch{6};

}  // namespace

std::vector<std::string> tagsOf(const ShotList& shots) {
  std::set<std::string> tags;
  for (const auto& shot : shots) {
    for (const auto& tag : shot->tags) {
      if (!tag.starts_with(projectTagPrefix)) tags.insert(tag);
    }
  }
  return {tags.begin(), tags.end()};
}

ReloadRun::ReloadRun(const Database& database, const ShotList& former)
    : state_(CatalogueState::of(database)), reading_(database, former) {
  connect(&turns_, &QTimer::timeout, this, &ReloadRun::readStretch);
}

ReloadRun::ReloadRun(const Database& database) : state_(CatalogueState::of(database)), reading_(database) {
  connect(&turns_, &QTimer::timeout, this, &ReloadRun::readStretch);
}

bool ReloadRun::readFirst() { return reading_.readFor(stretch) == ShotReading::Outcome::Done; }

void ReloadRun::readOn(std::chrono::milliseconds pause) { turns_.start(pause); }

void ReloadRun::readStretch() {
  turns_.setInterval(0);
  if (reading_.readFor(stretch) == ShotReading::Outcome::More) return;
  turns_.stop();
  Q_EMIT read();
}

void ReloadRun::derive(Protection protection, std::shared_ptr<const DerivedState> former) {
  auto work = [result = Reloaded{.state = state_, .shots = reading_.take(), .protection = std::move(protection)},
               former = std::move(former)]() mutable {
    result.tags = tagsOf(result.shots);
    result.derived = std::make_shared<DerivedState>(*former);
    former.reset();
    result.hasDerivedChanged =
        result.derived->rebuild(result.shots, [&result](const Shot& shot) { return result.protection.covers(shot); });
    return std::move(result);
  };
  inBackground(this, *QThreadPool::globalInstance(), std::move(work),
               [this](Reloaded result) { Q_EMIT derived(result); });
}

}  // namespace Nimbrel
