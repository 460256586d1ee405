#pragma once

#include "Store/Store.h"
#include "Views/Window/SearchField.h"
#include "Views/Window/ViewOptionsMenu.h"

#include <QMenu>
#include <QToolButton>
#include <QWidget>

#include <optional>
#include <vector>

namespace Nimbrel {

/// The row above all columns: the sidebar's button and the titles of the menus, how the gallery shows its shots, what
/// is done with the selected ones, and the search.
class Toolbar final : public QWidget {
  Q_OBJECT

 public:
  /// The Store must outlive it, and so must the menus, which belong to whoever made them.
  Toolbar(Store& store, const std::vector<QMenu*>& menus, QWidget* parent = nullptr);

  /// The width of the sidebar, whose colour goes on behind the beginning of the row; absent while it is hidden.
  void setSidebarWidth(std::optional<int> width);
  void setDetailsShown(bool shown) { viewOptions_->setDetailsShown(shown); }

 Q_SIGNALS:
  void sidebarToggled();
  void detailsToggled();

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QToolButton* addMenuButton(const QString& name, const QString& title, const QString& help, QMenu* menu);
  void layOut(QWidget* titles, QWidget* size, QWidget* more);
  void showLayout();

  Store& store_;
  std::optional<int> sidebarWidth_;
  QToolButton* sidebarButton_;
  ViewOptionsMenu* viewOptions_;
  QToolButton* viewButton_;
  SearchField* search_;
};

}  // namespace Nimbrel
