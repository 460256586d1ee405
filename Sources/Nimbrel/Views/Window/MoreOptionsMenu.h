#pragma once

#include "Store/Store.h"

#include <QAction>
#include <QMenu>

namespace Nimbrel {

/// Files or trashes what is selected. Its items are up to date whenever it opens.
class MoreOptionsMenu final : public QMenu {
  Q_OBJECT

 public:
  /// The Store must outlive it.
  explicit MoreOptionsMenu(Store& store, QWidget* parent = nullptr);

 private:
  void refresh();
  void file();

  Store& store_;
  QAction* file_;
  QAction* trash_;
};

}  // namespace Nimbrel
