#include "Screencapture/PortalDouble.h"

#include <gtest/gtest.h>

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QUuid>

#include <utility>

namespace Nimbrel::Testing {

namespace {

constexpr auto portalPrefix = "org.freedesktop.portal.";

QDBusConnection ownConnection() {
  return QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                       QUuid::createUuid().toString());
}

}  // namespace

QVariantMap PortalDouble::Call::options() const {
  return arguments.isEmpty() ? QVariantMap() : qdbus_cast<QVariantMap>(arguments.back());
}

PortalDouble::PortalDouble() : connection_(ownConnection()) {
  EXPECT_TRUE(connection_.registerVirtualObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                                                QDBusConnection::SubPath));
  EXPECT_TRUE(connection_.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
}

PortalDouble::~PortalDouble() { vanish(); }

void PortalDouble::vanish() {
  QDBusConnection::disconnectFromBus(connection_.name());
  // It lasts as long as somebody holds it.
  connection_ = QDBusConnection(QString());
}

void PortalDouble::offer(const QString& interface, const QVariantMap& properties) {
  interfaces_[QLatin1String(portalPrefix) + interface] = properties;
}

void PortalDouble::answer(const QString& method, uint response, const QVariantMap& results) {
  behave(method, [this, response, results](const QDBusMessage& call) {
    acknowledge(call, requestPath(call));
    respond(call, requestPath(call), response, results);
  });
}

void PortalDouble::keepAsking(const QString& method) {
  behave(method, [this](const QDBusMessage& call) { acknowledge(call, requestPath(call)); });
}

void PortalDouble::behave(const QString& method, Behaviour behaviour) { behaviours_[method] = std::move(behaviour); }

QString PortalDouble::requestPath(const QDBusMessage& call, const QString& kind) {
  const auto options = qdbus_cast<QVariantMap>(call.arguments().constLast());
  const auto token =
      kind == QLatin1String("session") ? QStringLiteral("session_handle_token") : QStringLiteral("handle_token");
  auto sender = call.service().mid(1);
  sender.replace(QLatin1Char('.'), QLatin1Char('_'));
  return QStringLiteral("/org/freedesktop/portal/desktop/%1/%2/%3").arg(kind, sender, options.value(token).toString());
}

void PortalDouble::acknowledge(const QDBusMessage& call, const QString& path) {
  reply(call, QVariant::fromValue(QDBusObjectPath(path)));
}

void PortalDouble::respond(const QDBusMessage& call, const QString& path, uint response, const QVariantMap& results) {
  auto signal = QDBusMessage::createTargetedSignal(
      call.service(), path, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
  signal << response << results;
  EXPECT_TRUE(connection_.send(signal));
}

void PortalDouble::reply(const QDBusMessage& call, const QVariant& value) {
  EXPECT_TRUE(connection_.send(call.createReply(value)));
}

void PortalDouble::refuse(const QDBusMessage& call, const QString& error) {
  EXPECT_TRUE(connection_.send(call.createErrorReply(error, QStringLiteral("not today"))));
}

void PortalDouble::announce(const QString& interface, const QString& signal, const QVariantList& arguments) {
  auto message = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                            QLatin1String(portalPrefix) + interface, signal);
  message.setArguments(arguments);
  EXPECT_TRUE(connection_.send(message));
}

void PortalDouble::closeSession(const QString& path) {
  auto signal =
      QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Session"), QStringLiteral("Closed"));
  signal << QVariantMap();
  EXPECT_TRUE(connection_.send(signal));
}

std::vector<PortalDouble::Call> PortalDouble::calls(const QString& method) const {
  std::vector<Call> found;
  for (const auto& call : calls_) {
    if (call.method == method) found.push_back(call);
  }
  return found;
}

QString PortalDouble::introspect(const QString&) const { return {}; }

bool PortalDouble::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
  calls_.push_back({message.member(), message.path(), message.arguments()});
  if (message.member() == QLatin1String("GetAll")) {
    tellProperties(message);
  } else if (const auto behaviour = behaviours_.find(message.member()); behaviour != behaviours_.end()) {
    behaviour->second(message);
  } else if (message.member() != QLatin1String("Close")) {
    refuse(message, QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"));
  }
  return true;
}

void PortalDouble::tellProperties(const QDBusMessage& call) {
  const auto interface = interfaces_.find(call.arguments().constFirst().toString());
  if (interface == interfaces_.end()) {
    return refuse(call, QStringLiteral("org.freedesktop.DBus.Error.UnknownInterface"));
  }
  reply(call, interface->second);
}

}  // namespace Nimbrel::Testing
