#include "Linux/NotifierWatcherDouble.h"

#include "Support/Waiting.h"

#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QUuid>

#include <gtest/gtest.h>

namespace Nimbrel::Testing {

namespace {

const auto watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const auto watcherPath = QStringLiteral("/StatusNotifierWatcher");
const auto itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const auto itemPath = QStringLiteral("/StatusNotifierItem");
const auto propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

}  // namespace

/// Hears what items announce.
class NotifierEar final : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;
  int icons = 0;

 public Q_SLOTS:
  void newIcon() { ++icons; }
};

NotifierWatcherDouble::NotifierWatcherDouble(Host host)
    : connection_(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                QUuid::createUuid().toString())),
      host_(host),
      ear_(new NotifierEar(this)) {
  EXPECT_TRUE(connection_.registerVirtualObject(watcherPath, this));
  EXPECT_TRUE(connection_.connect(QString(), itemPath, itemInterface, QStringLiteral("NewIcon"), ear_, "1newIcon()"));
  EXPECT_TRUE(connection_.registerService(watcherName));
}

NotifierWatcherDouble::~NotifierWatcherDouble() { QDBusConnection::disconnectFromBus(connection_.name()); }

void NotifierWatcherDouble::setHost(Host host) {
  host_ = host;
  const auto signal = host == Host::There ? QStringLiteral("StatusNotifierHostRegistered")
                                          : QStringLiteral("StatusNotifierHostUnregistered");
  EXPECT_TRUE(connection_.send(QDBusMessage::createSignal(watcherPath, watcherName, signal)));
}

QStringList NotifierWatcherDouble::items() const {
  QStringList present;
  for (const auto& item : entered_) {
    if (connection_.interface()->isServiceRegistered(item).value()) present.append(item);
  }
  return present;
}

QDBusMessage NotifierWatcherDouble::ask(const QDBusMessage& question) {
  // The item may be in this very process.
  const auto pending = connection_.asyncCall(question);
  EXPECT_TRUE(waitUntil([&] { return pending.isFinished(); }));
  return pending.reply();
}

QDBusMessage NotifierWatcherDouble::call(const QString& item, const QString& method, const QVariantList& arguments) {
  auto question = QDBusMessage::createMethodCall(item, itemPath, itemInterface, method);
  question.setArguments(arguments);
  return ask(question);
}

QVariant NotifierWatcherDouble::property(const QString& item, const QString& name) {
  auto question = QDBusMessage::createMethodCall(item, itemPath, propertiesInterface, QStringLiteral("Get"));
  question << itemInterface << name;
  const auto answer = ask(question);
  if (answer.type() != QDBusMessage::ReplyMessage) return {};
  return answer.arguments().constFirst().value<QDBusVariant>().variant();
}

int NotifierWatcherDouble::newIcons() const { return ear_->icons; }

QString NotifierWatcherDouble::introspect(const QString& /*path*/) const {
  return QStringLiteral(R"(<interface name="org.kde.StatusNotifierWatcher">
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <method name="RegisterStatusNotifierItem"><arg name="service" type="s" direction="in"/></method>
  <signal name="StatusNotifierHostRegistered"/>
  <signal name="StatusNotifierHostUnregistered"/>
</interface>
)");
}

bool NotifierWatcherDouble::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
  const auto arguments = message.arguments();
  if (message.interface() == propertiesInterface && message.member() == QLatin1String("Get") &&
      arguments.value(1).toString() == QLatin1String("IsStatusNotifierHostRegistered")) {
    return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(host_ == Host::There))));
  }
  if (message.member() != QLatin1String("RegisterStatusNotifierItem")) return false;
  entered_.append(arguments.constFirst().toString());
  return connection.send(message.createReply());
}

}  // namespace Nimbrel::Testing

#include "NotifierWatcherDouble.moc"
