#include "Portal/PortalSession.h"

#include <QDBusMessage>
#include <QDBusObjectPath>

#include <utility>

namespace Nimbrel {

namespace {

constexpr auto sessionInterface = "org.freedesktop.portal.Session";

}  // namespace

PortalSessionSignals::PortalSessionSignals(const QDBusConnection& connection, const QString& owner, const QString& path,
                                           QObject* parent)
    : QDBusAbstractInterface(owner, path, sessionInterface, connection, parent) {}

/// Portals say it as text, some as a path.
QString PortalSession::pathIn(const QVariantMap& results) {
  const auto handle = results.value(QStringLiteral("session_handle"));
  return handle.canConvert<QDBusObjectPath>() ? handle.value<QDBusObjectPath>().path() : handle.toString();
}

PortalSession::PortalSession(const PortalBus& bus, const PortalInterface& interface, QString path,
                             std::function<void(End end)> ended)
    : connection_(bus.connection()),
      owner_(interface.owner),
      path_(std::move(path)),
      ended_(std::move(ended)),
      signals_(connection_, owner_, path_, nullptr),
      portalWatch_(owner_, connection_, QDBusServiceWatcher::WatchForUnregistration) {
  // Later, since whoever hears of it may delete the object whose signal we are in.
  connect(
      &signals_, &PortalSessionSignals::Closed, this, [this] { hear(End::byPortal); }, Qt::QueuedConnection);
  connect(
      &portalWatch_, &QDBusServiceWatcher::serviceUnregistered, this, [this] { hear(End::withPortal); },
      Qt::QueuedConnection);
}

PortalSession::~PortalSession() {
  if (isOver_) return;
  connection_.send(
      QDBusMessage::createMethodCall(owner_, path_, QLatin1String(sessionInterface), QStringLiteral("Close")));
}

QVariant PortalSession::handle() const { return QVariant::fromValue(QDBusObjectPath(path_)); }

void PortalSession::hear(End end) {
  isOver_ = true;
  if (const auto ended = std::exchange(ended_, nullptr)) ended(end);
}

}  // namespace Nimbrel
