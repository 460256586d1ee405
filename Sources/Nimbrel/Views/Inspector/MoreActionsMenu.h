#pragma once

#include "Views/Inspector/ShotSection.h"

#include <QMenu>

namespace Nimbrel {

/// What else can be done with one shot, made each time it is opened and deleted when it closes. It stays with its shot
/// whatever is shown meanwhile.
class MoreActionsMenu final : public QMenu {
  Q_OBJECT

 public:
  MoreActionsMenu(Store& store, const ShotPtr& shot, QWidget* parent);

 private:
  using Run = std::function<void(Store& store, const ShotPtr& shot)>;
  /// `name` is the end of the object name.
  QAction* add(const QString& name, const QString& title, const QString& symbol, const Run& run);
  /// The same for what hands out the shot.
  QAction* addGuarded(const QString& name, const QString& title, const QString& symbol,
                      void (Store::*run)(const Shot& shot));
  void addExploring();
  void addOrganizing();
  void addProjects();

  Store& store_;
  ShotPtr shot_;
};

}  // namespace Nimbrel
