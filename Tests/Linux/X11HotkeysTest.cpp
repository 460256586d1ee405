// Keys pressed by another client of a real X server, and other programs that want them.

#include "X11HotkeysFixture.h"

#include "Support/EnvironmentVariable.h"

namespace Nimbrel {
namespace {

using Action = HotkeyAction;
using Client = Testing::HotkeyClient;
using Testing::waitUntil;

constexpr int badAccess = 10;

class X11HotkeysTest : public Testing::X11HotkeysFixture {};

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

TEST_F(X11HotkeysTest, WhileOneIsHeldDownAKeyCountsOnlyWithTheModifiersOfItsOwn) {
  run(QStringLiteral("xset r off"));
  ASSERT_FALSE(client_.hold(Action::capture));
  ASSERT_FALSE(client_.hold(Action::quickFind));
  // From here on the server tells of all keys.
  run(QStringLiteral("xdotool keydown ctrl keydown shift keydown space"));
  ASSERT_TRUE(client_.comesToHear(1, Action::quickFind));
  run(QStringLiteral("xdotool keydown alt key 5 keyup alt keyup shift key 5 keyup ctrl key 5 keydown shift key 5"));
  ASSERT_TRUE(waitUntil([&] { return client_.timesTold(keyOfFive) == 4; })) << client_.timesTold(keyOfFive);
  EXPECT_EQ(client_.presses(), 0);
  run(QStringLiteral("xdotool keydown ctrl key 5"));
  EXPECT_TRUE(client_.comesToHear(1));
  run(QStringLiteral("xdotool keyup space keyup shift keyup ctrl"));
  EXPECT_EQ(client_.presses(Action::quickFind), 1);
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
