#pragma once

#include "Linux/Desktop/BusConnection.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QIcon>
#include <QPoint>
#include <QVariantMap>

#include <functional>
#include <string>

namespace Nimbrel {

/// A status notifier: an icon that whoever shows such icons fetches from here (freedesktop.org, "Status Notifier
/// Item", as the desktops speak it, under their name org.kde). It is gone from the tray with this object. Main thread.
class NotifierItem final : public QDBusVirtualObject {
 public:
  /// The user has chosen it. The point is where, in pixels of the display; trays that do not know say 0, 0.
  using Activated = std::function<void(QPoint place, const std::string& token)>;

  /// Enters itself with the watcher of such icons, whose answer nobody waits for.
  NotifierItem(const QIcon& picture, const QString& title, Activated activated);

  void setLook(const QIcon& picture, const QString& title);

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  void take(const QIcon& picture, const QString& title);
  [[nodiscard]] QVariantMap properties() const;
  bool tellProperties(const QDBusMessage& message, const QDBusConnection& connection) const;
  bool obey(const QDBusMessage& message, const QDBusConnection& connection);
  void announce(const QString& signal);

  Activated activated_;
  QString title_;
  QString iconName_;  ///< of the desktop's icons, where it has ours
  QVariant pictures_;
  std::string token_;  ///< for what the user does next
  BusConnection bus_;  ///< closed before the rest goes
};

}  // namespace Nimbrel
