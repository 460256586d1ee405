#include "Store/Hotkeys.h"

#include "Support/FakeHotkeyService.h"
#include "Support/LogRecorder.h"

#include <gmock/gmock.h>

#include <QCoreApplication>

#include <optional>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Action = Hotkeys::Action;
using Testing::FakeHotkeyService;

class HotkeysTest : public ::testing::Test {
 protected:
  void want(Action action, int& presses) {
    hotkeys_->registerAction(action, [&presses] { ++presses; });
  }
  static void runPending() { QCoreApplication::sendPostedEvents(); }

  Testing::LogRecorder log_;
  FakeHotkeyService service_;
  std::optional<Hotkeys> hotkeys_{std::in_place, service_};
  int captures_ = 0;
  int finds_ = 0;
};

TEST_F(HotkeysTest, APressCallsWhatItWasRegisteredForInATurnOfItsOwn) {
  want(Action::capture, captures_);
  want(Action::quickFind, finds_);
  service_.press(Action::quickFind);
  EXPECT_EQ(finds_, 0);
  runPending();
  EXPECT_EQ(finds_, 1);
  EXPECT_EQ(captures_, 0);
}

TEST_F(HotkeysTest, RegisteringTwiceAsksOnceAndKeepsTheFirstCallback) {
  want(Action::capture, captures_);
  want(Action::capture, finds_);
  EXPECT_THAT(service_.asked, ElementsAre(Action::capture));
  service_.press(Action::capture);
  runPending();
  EXPECT_EQ(captures_, 1);
  EXPECT_EQ(finds_, 0);
}

TEST_F(HotkeysTest, GivingUpTwiceDoesNothingTheSecondTime) {
  want(Action::capture, captures_);
  hotkeys_->unregister(Action::capture);
  hotkeys_->unregister(Action::capture);
  EXPECT_THAT(service_.released, ElementsAre(Action::capture));
  EXPECT_FALSE(hotkeys_->isRegistered(Action::capture));
}

TEST_F(HotkeysTest, APressThatWasUnderWayWhenItWasGivenUpCallsNobody) {
  want(Action::capture, captures_);
  service_.press(Action::capture);
  hotkeys_->unregister(Action::capture);
  runPending();
  EXPECT_EQ(captures_, 0);
}

TEST_F(HotkeysTest, ACallbackMayGiveItsOwnCombinationUp) {
  hotkeys_->registerAction(Action::capture, [this] {
    hotkeys_->unregister(Action::capture);
    ++captures_;
  });
  service_.press(Action::capture);
  runPending();
  EXPECT_EQ(captures_, 1);
}

TEST_F(HotkeysTest, AFailureLeavesALineInTheLogAndTheOtherCombinationAlone) {
  service_.failures[Action::capture] = {.error = 10};
  want(Action::capture, captures_);
  want(Action::quickFind, finds_);
  EXPECT_THAT(log_.lines(), ElementsAre("Nimbrel: could not register ⌃⇧5 (error 10)"));
  EXPECT_FALSE(hotkeys_->isRegistered(Action::capture));
  EXPECT_TRUE(hotkeys_->isRegistered(Action::quickFind));
  service_.press(Action::capture);
  runPending();
  EXPECT_EQ(captures_, 0);
}

TEST_F(HotkeysTest, AFailureIsToldByTheNameOfTheCombinationAndASignedNumber) {
  service_.failures[Action::quickFind] = {};
  want(Action::quickFind, finds_);
  EXPECT_THAT(log_.lines(), ElementsAre("Nimbrel: could not register ⌃⇧Space (error -1)"));
}

TEST_F(HotkeysTest, WhatSomebodyElseHeldIsHadOnceThatOneLetsItGo) {
  service_.failures[Action::capture] = FakeHotkeyService::taken;
  want(Action::capture, captures_);
  hotkeys_->tryAgain();
  EXPECT_FALSE(hotkeys_->isRegistered(Action::capture));
  service_.failures.clear();
  hotkeys_->tryAgain();
  EXPECT_TRUE(hotkeys_->isRegistered(Action::capture));
  service_.press(Action::capture);
  runPending();
  EXPECT_EQ(captures_, 1);
  EXPECT_THAT(log_.lines(), ElementsAre("Nimbrel: could not register ⌃⇧5 (error 10)"));
  hotkeys_->tryAgain();
  EXPECT_EQ(service_.asked.size(), 3U) << "what is held is not asked for again";
}

TEST_F(HotkeysTest, WhatTheUserHasRefusedIsNotAskedForByItself) {
  service_.failures[Action::capture] = {.error = 1, .isTemporary = false};
  want(Action::capture, captures_);
  hotkeys_->tryAgain();
  EXPECT_THAT(service_.asked, ElementsAre(Action::capture));
}

TEST_F(HotkeysTest, WhatWasGivenUpMeanwhileIsNotTriedAgain) {
  service_.failures[Action::capture] = FakeHotkeyService::taken;
  want(Action::capture, captures_);
  hotkeys_->unregister(Action::capture);
  hotkeys_->tryAgain();
  EXPECT_THAT(service_.asked, ElementsAre(Action::capture));
  EXPECT_THAT(service_.released, IsEmpty());
}

TEST_F(HotkeysTest, AskedForAgainAFailureIsTriedAndToldAgain) {
  service_.failures[Action::capture] = FakeHotkeyService::taken;
  want(Action::capture, captures_);
  hotkeys_->tryAgain();
  want(Action::capture, captures_);
  const std::string line = "Nimbrel: could not register ⌃⇧5 (error 10)";
  EXPECT_THAT(log_.lines(), ElementsAre(line, line)) << "once for each time that it was asked for from outside";
  EXPECT_EQ(service_.asked.size(), 3U);
}

TEST_F(HotkeysTest, SwitchedOnAnewAFailureIsToldAnew) {
  service_.failures[Action::capture] = FakeHotkeyService::taken;
  want(Action::capture, captures_);
  hotkeys_->unregister(Action::capture);
  want(Action::capture, captures_);
  EXPECT_EQ(log_.lines().size(), 2U);
}

TEST_F(HotkeysTest, AnAnswerThatComesLateIsAFailureToo) {
  want(Action::capture, captures_);
  EXPECT_TRUE(hotkeys_->isRegistered(Action::capture));
  service_.fail(Action::capture, {.error = 2});
  EXPECT_FALSE(hotkeys_->isRegistered(Action::capture));
  EXPECT_THAT(log_.lines(), ElementsAre("Nimbrel: could not register ⌃⇧5 (error 2)"));
}

TEST_F(HotkeysTest, AtItsEndEverythingIsLetGo) {
  want(Action::capture, captures_);
  service_.press(Action::capture);
  hotkeys_.reset();
  EXPECT_THAT(service_.released, ElementsAre(Action::capture));
  EXPECT_FALSE(service_.isObserved());
  runPending();
  EXPECT_EQ(captures_, 0);
}

}  // namespace
}  // namespace Nimbrel
