// Keys pressed by another client of a real X server.

#include "Linux/X11/X11Hotkeys.h"

#include "Support/DesktopSession.h"
#include "Support/EnvironmentVariable.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>

namespace Nimbrel {
namespace {

using Action = HotkeyAction;
using Testing::waitUntil;

constexpr int badAccess = 10;
constexpr int badValue = 2;
constexpr std::uint16_t combination = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;

/// The keys of the row of digits by their numbers, which are the same for all layouts.
constexpr int keyOfFive = 14;
constexpr int keyOfThree = 12;

/// Another program, run to its end.
void run(const QString& name, const QStringList& words) {
  QProcess program;
  program.start(name, words);
  ASSERT_TRUE(waitUntil([&] { return program.state() == QProcess::NotRunning; })) << name.toStdString();
  EXPECT_EQ(program.exitCode(), 0) << name.toStdString() << program.readAllStandardError().toStdString();
}
void run(const QString& words) {
  auto list = words.split(QLatin1Char(' '));
  const auto name = list.takeFirst();
  run(name, list);
}
/// Changes what one key gives.
void changeKey(const QString& line) { run(QStringLiteral("xmodmap"), {QStringLiteral("-e"), line}); }

void press(const QString& keys) { run(QStringLiteral("xdotool key ") + keys); }
void press(int key) { press(QStringLiteral("ctrl+shift+%1").arg(key)); }

/// One program that wants combinations, with a connection of its own to the server.
class Client {
 public:
  Client() {
    hotkeys_->observe(
        {.pressed = [this](Action action) { ++presses_[action]; },
         .failed = [this](Action action, const HotkeyFailure& failure) { failures_.emplace(action, failure); }});
  }

  /// Why it could not be had; absent when it is held.
  std::optional<HotkeyFailure> hold(Action action) {
    failures_.erase(action);
    hotkeys_->hold(action);
    return failure(action);
  }
  void release(Action action) { hotkeys_->release(action); }
  [[nodiscard]] std::optional<HotkeyFailure> failure(Action action) const {
    const auto found = failures_.find(action);
    return found == failures_.end() ? std::nullopt : std::optional(found->second);
  }
  [[nodiscard]] int presses(Action action = Action::capture) const {
    const auto found = presses_.find(action);
    return found == presses_.end() ? 0 : found->second;
  }
  [[nodiscard]] bool comesToHear(int count, Action action = Action::capture) const {
    return waitUntil([&] { return presses(action) == count; });
  }
  [[nodiscard]] XcbConnection& connection() const { return *connection_; }

 private:
  std::shared_ptr<XcbConnection> connection_ = std::make_shared<XcbConnection>();
  std::unique_ptr<HotkeyService> hotkeys_ = makeX11Hotkeys(connection_);
  std::map<Action, int> presses_;
  std::map<Action, HotkeyFailure> failures_;
};

class X11HotkeysTest : public ::testing::Test {
 protected:
  X11HotkeysTest() { run(QStringLiteral("setxkbmap us")); }

  /// What is held on the keyboard at the moment.
  [[nodiscard]] std::uint16_t modifiers() const {
    auto* xcb = client_.connection().get();
    const XcbOwned<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, client_.connection().root()), nullptr));
    client_.connection().flush();
    return reply ? reply->mask : 0;
  }
  /// Presses until it is heard, since the new keyboard is looked at a little later.
  [[nodiscard]] bool comesToHearKey(int key) {
    const auto before = client_.presses();
    return waitUntil([&] {
      press(key);
      return client_.presses() > before;
    });
  }

  Testing::DesktopSession session_;
  Client client_;
};

TEST_F(X11HotkeysTest, EachCombinationIsHeardOnceForEachPress) {
  ASSERT_FALSE(client_.hold(Action::capture));
  ASSERT_FALSE(client_.hold(Action::quickFind));
  press(QStringLiteral("ctrl+shift+5"));
  press(QStringLiteral("ctrl+shift+space"));
  press(QStringLiteral("ctrl+shift+5"));
  EXPECT_TRUE(client_.comesToHear(2));
  EXPECT_TRUE(client_.comesToHear(1, Action::quickFind));
}

TEST_F(X11HotkeysTest, OtherCombinationsAreNot) {
  ASSERT_FALSE(client_.hold(Action::capture));
  for (const char* keys : {"5", "ctrl+5", "shift+5", "ctrl+shift+alt+5", "ctrl+shift+super+5", "ctrl+shift+4",
                           "ctrl+shift+space", "ctrl+shift+KP_5"}) {
    press(QLatin1String(keys));
  }
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1)) << client_.presses();
}

TEST_F(X11HotkeysTest, WorksWhateverLocksAreOn) {
  ASSERT_FALSE(client_.hold(Action::capture));
  ASSERT_FALSE(client_.hold(Action::quickFind));
  int count = 0;
  const auto worksUnder = [&](std::uint16_t locks) {
    EXPECT_TRUE(waitUntil([&] { return (modifiers() & (XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2)) == locks; })) << locks;
    press(QStringLiteral("ctrl+shift+5"));
    press(QStringLiteral("ctrl+shift+space"));
    ++count;
    EXPECT_TRUE(client_.comesToHear(count)) << locks;
    EXPECT_TRUE(client_.comesToHear(count, Action::quickFind)) << locks;
  };
  worksUnder(0);
  press(QStringLiteral("Caps_Lock"));
  worksUnder(XCB_MOD_MASK_LOCK);
  press(QStringLiteral("Num_Lock"));
  worksUnder(XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2);
  press(QStringLiteral("Caps_Lock"));
  worksUnder(XCB_MOD_MASK_2);
  press(QStringLiteral("Num_Lock"));
  worksUnder(0);
}

TEST_F(X11HotkeysTest, AKeyHeldDownIsOnePress) {
  run(QStringLiteral("xset r rate 100 50"));
  ASSERT_FALSE(client_.hold(Action::capture));
  int events = 0;
  QObject context;
  QObject::connect(&client_.connection(), &XcbConnection::eventCame, &context, [&](const xcb_generic_event_t& event) {
    if (event.response_type == XCB_KEY_PRESS) ++events;
  });
  run(QStringLiteral("xdotool keydown ctrl keydown shift keydown 5"));
  EXPECT_TRUE(waitUntil([&] { return events > 5; })) << "the server repeats the key";
  run(QStringLiteral("xdotool keyup 5 keyup shift keyup ctrl"));
  EXPECT_EQ(client_.presses(), 1);
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(2));
}

TEST_F(X11HotkeysTest, WorksWhereTheDigitTakesShift) {
  run(QStringLiteral("setxkbmap fr"));
  ASSERT_FALSE(client_.hold(Action::capture));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1));
}

TEST_F(X11HotkeysTest, FollowsTheLayoutWhileItRuns) {
  ASSERT_FALSE(client_.hold(Action::capture));
  // The digits of this one stand in an order of their own.
  run(QStringLiteral("setxkbmap us -variant dvp"));
  ASSERT_TRUE(comesToHearKey(keyOfThree));
  auto count = client_.presses();
  press(keyOfFive);
  press(keyOfThree);
  EXPECT_TRUE(client_.comesToHear(++count)) << "the former key is let go";
  run(QStringLiteral("setxkbmap fr"));
  ASSERT_TRUE(comesToHearKey(keyOfFive));
  count = client_.presses();
  press(keyOfThree);
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(++count));
  EXPECT_FALSE(client_.failure(Action::capture));
}

TEST_F(X11HotkeysTest, WorksInEachOfSeveralLayouts) {
  run(QStringLiteral("setxkbmap us,ru -option grp:caps_toggle"));
  ASSERT_FALSE(client_.hold(Action::capture));
  ASSERT_FALSE(client_.hold(Action::quickFind));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1));
  press(QStringLiteral("ISO_Next_Group"));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(2));
  press(QStringLiteral("ctrl+shift+65"));
  EXPECT_TRUE(client_.comesToHear(1, Action::quickFind));
}

TEST_F(X11HotkeysTest, WhoTypesForSomebodyDoesNotDisturb) {
  ASSERT_FALSE(client_.hold(Action::capture));
  // Letters that no key gives are put on one for a moment.
  run(QStringLiteral("xdotool type äöü€ẞ"));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1));
  EXPECT_FALSE(client_.failure(Action::capture));
}

TEST_F(X11HotkeysTest, AKeyThatIsNoMoreIsToldAndCanBeHadAgainWhenItIsBack) {
  ASSERT_FALSE(client_.hold(Action::capture));
  changeKey(QStringLiteral("keycode 14 = x X"));
  ASSERT_TRUE(waitUntil([&] { return client_.failure(Action::capture).has_value(); }));
  EXPECT_EQ(client_.failure(Action::capture)->error, badValue);
  EXPECT_TRUE(client_.failure(Action::capture)->isTemporary);
  EXPECT_TRUE(client_.hold(Action::capture));
  changeKey(QStringLiteral("keycode 14 = 5 percent"));
  ASSERT_TRUE(waitUntil([&] { return !client_.hold(Action::capture); }));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1));
}

TEST_F(X11HotkeysTest, WhatAnotherProgramHoldsCannotBeHad) {
  Client other;
  ASSERT_FALSE(other.hold(Action::capture));
  const auto failure = client_.hold(Action::capture);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->error, badAccess);
  EXPECT_TRUE(failure->isTemporary);
  EXPECT_FALSE(client_.hold(Action::quickFind)) << "the other combination is free";
  press(keyOfFive);
  EXPECT_TRUE(other.comesToHear(1));
  EXPECT_EQ(client_.presses(), 0);
}

TEST_F(X11HotkeysTest, WhatAnotherProgramLetsGoCanBeHad) {
  {
    Client other;
    ASSERT_FALSE(other.hold(Action::capture));
    ASSERT_TRUE(client_.hold(Action::capture));
    other.release(Action::capture);
    EXPECT_TRUE(waitUntil([&] { return !client_.hold(Action::capture); }));
    client_.release(Action::capture);
    ASSERT_TRUE(waitUntil([&] { return !other.hold(Action::capture); }));
  }
  EXPECT_TRUE(waitUntil([&] { return !client_.hold(Action::capture); })) << "as when the other one ends";
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1));
}

TEST_F(X11HotkeysTest, WhatCannotBeHadUnderEveryLockIsLeftWhole) {
  Client other;
  ASSERT_TRUE(other.connection().isUp());
  auto* xcb = other.connection().get();
  const auto grab = xcb_grab_key_checked(xcb, 0, other.connection().root(), combination | XCB_MOD_MASK_LOCK, keyOfFive,
                                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XcbOwned<xcb_generic_error_t> refusal(xcb_request_check(xcb, grab));
  ASSERT_FALSE(refusal);
  const auto failure = client_.hold(Action::capture);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->error, badAccess);
  Client third;
  ASSERT_TRUE(third.connection().isUp());
  const auto plain = xcb_grab_key_checked(third.connection().get(), 0, third.connection().root(), combination,
                                          keyOfFive, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const XcbOwned<xcb_generic_error_t> plainRefusal(xcb_request_check(third.connection().get(), plain));
  EXPECT_FALSE(plainRefusal) << "nothing of it is kept from others";
}

TEST_F(X11HotkeysTest, WhatIsReleasedIsNotHeard) {
  ASSERT_FALSE(client_.hold(Action::capture));
  ASSERT_FALSE(client_.hold(Action::quickFind));
  client_.release(Action::capture);
  client_.release(Action::capture);
  press(keyOfFive);
  press(QStringLiteral("ctrl+shift+space"));
  EXPECT_TRUE(client_.comesToHear(1, Action::quickFind));
  EXPECT_EQ(client_.presses(), 0);
}

TEST_F(X11HotkeysTest, TheEndOfTheServerEndsThePressesAndNothingElse) {
  ASSERT_FALSE(client_.hold(Action::capture));
  session_.kill();
  const auto failure = client_.hold(Action::quickFind);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->error, HotkeyFailure::notOffered);
  EXPECT_FALSE(failure->isTemporary);
  client_.release(Action::capture);
}

TEST(X11HotkeysOfSession, WithoutAServerThereAreNone) {
  const Testing::EnvironmentVariable display("DISPLAY", ":4711");
  Client client;
  const auto failure = client.hold(Action::capture);
  ASSERT_TRUE(failure);
  EXPECT_EQ(failure->error, HotkeyFailure::notOffered);
}

}  // namespace
}  // namespace Nimbrel
