#include "Views/Companion/MenuBarRowMenu.h"

#include "Views/Shared/Buttons.h"

#include <QCoreApplication>
#include <QMenu>

namespace Nimbrel {

namespace {

QString title(const char* text) { return QCoreApplication::translate("MenuBarRowMenu", text); }

}  // namespace

void showMenuBarRowMenu(const ShotPtr& shot, Store& store, GalleryActions& actions, QWidget& row, QPoint place) {
  auto* menu = new QMenu(&row);
  menu->setObjectName(QStringLiteral("recentMenu"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const char* text, void (GalleryActions::*action)(const ShotPtr&)) {
    auto* item = menu->addAction(title(text));
    QObject::connect(item, &QAction::triggered, &actions, [&actions, shot, action] { (actions.*action)(shot); });
    return item;
  };
  add(QT_TRANSLATE_NOOP("MenuBarRowMenu", "Open"), &GalleryActions::open);
  add(QT_TRANSLATE_NOOP("MenuBarRowMenu", "Reveal in Finder"), &GalleryActions::reveal);
  menu->addSeparator();
  add(QT_TRANSLATE_NOOP("MenuBarRowMenu", "Copy Image"), &GalleryActions::copyImage);
  add(QT_TRANSLATE_NOOP("MenuBarRowMenu", "Copy Text"), &GalleryActions::copyText)->setEnabled(!shot->ocr.empty());
  menu->addSeparator();
  auto* trash = menu->addAction(title(QT_TRANSLATE_NOOP("MenuBarRowMenu", "Move to Trash")));
  setDestructive(*trash);
  QObject::connect(trash, &QAction::triggered, &store, [&store, shot] { store.trash({shot}); });
  menu->popup(place);
}

}  // namespace Nimbrel
