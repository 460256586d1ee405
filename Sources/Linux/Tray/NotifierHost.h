#pragma once

#include "Linux/Desktop/BusConnection.h"

#include <QDBusPendingCallWatcher>
#include <QObject>
#include <QPointer>
#include <QString>

#include <optional>

namespace Nimbrel {

/// Those who bring status notifiers together, under the name that all desktops use.
namespace NotifierNames {
[[nodiscard]] QString watcher();
[[nodiscard]] QString watcherPath();
}  // namespace NotifierNames

/// Whether somebody on the session bus shows status notifiers. Main thread.
class NotifierHost final : public QObject {
  Q_OBJECT

 public:
  /// Begins to ask; changed() tells the first answer as well.
  NotifierHost();

  /// Absent until there is an answer.
  [[nodiscard]] std::optional<bool> isThere() const { return isThere_; }

 Q_SIGNALS:
  /// Also when a host has taken the place of another, which knows nothing of our icons: it is gone for a moment then.
  void changed();

 private Q_SLOTS:
  void ask();

 private:
  void listen();
  void become(bool isThere);

  BusConnection bus_;
  std::optional<bool> isThere_;
  QPointer<QDBusPendingCallWatcher> question_;  ///< the last one; older answers do not count
};

}  // namespace Nimbrel
