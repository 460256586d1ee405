#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QStringList>
#include <QUuid>

#include <gtest/gtest.h>

#include <vector>

namespace Nimbrel::Testing {

/// A file manager on the session bus that the environment names: it remembers what it was to show. Answers need the
/// event loop.
class FileManagerDouble final : public QDBusVirtualObject {
 public:
  FileManagerDouble() {
    EXPECT_TRUE(connection_.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), this));
    EXPECT_TRUE(connection_.registerService(QStringLiteral("org.freedesktop.FileManager1")));
  }
  ~FileManagerDouble() override { QDBusConnection::disconnectFromBus(connection_.name()); }

  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    const bool isShown = message.interface() == QLatin1String("org.freedesktop.FileManager1") &&
                         message.member() == QLatin1String("ShowItems") && message.signature() == QLatin1String("ass");
    if (isShown) shown.push_back(message.arguments().constFirst().toStringList());
    return connection.send(isShown && !refuses ? message.createReply()
                                               : message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
  }

  bool refuses = false;
  std::vector<QStringList> shown;

 private:
  QDBusConnection connection_ =
      QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), QUuid::createUuid().toString());
};

}  // namespace Nimbrel::Testing
