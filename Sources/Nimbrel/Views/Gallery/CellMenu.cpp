#include "Views/Gallery/CellMenu.h"

#include "Views/Shared/Buttons.h"

#include <functional>

namespace Nimbrel {

void fillCellMenu(QMenu& menu, const ShotPtr& shot, const ShotList& targets, Store& store, GalleryActions& actions) {
  using OfOne = void (GalleryActions::*)(const ShotPtr&);
  using OfAll = void (Store::*)(const ShotList&);
  const auto add = [&menu](const QString& title, const std::function<void()>& action) {
    auto* item = menu.addAction(title);
    QObject::connect(item, &QAction::triggered, item, action);
    return item;
  };
  const auto one = [&](const QString& title, OfOne action) {
    return add(title, [&actions, shot, action] { (actions.*action)(shot); });
  };
  const auto all = [&](const QString& title, OfAll action, const ShotList& shots) {
    return add(title, [&store, shots, action] { (store.*action)(shots); });
  };

  one(QStringLiteral("Open"), &GalleryActions::open);
  one(QStringLiteral("Reveal in Finder"), &GalleryActions::reveal);
  menu.addSeparator();
  one(QStringLiteral("Copy Image"), &GalleryActions::copyImage);
  one(QStringLiteral("Copy Text"), &GalleryActions::copyText);
  one(QStringLiteral("Edit…"), &GalleryActions::edit)->setEnabled(actions.canEdit());
  menu.addSeparator();
  one(QStringLiteral("Pin to Screen"), &GalleryActions::pin)->setEnabled(actions.canPin());
  add(QStringLiteral("Find Similar"), [&store, shot] { store.showSimilar(*shot); });
  one(QStringLiteral("Share…"), &GalleryActions::share)->setEnabled(actions.canShare());
  all(QStringLiteral("Shrink to HEIC"), &Store::recompressInBackground, targets);
  menu.addSeparator();
  one(shot->favorite ? QStringLiteral("Remove from Favorites") : QStringLiteral("Add to Favorites"),
      &GalleryActions::toggleFavorite);
  if (!shot->filed) all(QStringLiteral("File to Library"), &Store::file, {shot});
  menu.addSeparator();
  all(QStringLiteral("Remove from Catalogue"), &Store::forget, targets);
  setDestructive(*all(QStringLiteral("Move to Trash"), &Store::trash, targets));
}

}  // namespace Nimbrel
