#include "Views/Gallery/GalleryShots.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Nimbrel {

GalleryShots::GalleryShots(Store& store, QObject* parent) : QObject(parent), store_(store) {
  for (const auto fact : {&Store::shotsChanged, &Store::derivedChanged, &Store::unlockedSensitiveIDsChanged}) {
    connect(&store, fact, this, [this] { note(Cause::Reload); });
  }
  for (const auto fact : {&Store::filterChanged, &Store::searchResultChanged}) {
    connect(&store, fact, this, [this] { note(Cause::Choice); });
  }
  connect(&store.settings(), &Settings::changed, this, [this](const QString& key) {
    const auto& settings = store_.settings();
    if (key == settings.gallerySort.key() || key == settings.groupByDay.key() ||
        key == settings.protectSensitive.key()) {
      note(Cause::Reload);
    }
  });
}

const std::vector<GalleryShots::Section>& GalleryShots::sections() {
  workOut();
  return sections_;
}

const SharedShots& GalleryShots::ordered() {
  workOut();
  return ordered_;
}

void GalleryShots::note(Cause cause) {
  isCurrent_ = false;
  const bool isTold = !untold_;
  if (isTold || cause == Cause::Choice) untold_ = cause;
  if (!isTold) return;
  QMetaObject::invokeMethod(
      this, [this] { Q_EMIT changed(*std::exchange(untold_, std::nullopt)); }, Qt::QueuedConnection);
}

void GalleryShots::workOut() {
  if (isCurrent_) return;
  isCurrent_ = true;
  sections_.clear();
  ShotList ordered;
  ordered.reserve(store_.shots().size());
  for (auto& section : store_.sections()) {
    sections_.push_back({.title = std::move(section.title), .count = section.shots.size()});
    std::ranges::move(section.shots, std::back_inserter(ordered));
  }
  ordered_ = SharedShots(std::move(ordered));
}

}  // namespace Nimbrel
