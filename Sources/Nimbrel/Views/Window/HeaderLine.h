#pragma once

#include "Store/Store.h"
#include "Views/Shared/ElidedLabel.h"

#include <QTimer>
#include <QWidget>

namespace Nimbrel {

/// What is shown, and how much of it: the filter's title and the subtitle beside it, on one baseline.
class HeaderLine final : public QWidget {
  Q_OBJECT

 public:
  /// The Store must outlive it.
  explicit HeaderLine(Store& store, QWidget* parent = nullptr);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void refresh();
  void place();

  Store& store_;
  ElidedLabel* title_;
  ElidedLabel* subtitle_;
  QTimer refreshing_;  ///< one refresh for all that changes in a turn, since it counts all that is shown
};

}  // namespace Nimbrel
