#pragma once

#include <QWidget>

namespace Nimbrel {

/// What stands in place of everything that is known of a protected shot.
class LockedPanel final : public QWidget {
  Q_OBJECT

 public:
  explicit LockedPanel(QWidget* parent = nullptr);

 Q_SIGNALS:
  void unlockRequested();
};

}  // namespace Nimbrel
