// The programs as the session bus starts them, by the files that are installed for it.

#include "App/MenuBarCompanion.h"
#include "Model/AppIdentity.h"

#include "Support/ProgramRun.h"
#include "Support/SessionBus.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QMap>
#include <QUuid>

#include <signal.h>

#include <algorithm>
#include <vector>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

/// A bus that knows of the programs that were built, and starts them in a home of the test's own.
class BusActivationTest : public ::testing::Test {
 protected:
  BusActivationTest() {
    qDBusRegisterMetaType<QMap<QString, QString>>();
    for (const auto& name : {AppIdentity::bundleIdentifier(), MenuBarCompanion::bundleIdentifier()}) {
      auto service = Testing::contentOf(NIMBREL_RESOURCES "/dbus/" + name + ".service.in");
      const std::string folder = "@CMAKE_INSTALL_FULL_BINDIR@";
      const auto place = service.find(folder);
      EXPECT_NE(place, std::string::npos) << name;
      if (place != std::string::npos) service.replace(place, folder.size(), NIMBREL_BIN);
      services_.write(name + ".service", service);
    }
    setEnvironment();
  }
  ~BusActivationTest() override {
    for (const auto process : started_) ::kill(process, SIGTERM);
    EXPECT_TRUE(waitUntil([this] { return std::ranges::none_of(started_, runs); }));
  }
  BusActivationTest(const BusActivationTest&) = delete;
  BusActivationTest& operator=(const BusActivationTest&) = delete;

  /// What the bus starts has this home and no display, as sessions tell it.
  void setEnvironment() {
    auto call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("UpdateActivationEnvironment"));
    const auto environment = Testing::environmentOf(home_.folder().path());
    QMap<QString, QString> variables;
    for (const auto& name : environment.keys()) variables.insert(name, environment.value(name));
    variables.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    call << QVariant::fromValue(variables);
    EXPECT_EQ(connection_.call(call).type(), QDBusMessage::ReplyMessage);
  }
  /// Has the bus start whoever has that name, and waits until it is there.
  void activate(const std::string& name) {
    const auto path = QLatin1Char('/') + QString::fromStdString(name).replace(QLatin1Char('.'), QLatin1Char('/'));
    auto call = QDBusMessage::createMethodCall(
        QString::fromStdString(name), path, QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    call << QVariantMap();
    const auto answer = connection_.call(call);
    ASSERT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    started_.push_back(processOf(name));
  }
  [[nodiscard]] pid_t processOf(const std::string& name) const {
    return static_cast<pid_t>(connection_.interface()->servicePid(QString::fromStdString(name)).value());
  }
  static bool runs(pid_t process) { return ::kill(process, 0) == 0; }

  Testing::TemporaryFolder services_;
  Testing::StoreHome home_;
  Testing::SessionBus bus_{services_.path()};
  QDBusConnection connection_ =
      QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), QUuid::createUuid().toString());
  std::vector<pid_t> started_;
};

TEST_F(BusActivationTest, EachProgramIsStartedUnderItsNameAndOnlyOnce) {
  // The companion first, or the window would start one that outlives the test.
  activate(MenuBarCompanion::bundleIdentifier());
  ASSERT_TRUE(waitUntil([this] { return MenuBarCompanion::isRunning(home_.folders()); }));
  activate(AppIdentity::bundleIdentifier());
  ASSERT_GT(started_.back(), 0);
  const auto application = started_.back();
  EXPECT_NE(application, started_.front());
  activate(AppIdentity::bundleIdentifier());
  EXPECT_EQ(started_.back(), application) << "it is the one that runs who answers";
  EXPECT_EQ(Testing::runProgram("nimbrel", {}, home_.folder().path()).status, 0) << "and another start is handed over";
}

}  // namespace
}  // namespace Nimbrel
