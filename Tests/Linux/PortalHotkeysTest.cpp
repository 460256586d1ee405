#include "Linux/Portal/PortalHotkeys.h"

#include "Linux/Portal/ShortcutSession.h"
#include "Screencapture/PortalDouble.h"
#include "Support/SessionBus.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace Nimbrel {
namespace {

using Action = HotkeyAction;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::PortalDouble;
using Testing::waitUntil;

const auto shortcutsPortal = QStringLiteral("GlobalShortcuts");
const auto createMethod = QStringLiteral("CreateSession");
const auto bindMethod = QStringLiteral("BindShortcuts");

/// A process that wants combinations.
class Process {
 public:
  Process() {
    hotkeys_->observe(
        {.pressed = [this](Action action) { pressed.push_back(action); },
         .failed = [this](Action action, const HotkeyFailure& failure) { failures.emplace(action, failure); }});
  }
  void hold(Action action) { hotkeys_->hold(action); }
  void release(Action action) { hotkeys_->release(action); }
  /// Why a combination cannot be had, waited for.
  [[nodiscard]] HotkeyFailure failure(Action action) {
    EXPECT_TRUE(waitUntil([&] { return failures.contains(action); }));
    return failures[action];
  }
  void end() { hotkeys_.reset(); }

  std::vector<Action> pressed;
  std::map<Action, HotkeyFailure> failures;

 private:
  std::unique_ptr<HotkeyService> hotkeys_ = makePortalHotkeys("org.example.own");
};

class PortalHotkeysTest : public ::testing::Test {
 protected:
  PortalHotkeysTest() {
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<QList<PortalShortcut>>();
  }

  void offer() {
    portal_->offer(shortcutsPortal, {{QStringLiteral("version"), 1U}});
    portal_->behave(createMethod, [this](const QDBusMessage& call) {
      session_ = PortalDouble::requestPath(call, QStringLiteral("session"));
      portal_->acknowledge(call, PortalDouble::requestPath(call));
      portal_->respond(call, PortalDouble::requestPath(call), 0, {{QStringLiteral("session_handle"), session_}});
    });
    grant({"capture", "quick-find"});
  }
  /// The user lets us have these, whatever is asked for.
  void grant(const std::vector<const char*>& ids) {
    QList<PortalShortcut> granted;
    for (const auto* id : ids) granted.append(PortalShortcut{.id = QLatin1String(id), .properties = {}});
    portal_->answer(bindMethod, 0, {{QStringLiteral("shortcuts"), QVariant::fromValue(granted)}});
  }
  /// The ids that the portal was asked for each time.
  [[nodiscard]] std::vector<QStringList> bound() const {
    std::vector<QStringList> all;
    for (const auto& call : portal_->calls(bindMethod)) {
      QStringList ids;
      for (const auto& shortcut : qdbus_cast<QList<PortalShortcut>>(call.arguments[1])) ids << shortcut.id;
      all.push_back(ids);
    }
    return all;
  }
  [[nodiscard]] bool isBound(std::size_t times) const {
    return waitUntil([&] { return portal_->calls(bindMethod).size() >= times; });
  }
  void press(const char* id, const QString& session) {
    portal_->announce(shortcutsPortal, QStringLiteral("Activated"),
                      {QVariant::fromValue(QDBusObjectPath(session)), QLatin1String(id), qulonglong{1}, QVariantMap()});
  }
  void press(const char* id) { press(id, session_); }
  /// Whether all is settled: a press that comes after the answers is heard.
  [[nodiscard]] bool hears(const char* id) {
    const auto before = process_.pressed.size();
    press(id);
    return waitUntil([&] { return process_.pressed.size() > before; });
  }

  Testing::SessionBus bus_;
  std::unique_ptr<PortalDouble> portal_ = std::make_unique<PortalDouble>();
  QString session_;
  Process process_;
};

TEST_F(PortalHotkeysTest, NothingIsAskedBeforeACombinationIsWanted) {
  offer();
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_THAT(portal_->calls(QStringLiteral("GetAll")), IsEmpty());
}

TEST_F(PortalHotkeysTest, WhatIsGrantedIsHeard) {
  offer();
  process_.hold(Action::capture);
  process_.hold(Action::quickFind);
  ASSERT_TRUE(isBound(1));
  press("quick-find");
  press("capture");
  EXPECT_TRUE(waitUntil([this] { return process_.pressed.size() == 2; }));
  EXPECT_THAT(process_.pressed, ElementsAre(Action::quickFind, Action::capture));
  EXPECT_THAT(process_.failures, IsEmpty());
}

TEST_F(PortalHotkeysTest, AllIsAskedForAtOnceWithTheCombinationsThatWeWouldLike) {
  offer();
  process_.hold(Action::capture);
  process_.hold(Action::quickFind);
  process_.hold(Action::capture);
  ASSERT_TRUE(isBound(1));
  const auto calls = portal_->calls(bindMethod);
  ASSERT_EQ(calls.size(), 1U);
  EXPECT_EQ(calls.front().arguments[0].value<QDBusObjectPath>().path(), session_);
  const auto shortcuts = qdbus_cast<QList<PortalShortcut>>(calls.front().arguments[1]);
  ASSERT_EQ(shortcuts.size(), 2);
  EXPECT_EQ(shortcuts[0].properties.value(QStringLiteral("preferred_trigger")).toString(),
            QStringLiteral("CTRL+SHIFT+5"));
  EXPECT_EQ(shortcuts[1].properties.value(QStringLiteral("preferred_trigger")).toString(),
            QStringLiteral("CTRL+SHIFT+space"));
  for (const auto& shortcut : shortcuts) {
    EXPECT_FALSE(shortcut.properties.value(QStringLiteral("description")).toString().isEmpty());
  }
}

TEST_F(PortalHotkeysTest, TheSessionHasTheSameNameEachTime) {
  offer();
  process_.hold(Action::capture);
  ASSERT_TRUE(isBound(1));
  process_.release(Action::capture);
  process_.hold(Action::capture);
  ASSERT_TRUE(isBound(2));
  const auto calls = portal_->calls(createMethod);
  const auto token = QStringLiteral("session_handle_token");
  EXPECT_EQ(calls[0].options().value(token), calls[1].options().value(token));
}

TEST_F(PortalHotkeysTest, PressesOfOtherSessionsAreNotOurs) {
  offer();
  process_.hold(Action::capture);
  ASSERT_TRUE(isBound(1));
  press("capture", QStringLiteral("/org/freedesktop/portal/desktop/session/1_7/other"));
  press("nonsense");
  press("capture");
  EXPECT_TRUE(waitUntil([this] { return !process_.pressed.empty(); }));
  EXPECT_THAT(process_.pressed, ElementsAre(Action::capture));
}

TEST_F(PortalHotkeysTest, WithoutSuchAPortalItFailsForGood) {
  process_.hold(Action::capture);
  const auto failure = process_.failure(Action::capture);
  EXPECT_EQ(failure.error, HotkeyFailure::notOffered);
  EXPECT_FALSE(failure.isTemporary);
}

TEST_F(PortalHotkeysTest, WhoCancelsIsNotAskedAgain) {
  offer();
  portal_->answer(bindMethod, 1);
  process_.hold(Action::capture);
  process_.hold(Action::quickFind);
  for (const auto action : allHotkeyActions) {
    EXPECT_EQ(process_.failure(action).error, 1);
    EXPECT_FALSE(process_.failure(action).isTemporary);
  }
}

TEST_F(PortalHotkeysTest, WhatThePortalRefusesFails) {
  offer();
  portal_->answer(createMethod, 2);
  process_.hold(Action::capture);
  EXPECT_EQ(process_.failure(Action::capture).error, 2);
}

TEST_F(PortalHotkeysTest, WhatTheUserLeavesOutFailsAndTheOtherIsHeard) {
  offer();
  grant({"quick-find"});
  process_.hold(Action::capture);
  process_.hold(Action::quickFind);
  EXPECT_EQ(process_.failure(Action::capture).error, 2);
  EXPECT_FALSE(process_.failures.contains(Action::quickFind));
  press("capture");
  press("quick-find");
  EXPECT_TRUE(waitUntil([this] { return !process_.pressed.empty(); }));
  EXPECT_THAT(process_.pressed, ElementsAre(Action::quickFind));
}

TEST_F(PortalHotkeysTest, WhatIsReleasedIsGivenBackAndTheOtherKept) {
  offer();
  process_.hold(Action::capture);
  process_.hold(Action::quickFind);
  ASSERT_TRUE(isBound(1) && hears("capture"));
  process_.release(Action::capture);
  ASSERT_TRUE(isBound(2));
  EXPECT_THAT(bound(), ElementsAre(QStringList{QStringLiteral("capture"), QStringLiteral("quick-find")},
                                   QStringList{QStringLiteral("quick-find")}));
  EXPECT_EQ(portal_->calls(QStringLiteral("Close")).size(), 1U) << "the former session is over";
}

TEST_F(PortalHotkeysTest, AtTheEndTheSessionIsClosed) {
  offer();
  process_.hold(Action::capture);
  ASSERT_TRUE(isBound(1) && hears("capture"));
  process_.end();
  EXPECT_TRUE(waitUntil([this] { return portal_->calls(QStringLiteral("Close")).size() == 1; }));
}

TEST_F(PortalHotkeysTest, ASessionThatTheUserEndsIsNotBegunAgain) {
  offer();
  process_.hold(Action::capture);
  ASSERT_TRUE(isBound(1) && hears("capture"));
  portal_->closeSession(session_);
  const auto failure = process_.failure(Action::capture);
  EXPECT_EQ(failure.error, 2);
  EXPECT_FALSE(failure.isTemporary);
}

TEST_F(PortalHotkeysTest, APortalThatComesBackCanBeAskedAgain) {
  offer();
  process_.hold(Action::capture);
  ASSERT_TRUE(isBound(1) && hears("capture"));
  portal_->vanish();
  EXPECT_TRUE(process_.failure(Action::capture).isTemporary);
  portal_ = std::make_unique<PortalDouble>();
  offer();
  process_.failures.clear();
  process_.hold(Action::capture);
  ASSERT_TRUE(isBound(1));
  EXPECT_TRUE(hears("capture"));
}

TEST_F(PortalHotkeysTest, OnlyOneProcessHoldsACombinationUntilItLetsGo) {
  offer();
  process_.hold(Action::capture);
  ASSERT_TRUE(isBound(1));
  Process other;
  other.hold(Action::capture);
  EXPECT_TRUE(other.failure(Action::capture).isTemporary);
  other.hold(Action::quickFind);
  ASSERT_TRUE(isBound(2));
  EXPECT_FALSE(other.failures.contains(Action::quickFind));
  process_.end();
  other.failures.clear();
  EXPECT_TRUE(waitUntil([&] {
    other.failures.clear();
    other.hold(Action::capture);
    return other.failures.empty();
  }));
  ASSERT_TRUE(isBound(3));
  EXPECT_THAT(bound().back(), ElementsAre(QStringLiteral("capture"), QStringLiteral("quick-find")));
}

TEST(PortalHotkeysOfSession, WithoutABusThereAreNone) {
  Process process;
  process.hold(Action::capture);
  EXPECT_EQ(process.failure(Action::capture).error, HotkeyFailure::notOffered);
}

}  // namespace
}  // namespace Nimbrel
