// The settings of the hotkeys in the processes that a user has.

#include "Support/FakeHotkeyService.h"
#include "Support/FakeScreenCaptureTool.h"
#include "Support/LogRecorder.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <memory>

namespace Nimbrel {
namespace {

using Action = Hotkeys::Action;
using ::testing::ElementsAre;
using Testing::FakeHotkeyService;
using ::testing::IsEmpty;
using Testing::waitUntil;

/// A process of the user with the keyboard that all of them share.
struct FakeProcess {
  FakeHotkeyService* hotkeys = nullptr;
  Testing::FakeScreenCaptureTool* tool = nullptr;
  std::unique_ptr<Store> store;
};

class HotkeySettingTest : public ::testing::Test {
 protected:
  FakeProcess open(ProcessRole role) {
    FakeProcess process;
    Services services;
    auto hotkeys = std::make_unique<FakeHotkeyService>(keyboard_);
    auto tool = std::make_unique<Testing::FakeScreenCaptureTool>();
    process.hotkeys = hotkeys.get();
    process.tool = tool.get();
    services.hotkeys = std::move(hotkeys);
    services.screenCaptureTool = std::move(tool);
    auto opened = Store::open({.role = role,
                               .folders = home_.folders(),
                               .clock = [this] { return home_.now; },
                               .services = std::move(services),
                               .defaults = AppIdentity::openDefaults(home_.folders().preferences),
                               .isCompanionRunning = [this] { return isCompanionRunning_; }});
    EXPECT_TRUE(opened);
    process.store = std::move(opened).value();
    return process;
  }
  /// As another process does.
  void store(const QString& key, bool isOn) { home_.suiteOfOtherProcess()->set(key, isOn); }

  Testing::LogRecorder log_;
  Testing::FakeKeyboard keyboard_;
  bool isCompanionRunning_ = false;
  Testing::StoreHome home_;
};

const auto captureKey = QStringLiteral("captureHotkey");
const auto quickFindKey = QStringLiteral("quickFindHotkey");

TEST_F(HotkeySettingTest, AWorkerHoldsWhatIsSwitchedOnFromItsStart) {
  store(captureKey, true);
  const auto companion = open(ProcessRole::menuBarCompanion);
  EXPECT_TRUE(companion.hotkeys->isHeld(Action::capture));
  EXPECT_FALSE(companion.hotkeys->isHeld(Action::quickFind));
}

TEST_F(HotkeySettingTest, NoOtherRoleHoldsAnythingAtItsStart) {
  store(captureKey, true);
  store(quickFindKey, true);
  for (const auto role : {ProcessRole::mainApplication, ProcessRole::headless, ProcessRole::tool}) {
    EXPECT_THAT(open(role).hotkeys->asked, IsEmpty()) << static_cast<int>(role);
  }
  EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(HotkeySettingTest, AWorkerFollowsTheSettingInItsPoll) {
  const auto companion = open(ProcessRole::menuBarCompanion);
  store(quickFindKey, true);
  companion.store->poll();
  EXPECT_TRUE(companion.hotkeys->isHeld(Action::quickFind));
  store(quickFindKey, false);
  companion.store->poll();
  EXPECT_FALSE(companion.hotkeys->isHeld(Action::quickFind));
  companion.store->poll();
  EXPECT_THAT(companion.hotkeys->released, ElementsAre(Action::quickFind));
}

TEST_F(HotkeySettingTest, TheWindowIgnoresTheSettingInItsPoll) {
  const auto window = open(ProcessRole::mainApplication);
  store(captureKey, true);
  window.store->poll();
  EXPECT_THAT(window.hotkeys->asked, IsEmpty());
}

TEST_F(HotkeySettingTest, SwitchedOnInTheWindowTheCompanionHoldsItWhereOneRuns) {
  isCompanionRunning_ = true;
  const auto companion = open(ProcessRole::menuBarCompanion);
  const auto window = open(ProcessRole::mainApplication);
  window.store->settings().captureHotkey.set(true);
  window.store->applyHotkeySetting();
  EXPECT_THAT(window.hotkeys->asked, IsEmpty());
  companion.store->poll();
  EXPECT_TRUE(companion.hotkeys->isHeld(Action::capture));
}

TEST_F(HotkeySettingTest, WithoutACompanionTheWindowHoldsItUntilItIsSwitchedOffThere) {
  const auto window = open(ProcessRole::mainApplication);
  window.store->settings().captureHotkey.set(true);
  window.store->applyHotkeySetting();
  window.store->applyHotkeySetting();
  EXPECT_THAT(window.hotkeys->asked, ElementsAre(Action::capture));
  window.store->settings().captureHotkey.set(false);
  window.store->applyHotkeySetting();
  window.store->applyHotkeySetting();
  EXPECT_THAT(window.hotkeys->released, ElementsAre(Action::capture));
}

TEST_F(HotkeySettingTest, ACompanionThatComesLaterTakesOverWhenTheWindowEnds) {
  auto window = open(ProcessRole::mainApplication);
  window.store->settings().captureHotkey.set(true);
  window.store->applyHotkeySetting();
  const auto companion = open(ProcessRole::menuBarCompanion);
  companion.store->poll();
  companion.store->poll();
  EXPECT_FALSE(companion.hotkeys->isHeld(Action::capture));
  window.store.reset();
  companion.store->poll();
  EXPECT_TRUE(companion.hotkeys->isHeld(Action::capture));
  EXPECT_THAT(log_.lines(), ElementsAre("Nimbrel: could not register ⌃⇧5 (error 10)"));
  companion.hotkeys->press(Action::capture);
  EXPECT_TRUE(waitUntil([&] { return !companion.tool->launched.empty(); }));
}

TEST_F(HotkeySettingTest, AFailureLeavesTheSettingAndTheStatusAsTheyWere) {
  store(captureKey, true);
  const auto holder = open(ProcessRole::menuBarCompanion);
  const auto status = holder.store->status();
  const auto companion = open(ProcessRole::menuBarCompanion);
  EXPECT_TRUE(companion.store->settings().captureHotkey());
  EXPECT_EQ(companion.store->status(), status);
}

TEST_F(HotkeySettingTest, APressTakesASelectionAndHidesNothing) {
  store(captureKey, true);
  const auto companion = open(ProcessRole::menuBarCompanion);
  QSignalSpy hidings(companion.store.get(), &Store::hidingRequested);
  companion.hotkeys->press(Action::capture);
  ASSERT_TRUE(waitUntil([&] { return !companion.tool->launched.empty(); }));
  EXPECT_THAT(companion.tool->launched.front(), ::testing::AllOf(::testing::Contains("-i"), ::testing::Contains("-s")));
  EXPECT_EQ(hidings.count(), 0);
}

TEST_F(HotkeySettingTest, APressDuringACaptureIsDropped) {
  store(captureKey, true);
  const auto companion = open(ProcessRole::menuBarCompanion);
  companion.hotkeys->press(Action::capture);
  ASSERT_TRUE(waitUntil([&] { return !companion.tool->launched.empty(); }));
  companion.hotkeys->press(Action::capture);
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(companion.tool->launched.size(), 1U);
}

TEST_F(HotkeySettingTest, APressAsksForQuickFindAtOnce) {
  store(quickFindKey, true);
  const auto companion = open(ProcessRole::menuBarCompanion);
  QSignalSpy requests(companion.store.get(), &Store::quickFindRequested);
  companion.hotkeys->press(Action::quickFind);
  EXPECT_TRUE(waitUntil([&] { return requests.count() == 1; }));
  EXPECT_THAT(companion.tool->launched, IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
