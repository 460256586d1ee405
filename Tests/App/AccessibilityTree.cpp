#include "App/AccessibilityTree.h"

#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

#include <signal.h>
#include <sys/wait.h>

#include <cstdint>
#include <deque>

namespace Nimbrel::Testing {

namespace {

const QString sessionName = QStringLiteral("nimbrel-tests-session");
const QString readerName = QStringLiteral("nimbrel-tests-reader");
constexpr const char* accessible = "org.a11y.atspi.Accessible";

// Numbers of AT-SPI's states.
constexpr int focusableState = 11;
constexpr int showingState = 25;

QDBusMessage callOf(const AccessiblePart& part, const char* interface, const char* method) {
  return QDBusMessage::createMethodCall(part.bus, part.path, QString::fromLatin1(interface),
                                        QString::fromLatin1(method));
}

QString addressOfBus(const QDBusConnection& session) {
  const auto call = QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                                   QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
  const QDBusReply<QString> address = session.call(call);
  return address.value();
}

}  // namespace

AccessibilityBus::AccessibilityBus()
    : launcher_({"/usr/libexec/at-spi-bus-launcher", "--launch-immediately"}), connection_(readerName) {
  connect();
}

AccessibilityBus::~AccessibilityBus() {
  connection_ = QDBusConnection(QString());
  QDBusConnection::disconnectFromBus(readerName);
  QDBusConnection::disconnectFromBus(sessionName);
  // Asked to end, it ends the bus that it has started.
  ::kill(launcher_.process(), SIGTERM);
  siginfo_t end{};
  ::waitid(P_PID, static_cast<id_t>(launcher_.process()), &end, WEXITED | WNOWAIT);
}

void AccessibilityBus::connect() {
  const auto session = QDBusConnection::connectToBus(QString::fromStdString(session_.address()), sessionName);
  QString address;
  ASSERT_TRUE(waitUntil([&] {
    address = addressOfBus(session);
    return !address.isEmpty();
  })) << "there is no bus for screen readers";
  connection_ = QDBusConnection::connectToBus(address, readerName);
  ASSERT_TRUE(connection_.isConnected());
}

QVariant AccessibilityBus::property(const AccessiblePart& part, const char* interface, const char* name) const {
  auto call = callOf(part, "org.freedesktop.DBus.Properties", "Get");
  call << QString::fromLatin1(interface) << QString::fromLatin1(name);
  const QDBusReply<QDBusVariant> reply = connection_.call(call);
  return reply.value().variant();
}

std::vector<AccessiblePart> AccessibilityBus::childrenOf(const AccessiblePart& part) const {
  const auto answer = connection_.call(callOf(part, accessible, "GetChildren")).arguments();
  std::vector<AccessiblePart> children;
  if (answer.isEmpty()) return children;
  const auto list = qvariant_cast<QDBusArgument>(answer.front());
  for (list.beginArray(); !list.atEnd();) {
    AccessiblePart child;
    QDBusObjectPath path;
    list.beginStructure();
    list >> child.bus >> path;
    list.endStructure();
    child.path = path.path();
    children.push_back(child);
  }
  return children;
}

void AccessibilityBus::read(AccessiblePart& part) const {
  part.name = property(part, accessible, "Name").toString().toStdString();
  const QDBusReply<QString> role = connection_.call(callOf(part, accessible, "GetRoleName"));
  part.role = role.value().toStdString();
  const auto state = connection_.call(callOf(part, accessible, "GetState")).arguments();
  if (state.isEmpty()) return;
  const auto bits = qdbus_cast<QList<std::uint32_t>>(state.front());
  const auto has = [&](int number) { return !bits.isEmpty() && (bits.front() >> number & 1U) != 0; };
  part.isShowing = has(showingState);
  part.isFocusable = has(focusableState);
}

std::vector<AccessiblePart> AccessibilityBus::parts() const {
  std::vector<AccessiblePart> all;
  AccessiblePart root{.bus = QStringLiteral("org.a11y.atspi.Registry"),
                      .path = QStringLiteral("/org/a11y/atspi/accessible/root")};
  std::deque<AccessiblePart> waiting;
  for (auto& program : childrenOf(root)) waiting.push_back(program);
  while (!waiting.empty()) {
    auto part = waiting.front();
    waiting.pop_front();
    read(part);
    for (const auto& child : childrenOf(part)) waiting.push_back(child);
    all.push_back(std::move(part));
  }
  return all;
}

bool AccessibilityBus::act(const AccessiblePart& part) const {
  auto call = callOf(part, "org.a11y.atspi.Action", "DoAction");
  call << 0;
  const QDBusReply<bool> done = connection_.call(call);
  return done.value();
}

}  // namespace Nimbrel::Testing
