#include "Linux/Checkup/Findings.h"
#include "Portal/PortalBus.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>
#include <QVariantMap>

#include <algorithm>
#include <iterator>

namespace Nimbrel::Checkup {

namespace {

// A service may have to be started first; more than this is as good as nothing.
constexpr int longestAnswerMilliseconds = 5'000;
constexpr auto propertiesInterface = "org.freedesktop.DBus.Properties";

bool hasTrayHost(const QDBusConnection& connection) {
  const auto service = QStringLiteral("org.kde.StatusNotifierWatcher");
  auto call = QDBusMessage::createMethodCall(service, QStringLiteral("/StatusNotifierWatcher"),
                                             QLatin1String(propertiesInterface), QStringLiteral("Get"));
  call << service << QStringLiteral("IsStatusNotifierHostRegistered");
  const QDBusReply<QDBusVariant> reply = connection.call(call, QDBus::Block, longestAnswerMilliseconds);
  return reply.isValid() && reply.value().variant().toBool();
}

bool hasPortal(const QDBusConnection& connection, const std::string& name) {
  auto call =
      QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"), QLatin1String(portalPath),
                                     QLatin1String(propertiesInterface), QStringLiteral("GetAll"));
  call << QStringLiteral("org.freedesktop.portal.") + QString::fromStdString(name);
  const QDBusReply<QVariantMap> reply = connection.call(call, QDBus::Block, longestAnswerMilliseconds);
  return reply.isValid() && reply.value().value(QStringLiteral("version")).toUInt() > 0;
}

}  // namespace

const std::vector<std::string>& portalNames() {
  static const std::vector<std::string> names{"Screenshot", "ScreenCast", "GlobalShortcuts", "Settings"};
  return names;
}

BusFindings lookAtBus() {
  BusFindings findings;
  const auto bus = PortalBus::open();
  if (!bus) return findings;
  const auto connection = bus.value()->connection();
  findings.hasTrayHost = hasTrayHost(connection);
  std::ranges::copy_if(portalNames(), std::inserter(findings.portals, findings.portals.end()),
                       [&](const std::string& name) { return hasPortal(connection, name); });
  return findings;
}

}  // namespace Nimbrel::Checkup
