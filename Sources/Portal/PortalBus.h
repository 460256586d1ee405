#pragma once

#include "Foundation/Result.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <memory>

namespace Nimbrel {

/// A connection of our own to the session bus, closed with this object; what was sent before still goes out. Main
/// thread.
class PortalBus {
 public:
  /// Waits for the bus to greet us, and for nothing else. Fails when the environment names none that answers.
  [[nodiscard]] static Result<std::unique_ptr<PortalBus>> open();

  explicit PortalBus(const QString& name);
  ~PortalBus();
  PortalBus(const PortalBus&) = delete;
  PortalBus& operator=(const PortalBus&) = delete;

  [[nodiscard]] QDBusConnection connection() const { return QDBusConnection(name_); }

 private:
  QString name_;  ///< by which Qt knows the connection
};

/// One interface of the desktop portal, as it was found.
struct PortalInterface {
  QString name;            ///< "org.freedesktop.portal.Screenshot"
  QString owner;           ///< the unique name of the portal; another one that takes over knows nothing of our requests
  unsigned version = 0;    ///< 1 or more
  QVariantMap properties;  ///< all of them
};

/// Looks for an interface of the portal, which the bus may start for that. An error where it is absent: there is no
/// portal, or none of its desktops offers this. `then` comes in a later turn of the event loop, and never once
/// `context` is gone.
using PortalInterfaceFound = std::function<void(Result<PortalInterface> found)>;
void findPortalInterface(QObject* context, const PortalBus& bus, const QString& name, PortalInterfaceFound then);

/// The portal's one object, which has all its interfaces.
inline constexpr auto portalPath = "/org/freedesktop/portal/desktop";

}  // namespace Nimbrel
