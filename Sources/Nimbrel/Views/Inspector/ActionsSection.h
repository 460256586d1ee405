#pragma once

#include "Views/Inspector/MoreActionsMenu.h"
#include "Views/Inspector/ShotSection.h"

#include <QGridLayout>
#include <QPointer>

namespace Nimbrel {

/// What can be done with a shot: the frequent things as a grid of symbols, the rest in a menu.
class ActionsSection final : public ShotSection {
  Q_OBJECT

 public:
  explicit ActionsSection(const InspectorContext& context);

  void setCanEdit(bool canEdit) { edit_->setEnabled(canEdit); }
  void setCanPin(bool canPin) { pin_->setEnabled(canPin); }
  /// Closes the menu, if it is open.
  void closeMenu();

 Q_SIGNALS:
  void editClicked();
  void pinClicked();
  /// The button is what was clicked.
  void shareClicked(QWidget* button);

 protected:
  void fill(const Shot& shot) override;

 private:
  /// The next button of the grid; `name` is the end of its object name.
  IconButton* add(const QString& name, const QString& title, const QString& symbol);
  /// The same for what hands out the shot.
  IconButton* addGuarded(const QString& name, const QString& title, const QString& symbol,
                         void (Store::*run)(const Shot& shot));
  void addButtons();
  void toggleFavorite() const;
  void showMore();

  QGridLayout* grid_;
  IconButton* copyText_ = nullptr;
  IconButton* favorite_ = nullptr;
  IconButton* edit_ = nullptr;
  IconButton* pin_ = nullptr;
  QPushButton* more_;
  QPointer<MoreActionsMenu> menu_;
};

}  // namespace Nimbrel
