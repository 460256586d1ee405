#include "Portal/PortalBus.h"

#include "Portal/SessionBus.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUuid>

#include <utility>

namespace Nimbrel {

namespace {

// Nobody is asked meanwhile, but the portal may have to be started.
constexpr int longestSearchMilliseconds = 25'000;

Error absence(const QString& interface, const QString& reason) {
  return {"The desktop portal does not offer " + interface.section(QLatin1Char('.'), -1).toStdString() + ": " +
          reason.toStdString()};
}

Result<PortalInterface> interfaceIn(const QString& name, const QDBusPendingReply<QVariantMap>& reply) {
  if (reply.isError()) return absence(name, reply.error().message());
  const auto properties = reply.value();
  const auto version = properties.value(QStringLiteral("version")).toUInt();
  if (version == 0) return absence(name, QStringLiteral("it has no version"));
  return PortalInterface{name, reply.reply().service(), version, properties};
}

}  // namespace

PortalBus::PortalBus(const QString& name) : name_(name) {}

PortalBus::~PortalBus() { QDBusConnection::disconnectFromBus(name_); }

Result<std::unique_ptr<PortalBus>> PortalBus::open() {
  const auto address = SessionBus::address();
  if (address.empty()) return Error{"There is no session bus"};
  auto bus = std::make_unique<PortalBus>(QUuid::createUuid().toString(QUuid::WithoutBraces));
  const auto connection = QDBusConnection::connectToBus(QString::fromStdString(address), bus->name_);
  if (connection.isConnected()) return bus;
  return Error{"The session bus does not answer: " + connection.lastError().message().toStdString()};
}

void findPortalInterface(QObject* context, const PortalBus& bus, const QString& name, PortalInterfaceFound then) {
  auto call =
      QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"), QLatin1String(portalPath),
                                     QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"));
  call << name;
  auto* watcher = new QDBusPendingCallWatcher(bus.connection().asyncCall(call, longestSearchMilliseconds), context);
  QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context, [watcher, name, then = std::move(then)] {
    watcher->deleteLater();
    then(interfaceIn(name, *watcher));
  });
}

}  // namespace Nimbrel
