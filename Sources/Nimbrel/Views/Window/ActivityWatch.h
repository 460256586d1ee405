#pragma once

#include "Store/Store.h"
#include "Views/Shared/ApplicationFocus.h"

#include <QObject>

namespace Nimbrel {

/// Tells the Store whether the user works in the application. Needs a QApplication. Main thread.
class ActivityWatch final : public QObject {
  Q_OBJECT

 public:
  /// The Store must outlive it.
  explicit ActivityWatch(Store& store, QObject* parent = nullptr);

 private:
  ApplicationFocus focus_;
};

}  // namespace Nimbrel
