#include "Views/Inspector/MoreActionsMenu.h"

#include "Analysis/Cleanup.h"
#include "Views/Inspector/ShotDetails.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Shared/Symbols.h"

namespace Nimbrel {

MoreActionsMenu::MoreActionsMenu(Store& store, const ShotPtr& shot, QWidget* parent)
    : QMenu(parent), store_(store), shot_(shot) {
  setObjectName(QStringLiteral("inspector.moreMenu"));
  setAttribute(Qt::WA_DeleteOnClose);
  // A group begins with a rule and its title, which count as two separators.
  setSeparatorsCollapsible(false);
  addExploring();
  addSeparator();
  addOrganizing();
  addSeparator();
  auto* trash = add(QStringLiteral("trash"), tr("Move to Trash"), QStringLiteral("trash"),
                    [](Store& of, const ShotPtr& which) { of.trash({which}); });
  trash->setIcon(Symbols::icon(QStringLiteral("trash"), {.normal = Token::Danger}));
  setDestructive(*trash);
}

QAction* MoreActionsMenu::add(const QString& name, const QString& title, const QString& symbol, const Run& run) {
  auto* action = addAction(Symbols::icon(symbol), title);
  action->setObjectName(QStringLiteral("inspector.more.") + name);
  connect(action, &QAction::triggered, &store_, [&store = store_, shot = shot_, run] { run(store, shot); });
  return action;
}

QAction* MoreActionsMenu::addGuarded(const QString& name, const QString& title, const QString& symbol,
                                     void (Store::*run)(const Shot& shot)) {
  return add(name, title, symbol, [run](Store& store, const ShotPtr& shot) {
    store.withAccess({shot}, [&store, shot, run] { (store.*run)(*shot); });
  });
}

void MoreActionsMenu::addExploring() {
  addSection(tr("Explore"));
  add(QStringLiteral("similar"), tr("Find Similar"), QStringLiteral("square.on.square"),
      [](Store& store, const ShotPtr& shot) { store.showSimilar(*shot); })
      ->setEnabled(shot_->phash != 0);
  addGuarded(QStringLiteral("table"), tr("Copy as Table"), QStringLiteral("tablecells"), &Store::copyAsTable)
      ->setEnabled(!shot_->ocr.empty());
  addGuarded(QStringLiteral("translate"), tr("Translate Text…"), QStringLiteral("character.bubble"),
             &Store::translateText)
      ->setEnabled(!shot_->ocr.empty());
}

void MoreActionsMenu::addOrganizing() {
  addSection(tr("Organize"));
  addProjects();
  add(QStringLiteral("file"), tr("File to Library"), QStringLiteral("tray.and.arrow.down"),
      [](Store& store, const ShotPtr& shot) { store.file({shot}); })
      ->setEnabled(!shot_->filed);
  add(QStringLiteral("shrink"), tr("Shrink to HEIC"), QStringLiteral("arrow.down.circle"),
      [](Store& store, const ShotPtr& shot) { store.recompressInBackground({shot}); })
      ->setEnabled(!isHeic(*shot_));
}

void MoreActionsMenu::addProjects() {
  auto* projects = addMenu(Symbols::icon(QStringLiteral("folder.badge.gearshape")), tr("Add to Project"));
  projects->setObjectName(QStringLiteral("inspector.projectMenu"));
  for (const auto& name : store_.settings().projects()) {
    auto* action = projects->addAction(menuText(name));
    connect(action, &QAction::triggered, &store_,
            [&store = store_, shot = shot_, name] { store.assignProject(name, {shot}); });
  }
  if (projects->isEmpty()) projects->addAction(tr("Create a project in Settings"))->setEnabled(false);
}

}  // namespace Nimbrel
