// The programs started once more, on a bus of the tests' own and without one.

#include "App/MenuBarCompanion.h"

#include "Support/ProgramRun.h"
#include "Support/SessionBus.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QUuid>

#include <signal.h>

#include <optional>

namespace Nimbrel {
namespace {

using Testing::startProgram;
using Testing::waitUntil;

class SecondStartTest : public ::testing::TestWithParam<bool> {
 protected:
  SecondStartTest() {
    if (GetParam()) bus_.emplace();
  }
  [[nodiscard]] std::unique_ptr<QProcess> start(const char* program) const {
    return startProgram(program, {}, home_.folder().path());
  }
  /// Whether it ends by itself, content.
  static bool isHandedOver(QProcess& process) {
    return waitUntil([&] { return process.state() == QProcess::NotRunning; }) && process.exitCode() == 0 &&
           process.exitStatus() == QProcess::NormalExit;
  }

  std::optional<Testing::SessionBus> bus_;
  Testing::StoreHome home_;
};

TEST_P(SecondStartTest, OfTheApplicationIsHandedOverAndOfTheCompanionToo) {
  const auto companion = start("nimbrel-menubar");
  ASSERT_TRUE(waitUntil([this] { return MenuBarCompanion::isRunning(home_.folders()); }));
  const auto application = start("nimbrel");
  ASSERT_TRUE(waitUntil([&] { return Testing::catchesSignal(*application, SIGTERM); }));
  // One of the two is the first, whichever comes to its place sooner.
  const auto second = start("nimbrel");
  ASSERT_TRUE(waitUntil(
      [&] { return second->state() == QProcess::NotRunning || application->state() == QProcess::NotRunning; }));
  auto& gone = second->state() == QProcess::NotRunning ? *second : *application;
  auto& stays = second->state() == QProcess::NotRunning ? *application : *second;
  EXPECT_TRUE(isHandedOver(gone));
  EXPECT_EQ(stays.state(), QProcess::Running);
  const auto otherCompanion = start("nimbrel-menubar");
  EXPECT_TRUE(isHandedOver(*otherCompanion));
  EXPECT_EQ(companion->state(), QProcess::Running);
  stays.terminate();
  EXPECT_TRUE(stays.waitForFinished());
  const auto third = start("nimbrel");
  EXPECT_FALSE(third->waitForFinished(1500)) << "the place was free";
}

INSTANTIATE_TEST_SUITE_P(WithAndWithoutABus, SecondStartTest, ::testing::Bool());

class OnTheBus : public ::testing::Test {
 protected:
  [[nodiscard]] bool isOnBus(const std::string& name) const {
    return connection_.interface()->isServiceRegistered(QString::fromStdString(name)).value();
  }

  Testing::SessionBus bus_;
  Testing::StoreHome home_;
  QDBusConnection connection_ =
      QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), QUuid::createUuid().toString());
};

TEST_F(OnTheBus, FilesThatTheDesktopOpensEnterTheCatalogue) {
  // Else the application would start one that outlives the test.
  const auto companion = startProgram("nimbrel-menubar", {}, home_.folder().path());
  ASSERT_TRUE(waitUntil([this] { return MenuBarCompanion::isRunning(home_.folders()); }));
  const auto application = startProgram("nimbrel", {}, home_.folder().path());
  ASSERT_TRUE(waitUntil([this] { return isOnBus(AppIdentity::bundleIdentifier()); }));
  const auto file = home_.addFile(home_.path("a b.png"));
  auto call = QDBusMessage::createMethodCall(QString::fromStdString(AppIdentity::bundleIdentifier()),
                                             QStringLiteral("/com/halderquist/nimbrel"),
                                             QStringLiteral("org.freedesktop.Application"), QStringLiteral("Open"));
  call << QStringList{QStringLiteral("file://") + QString::fromStdString(home_.path("a%20b.png"))} << QVariantMap();
  EXPECT_EQ(connection_.call(call).type(), QDBusMessage::ReplyMessage);
  const auto observer = home_.open(ProcessRole::mainApplication);
  EXPECT_TRUE(waitUntil([&] { return Testing::namesOf(observer->shots()) == std::vector<std::string>{"a b.png"}; }));
}

TEST_F(OnTheBus, EachProcessHasItsOwnName) {
  const auto companion = startProgram("nimbrel-menubar", {}, home_.folder().path());
  ASSERT_TRUE(waitUntil([this] { return isOnBus(MenuBarCompanion::bundleIdentifier()); }));
  EXPECT_FALSE(isOnBus(AppIdentity::bundleIdentifier()));
  companion->terminate();
  EXPECT_TRUE(waitUntil([this] { return !isOnBus(MenuBarCompanion::bundleIdentifier()); }));
}

}  // namespace
}  // namespace Nimbrel
