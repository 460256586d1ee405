// Keys pressed by another client of a real X server, on keyboards of all kinds.

#include "X11HotkeysFixture.h"

namespace Nimbrel {
namespace {

using Testing::waitUntil;

constexpr int badValue = 2;

class X11HotkeysOnKeyboardsTest : public Testing::X11HotkeysFixture {
 protected:
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
  /// Changes what keys give, all in one moment.
  static void changeKeys(const QStringList& lines) {
    QStringList words;
    for (const auto& line : lines) words << QStringLiteral("-e") << line;
    run(QStringLiteral("xmodmap"), words);
  }
};

TEST_F(X11HotkeysOnKeyboardsTest, WorksWhateverLocksAreOn) {
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

TEST_F(X11HotkeysOnKeyboardsTest, AKeyHeldDownIsOnePress) {
  run(QStringLiteral("xset r rate 100 50"));
  ASSERT_FALSE(client_.hold(Action::capture));
  run(QStringLiteral("xdotool keydown ctrl keydown shift keydown 5"));
  EXPECT_TRUE(waitUntil([&] { return client_.timesTold(keyOfFive) > 5; })) << "the server repeats the key";
  run(QStringLiteral("xdotool keyup 5 keyup shift keyup ctrl"));
  EXPECT_EQ(client_.presses(), 1);
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(2));
}

TEST_F(X11HotkeysOnKeyboardsTest, WorksWhereTheDigitTakesShift) {
  run(QStringLiteral("setxkbmap fr"));
  ASSERT_FALSE(client_.hold(Action::capture));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1));
}

TEST_F(X11HotkeysOnKeyboardsTest, FollowsTheLayoutWhileItRuns) {
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

TEST_F(X11HotkeysOnKeyboardsTest, CombinationsThatChangePlacesAreBothHeard) {
  ASSERT_FALSE(client_.hold(Action::capture));
  ASSERT_FALSE(client_.hold(Action::quickFind));
  changeKeys({QStringLiteral("keycode 14 = space space"), QStringLiteral("keycode 65 = 5 percent")});
  ASSERT_TRUE(comesToHearKey(spaceBar));
  const auto captures = client_.presses();
  const auto finds = client_.presses(Action::quickFind);
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(finds + 1, Action::quickFind));
  press(spaceBar);
  EXPECT_TRUE(client_.comesToHear(captures + 1));
  EXPECT_EQ(client_.presses(Action::quickFind), finds + 1);
  EXPECT_FALSE(client_.failure(Action::capture));
  EXPECT_FALSE(client_.failure(Action::quickFind));
}

TEST_F(X11HotkeysOnKeyboardsTest, WorksInEachOfSeveralLayouts) {
  run(QStringLiteral("setxkbmap us,ru -option grp:caps_toggle"));
  ASSERT_FALSE(client_.hold(Action::capture));
  ASSERT_FALSE(client_.hold(Action::quickFind));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1));
  press(QStringLiteral("ISO_Next_Group"));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(2));
  press(spaceBar);
  EXPECT_TRUE(client_.comesToHear(1, Action::quickFind));
}

TEST_F(X11HotkeysOnKeyboardsTest, WhoTypesForSomebodyDoesNotDisturb) {
  ASSERT_FALSE(client_.hold(Action::capture));
  // Letters that no key gives are put on one for a moment.
  run(QStringLiteral("xdotool type äöü€ẞ"));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1));
  EXPECT_FALSE(client_.failure(Action::capture));
}

TEST_F(X11HotkeysOnKeyboardsTest, AKeyThatIsNoMoreIsToldAndCanBeHadAgainWhenItIsBack) {
  ASSERT_FALSE(client_.hold(Action::capture));
  changeKeys({QStringLiteral("keycode 14 = x X")});
  ASSERT_TRUE(waitUntil([&] { return client_.failure(Action::capture).has_value(); }));
  EXPECT_EQ(client_.failure(Action::capture)->error, badValue);
  EXPECT_TRUE(client_.failure(Action::capture)->isTemporary);
  EXPECT_TRUE(client_.hold(Action::capture));
  changeKeys({QStringLiteral("keycode 14 = 5 percent")});
  ASSERT_TRUE(waitUntil([&] { return !client_.hold(Action::capture); }));
  press(keyOfFive);
  EXPECT_TRUE(client_.comesToHear(1));
}

}  // namespace
}  // namespace Nimbrel
