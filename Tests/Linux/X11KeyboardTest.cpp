#include "Linux/X11/X11Keyboard.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

constexpr xcb_keysym_t nothing = 0;
constexpr xcb_keysym_t five = '5';
constexpr xcb_keysym_t keypadFive = 0xffb5;
constexpr xcb_keysym_t numLock = 0xff7f;
constexpr xcb_keysym_t scrollLock = 0xff14;
constexpr xcb_keysym_t shiftKey = 0xffe1;

/// A keyboard whose first key has the number 10, with four symbols a key: two layouts, each without and with Shift.
X11Keyboard keyboardOf(std::vector<xcb_keysym_t> symbols) {
  return {.firstKey = 10,
          .symbolsPerKey = 4,
          .symbols = std::move(symbols),
          .keysPerModifier = 1,
          .modifierKeys = {0, 0, 0, 0, 0, 0, 0, 0}};
}

TEST(X11Keyboard, FindsTheDigitThatAKeyGivesByItself) {
  const auto keyboard = keyboardOf({'4', '$', '4', '\'', five, '%', '(', five, 'a', 'A', five, nothing});
  EXPECT_THAT(keyboard.keysOf(HotkeyAction::capture), ElementsAre(11)) << "and not what gives it in other ways";
}

TEST(X11Keyboard, FindsTheDigitThatTakesShift) {
  const auto keyboard = keyboardOf({'\'', '4', nothing, nothing, '(', five, nothing, nothing});
  EXPECT_THAT(keyboard.keysOf(HotkeyAction::capture), ElementsAre(11));
}

TEST(X11Keyboard, FindsTheDigitOfTheSecondLayout) {
  const auto keyboard = keyboardOf({'(', '[', five, '%'});
  EXPECT_THAT(keyboard.keysOf(HotkeyAction::capture), ElementsAre(10));
}

TEST(X11Keyboard, FindsTheDigitsOfOtherScriptsWhereThereAreNoOthers) {
  constexpr xcb_keysym_t arabicFour = 0x1000664;
  constexpr xcb_keysym_t arabicFive = 0x1000665;
  constexpr xcb_keysym_t thaiFive = 0x0df5;
  EXPECT_THAT(keyboardOf({arabicFour, nothing, nothing, nothing, arabicFive, nothing, nothing, nothing})
                  .keysOf(HotkeyAction::capture),
              ElementsAre(11));
  EXPECT_THAT(keyboardOf({'8', thaiFive, nothing, nothing}).keysOf(HotkeyAction::capture), ElementsAre(10));
  EXPECT_THAT(
      keyboardOf({arabicFive, nothing, nothing, nothing, five, '%', nothing, nothing}).keysOf(HotkeyAction::capture),
      ElementsAre(11));
}

TEST(X11Keyboard, TheKeypadIsNoRowOfDigits) {
  EXPECT_THAT(keyboardOf({0xff9d, keypadFive, nothing, nothing}).keysOf(HotkeyAction::capture), IsEmpty());
}

TEST(X11Keyboard, FindsTheSpaceBarAndTakesNothingElseForIt) {
  const auto keyboard = keyboardOf({five, '%', nothing, nothing, ' ', ' ', nothing, nothing});
  EXPECT_THAT(keyboard.keysOf(HotkeyAction::quickFind), ElementsAre(11));
  EXPECT_THAT(keyboardOf({0x1000665, nothing, nothing, nothing}).keysOf(HotkeyAction::quickFind), IsEmpty());
}

TEST(X11Keyboard, CapsLockIsALockOfEveryKeyboard) {
  EXPECT_THAT(keyboardOf({five, '%', nothing, nothing}).lockStates(), UnorderedElementsAre(0, XCB_MOD_MASK_LOCK));
}

TEST(X11Keyboard, AllLocksCanBeOnInAnyCombination) {
  auto keyboard = keyboardOf({numLock, nothing, nothing, nothing, scrollLock, nothing, nothing, nothing});
  keyboard.modifierKeys = {0, 0, 0, 0, 10, 0, 11, 0};
  EXPECT_THAT(
      keyboard.lockStates(),
      UnorderedElementsAre(0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, XCB_MOD_MASK_4, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2,
                           XCB_MOD_MASK_LOCK | XCB_MOD_MASK_4, XCB_MOD_MASK_2 | XCB_MOD_MASK_4,
                           XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2 | XCB_MOD_MASK_4));
}

TEST(X11Keyboard, AModifierWithSeveralKeysIsFoundByAnyOfThem) {
  auto keyboard = keyboardOf({shiftKey, nothing, nothing, nothing, numLock, nothing, nothing, nothing});
  keyboard.keysPerModifier = 2;
  keyboard.modifierKeys = {10, 0, 0, 0, 0, 0, 0, 0, 0, 11, 0, 0, 0, 0, 0, 0};
  EXPECT_THAT(keyboard.lockStates(),
              UnorderedElementsAre(0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2, XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2));
}

TEST(X11Keyboard, ALockOnAModifierOfTheCombinationIsNone) {
  auto keyboard = keyboardOf({numLock, nothing, nothing, nothing});
  keyboard.modifierKeys = {10, 0, 0, 0, 0, 0, 0, 0};
  EXPECT_THAT(keyboard.lockStates(), UnorderedElementsAre(0, XCB_MOD_MASK_LOCK));
}

TEST(X11Keyboard, WithoutKeysNothingIsFound) {
  EXPECT_THAT(X11Keyboard().keysOf(HotkeyAction::capture), IsEmpty());
  EXPECT_THAT(X11Keyboard().lockStates(), UnorderedElementsAre(0, XCB_MOD_MASK_LOCK));
}

}  // namespace
}  // namespace Nimbrel
