#pragma once

#include "Model/Models.h"
#include "Platform/Workspace.h"

#include <QMenu>

namespace Nimbrel {

class Store;

/// What can be done with a shot's file outside of Nimbrel: copied, mailed, opened with any application for its kind,
/// sent by what the desktop has for that. Whoever opens it asks for access first; it closes when that ends, and deletes
/// itself once it is closed and what was chosen is done.
class SharingMenu final : public QMenu {
  Q_OBJECT

 public:
  /// The store must outlive it.
  SharingMenu(Store& store, const ShotPtr& shot, QWidget* parent);

 private:
  void addSenders();
  void fillOpeners(QMenu& menu);
  [[nodiscard]] static QIcon iconOf(const Workspace::Taker& taker, const QString& otherwise);

  Store& store_;
  ShotPtr shot_;
};

/// Opens the menu near the details, at the upper right of a window.
void share(Store& store, const ShotPtr& shot, QWidget& window);

}  // namespace Nimbrel
