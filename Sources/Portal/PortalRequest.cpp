#include "Portal/PortalRequest.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QUuid>

#include <chrono>
#include <utility>

namespace Nimbrel {

using namespace std::chrono_literals;

namespace {

constexpr auto requestInterface = "org.freedesktop.portal.Request";
constexpr auto betweenLooksAtTheBus = 1s;

enum Response : uint { Granted = 0, Cancelled = 1 };

/// Where the portal puts the request of this connection that has this token.
QString requestPath(const QDBusConnection& connection, const QString& token) {
  auto sender = connection.baseService().mid(1);
  sender.replace(QLatin1Char('.'), QLatin1Char('_'));
  return QLatin1String(portalPath) + QStringLiteral("/request/%1/%2").arg(sender, token);
}

}  // namespace

PortalRequestSignals::PortalRequestSignals(const QDBusConnection& connection, const QString& owner, const QString& path,
                                           QObject* parent)
    : QDBusAbstractInterface(owner, path, requestInterface, connection, parent) {}

PortalRequest::PortalRequest(const PortalBus& bus, const PortalInterface& interface, Call call, Then then)
    : connection_(bus.connection()),
      owner_(interface.owner),
      token_(QStringLiteral("nimbrel_") + QUuid::createUuid().toString(QUuid::Id128)),
      then_(std::move(then)),
      portalWatch_(owner_, connection_, QDBusServiceWatcher::WatchForUnregistration) {
  connect(&portalWatch_, &QDBusServiceWatcher::serviceUnregistered, this,
          [this] { refuse("The desktop portal has ended"); });
  // Nothing else is told when the bus itself goes.
  connect(&busWatch_, &QTimer::timeout, this, [this] {
    if (!connection_.isConnected()) refuse("The session bus has ended");
  });
  busWatch_.start(betweenLooksAtTheBus);
  // The answer may be under way before the call has returned, so somebody has to listen by then.
  path_ = requestPath(connection_, token_);
  listen(path_);
  send(interface, std::move(call));
}

PortalRequest::~PortalRequest() {
  if (isAnswered_) return;
  connection_.send(
      QDBusMessage::createMethodCall(owner_, path_, QLatin1String(requestInterface), QStringLiteral("Close")));
}

void PortalRequest::listen(const QString& path) {
  auto* answers = new PortalRequestSignals(connection_, owner_, path, this);
  connect(answers, &PortalRequestSignals::Response, this, &PortalRequest::hear);
}

void PortalRequest::send(const PortalInterface& interface, Call call) {
  auto message = QDBusMessage::createMethodCall(owner_, QLatin1String(portalPath), interface.name, call.method);
  call.options.insert(QStringLiteral("handle_token"), token_);
  message.setArguments(call.arguments << call.options);
  auto* watcher = new QDBusPendingCallWatcher(connection_.asyncCall(message), this);
  connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
    watcher->deleteLater();
    const QDBusPendingReply<QDBusObjectPath> reply = *watcher;
    if (reply.isError()) return refuse("The desktop portal refused: " + reply.error().message().toStdString());
    takeHandle(reply.value().path());
  });
}

void PortalRequest::takeHandle(const QString& path) {
  // Portals from before version 0.9 choose the path themselves.
  if (isAnswered_ || path == path_) return;
  path_ = path;
  listen(path_);
}

void PortalRequest::hear(uint response, const QVariantMap& results) {
  switch (response) {
    case Granted:
      return end({PortalAnswer::Outcome::granted, results, {}});
    case Cancelled:
      return end({PortalAnswer::Outcome::cancelled, {}, {}});
    default:
      return refuse("The desktop portal refused");
  }
}

void PortalRequest::refuse(const std::string& reason) { end({PortalAnswer::Outcome::refused, {}, reason}); }

void PortalRequest::end(const PortalAnswer& answer) {
  if (std::exchange(isAnswered_, true)) return;
  busWatch_.stop();
  // Whoever hears of it may delete this object, and with it the one whose signal we are in.
  const auto tell = [this, answer] { std::exchange(then_, nullptr)(answer); };
  QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

}  // namespace Nimbrel
