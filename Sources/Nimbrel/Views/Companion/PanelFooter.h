#pragma once

#include "Store/Store.h"

#include <QPushButton>
#include <QWidget>

namespace Nimbrel {

/// The foot of the panel of the menu bar. What concerns processes leaves as a signal.
class PanelFooter final : public QWidget {
  Q_OBJECT

 public:
  /// The store must outlive it.
  explicit PanelFooter(Store& store, QWidget* parent = nullptr);

 Q_SIGNALS:
  void openMainAppRequested();
  void quitRequested();

 private:
  void refresh();

  Store& store_;
  QPushButton* fileInbox_;
  QPushButton* undo_;
};

}  // namespace Nimbrel
