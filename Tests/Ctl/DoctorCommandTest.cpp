#include "DoctorFixture.h"

#include "Screencapture/PortalDouble.h"
#include "Support/EnvironmentVariable.h"
#include "Support/SessionBus.h"

#include <gmock/gmock.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QUuid>

namespace Nimbrel {
namespace {

using Testing::EnvironmentVariable;
using ::testing::HasSubstr;

/// The program of a desktop that knows who shows icons.
class TrayWatcherDouble final : public QDBusVirtualObject {
 public:
  TrayWatcherDouble()
      : connection_(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"),
                                                  QUuid::createUuid().toString())) {
    EXPECT_TRUE(connection_.registerVirtualObject(QStringLiteral("/StatusNotifierWatcher"), this));
    EXPECT_TRUE(connection_.registerService(QStringLiteral("org.kde.StatusNotifierWatcher")));
  }
  ~TrayWatcherDouble() override { QDBusConnection::disconnectFromBus(connection_.name()); }

  bool hasHost = true;

  [[nodiscard]] QString introspect(const QString&) const override { return {}; }
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
    const bool isAsked = message.arguments().value(1).toString() == QStringLiteral("IsStatusNotifierHostRegistered");
    return isAsked && connection.send(message.createReply(QVariant::fromValue(QDBusVariant(hasHost))));
  }

 private:
  QDBusConnection connection_;
};

class DoctorCommandTest : public Testing::DoctorFixture {};

TEST_F(DoctorCommandTest, OutsideOfADesktopItIsDoneAndSaysWhatIsMissing) {
  const auto found = findings();
  for (const char* name : {"desktop session", "tray", "portal Screenshot", "portal ScreenCast",
                           "portal GlobalShortcuts", "portal Settings", "hotkey ⌃⇧5", "hotkey ⌃⇧Space"}) {
    ASSERT_TRUE(found.contains(name)) << name;
    EXPECT_FALSE(found.at(name).isPresent) << name;
    EXPECT_FALSE(found.at(name).advice.empty()) << name;
  }
  for (const char* name : {"text recognition", "language eng", "HEIC encoder", "movie encoder", "sound encoder"}) {
    ASSERT_TRUE(found.contains(name)) << name;
    EXPECT_TRUE(found.at(name).isPresent) << name << ": " << found.at(name).advice;
  }
  EXPECT_TRUE(found.contains("folder watches"));
  EXPECT_TRUE(found.contains("authentication"));
}

TEST_F(DoctorCommandTest, ForPeopleItIsALineForEachThing) {
  const auto text = output();
  EXPECT_THAT(text, HasSubstr("missing  desktop session: none"));
  EXPECT_THAT(text, HasSubstr("\npresent  language eng\n"));
}

TEST_F(DoctorCommandTest, TakesNoArguments) { EXPECT_EQ(ctl({"doctor", "everything"}).status, 2); }

TEST_F(DoctorCommandTest, ACatalogueThatCannotBeOpenedIsNoReasonNotToLook) {
  home_.folder().makeFolder(".local/share/Nimbrel/nimbrel.sqlite");
  EXPECT_TRUE(findings().at("language eng").isPresent);
}

TEST_F(DoctorCommandTest, AModelThatIsMissingIsNamedByItsPackage) {
  const auto models = home_.folder().makeFolder("models");
  const EnvironmentVariable folder("TESSDATA_PREFIX", models);
  const EnvironmentVariable language("LC_ALL", "de_DE.UTF-8");
  const auto found = findings();
  EXPECT_FALSE(found.at("text recognition").isPresent);
  EXPECT_THAT(found.at("text recognition").advice, HasSubstr("install tesseract-ocr-eng"));
  EXPECT_FALSE(found.at("language deu").isPresent);
  EXPECT_EQ(found.at("language deu").advice, "install tesseract-ocr-deu");
}

TEST_F(DoctorCommandTest, OnWaylandItAsksThePortals) {
  const EnvironmentVariable wayland("WAYLAND_DISPLAY", "wayland-0");
  const Testing::SessionBus bus;
  Testing::PortalDouble portal;
  for (const char* interface : {"Screenshot", "GlobalShortcuts"}) {
    portal.offer(QLatin1String(interface), {{QStringLiteral("version"), 1U}});
  }
  const auto found = findings();
  EXPECT_TRUE(found.at("desktop session").isPresent);
  EXPECT_THAT(found.at("desktop session").advice, HasSubstr("Wayland"));
  EXPECT_TRUE(found.at("portal Screenshot").isPresent);
  EXPECT_FALSE(found.at("portal ScreenCast").isPresent);
  EXPECT_TRUE(found.at("portal GlobalShortcuts").isPresent);
  EXPECT_TRUE(found.at("hotkey ⌃⇧5").isPresent);
  EXPECT_TRUE(portal.calls(QStringLiteral("CreateSession")).empty()) << "nobody is asked anything";
}

TEST_F(DoctorCommandTest, ATrayIsThereWhenSomebodyShowsIcons) {
  const Testing::SessionBus bus;
  TrayWatcherDouble watcher;
  EXPECT_TRUE(findings().at("tray").isPresent);
  watcher.hasHost = false;
  EXPECT_FALSE(findings().at("tray").isPresent);
}

}  // namespace
}  // namespace Nimbrel
