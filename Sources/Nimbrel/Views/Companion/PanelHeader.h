#pragma once

#include "Store/Store.h"

#include <QLabel>
#include <QWidget>

namespace Nimbrel {

/// The head of the panel of the menu bar: how much waits in the Inbox, and how much may contain secrets.
class PanelHeader final : public QWidget {
  Q_OBJECT

 public:
  /// The store must outlive it.
  explicit PanelHeader(const Store& store, QWidget* parent = nullptr);

 private:
  void refresh();

  const Store& store_;
  QLabel* inbox_;
  QWidget* sensitive_;
  QLabel* sensitiveCount_;
};

}  // namespace Nimbrel
