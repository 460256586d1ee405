#pragma once

#include "Store/Store.h"
#include "Views/Shared/AppIcons.h"
#include "Views/Window/SidebarModel.h"

#include <QListView>
#include <QTimer>

namespace Nimbrel {

/// What there is to look at. Its selected row is the Store's filter, which it has no copy of: a filter without a row
/// shows none selected. Saved searches have a context menu.
class Sidebar final : public QListView {
  Q_OBJECT

 public:
  /// Store and icons must outlive it.
  Sidebar(Store& store, AppIcons& icons, QWidget* parent = nullptr);

 protected:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void mousePressEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void refresh();
  void showChoice();
  void showMenu(const std::string& savedSearch, const QPoint& place);

  Store& store_;
  SidebarModel* model_;
  QTimer refreshing_;  ///< one refresh for all that changes in a turn
  bool isShowing_ = false;
};

}  // namespace Nimbrel
