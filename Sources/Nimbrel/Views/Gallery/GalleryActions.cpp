#include "Views/Gallery/GalleryActions.h"

#include <QMetaMethod>
#include <QPointer>

#include <memory>
#include <utility>

namespace Nimbrel {

GalleryActions::GalleryActions(Store& store, QObject* parent) : QObject(parent), store_(store) {}

ShotPtr GalleryActions::current(const ShotPtr& shot) const {
  auto row = store_.database().shot(shot->id);
  if (!row || row->added != shot->added || *row == *shot) return shot;
  return std::make_shared<const Shot>(std::move(*row));
}

void GalleryActions::withAccess(const ShotPtr& shot, const std::function<void(const Shot&)>& action) {
  const auto now = current(shot);
  store_.withAccess({now}, [now, action] { action(*now); });
}

void GalleryActions::request(const ShotPtr& shot, Request signal) {
  // The owner may take their time, and the window be closed meanwhile.
  const auto now = current(shot);
  store_.withAccess({now}, [self = QPointer(this), now, signal] {
    if (self) Q_EMIT(self.data()->*signal)(now);
  });
}

void GalleryActions::open(const ShotPtr& shot) {
  withAccess(shot, [&store = store_](const Shot& value) { store.open(value); });
}

void GalleryActions::reveal(const ShotPtr& shot) {
  withAccess(shot, [&store = store_](const Shot& value) { store.reveal(value); });
}

void GalleryActions::copyImage(const ShotPtr& shot) {
  copyImageThen(shot, [] {});
}

void GalleryActions::copyImageThen(const ShotPtr& shot, const std::function<void()>& then) {
  withAccess(shot, [&store = store_, then](const Shot& value) {
    store.copyImage(value);
    then();
  });
}

void GalleryActions::copyText(const ShotPtr& shot) {
  withAccess(shot, [&store = store_](const Shot& value) { store.copyText(value); });
}

void GalleryActions::edit(const ShotPtr& shot) { request(shot, &GalleryActions::editRequested); }

void GalleryActions::pin(const ShotPtr& shot) { request(shot, &GalleryActions::pinRequested); }

void GalleryActions::share(const ShotPtr& shot) { request(shot, &GalleryActions::shareRequested); }

void GalleryActions::quickLook() { Q_EMIT quickLookRequested(); }

void GalleryActions::toggleFavorite(const ShotPtr& shot) {
  // While a menu was open the row may have gone, and its id to another.
  const auto row = store_.database().shot(shot->id);
  if (!row || row->added != shot->added) return;
  store_.database().setFavorite(shot->id, !shot->favorite);
  store_.reload();
}

bool GalleryActions::canEdit() const {
  return isSignalConnected(QMetaMethod::fromSignal(&GalleryActions::editRequested));
}

bool GalleryActions::canPin() const {
  return isSignalConnected(QMetaMethod::fromSignal(&GalleryActions::pinRequested));
}

bool GalleryActions::canShare() const {
  return isSignalConnected(QMetaMethod::fromSignal(&GalleryActions::shareRequested));
}

}  // namespace Nimbrel
