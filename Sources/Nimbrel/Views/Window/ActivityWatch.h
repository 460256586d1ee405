#pragma once

#include "Store/Store.h"

#include <QObject>
#include <QTimer>
#include <QWindow>

namespace Nimbrel {

/// Tells the Store whether the user works in the application: while any of its windows has the focus. Going from one of
/// them to another, as to a dialog and back, is no leaving; nor are its menus, and a drag that a button still holds.
/// Needs a QApplication. Main thread.
class ActivityWatch final : public QObject {
  Q_OBJECT

 public:
  /// The Store must outlive it.
  explicit ActivityWatch(Store& store, QObject* parent = nullptr);

 private:
  void follow(const QWindow* focused);
  void decide();

  Store& store_;
  QTimer leaving_;  ///< runs while no window has the focus, until that counts
};

}  // namespace Nimbrel
