#include "App/CompanionFixture.h"

#include "App/MenuBarCompanion.h"
#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Shared/Theme.h"
#include "Views/Sheets/AuthenticationSheet.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <optional>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::waitUntil;

using CompanionProcessTest = Testing::CompanionFixture;

TEST_F(CompanionProcessTest, StartsWithAnIconAndNoWindow) {
  EXPECT_TRUE(tray_.isVisible);
  EXPECT_EQ(tray_.title, QStringLiteral("Nimbrel"));
  EXPECT_FALSE(tray_.look.isNull());
  EXPECT_TRUE(std::ranges::none_of(QApplication::topLevelWidgets(), &QWidget::isVisible));
}

TEST_F(CompanionProcessTest, TheIconGoesWithTheSettingAndTheProcessStays) {
  store_->setShowMenuBar(false);
  EXPECT_FALSE(tray_.isVisible);
  store_->setShowMenuBar(true);
  EXPECT_TRUE(tray_.isVisible);
}

TEST_F(CompanionProcessTest, TheIconFollowsTheColoursOfTheDesktop) {
  const auto before = tray_.looks;
  Theme::shared().setAppearance({.scheme = Appearance::Scheme::Dark, .accent = {}, .hasHighContrast = false});
  EXPECT_GT(tray_.looks, before);
  Theme::shared().setAppearance({});
}

TEST_F(CompanionProcessTest, TheIconOpensAndClosesThePanel) {
  openPanel();
  tray_.activate({});
  EXPECT_FALSE(panel().isVisible());
}

TEST_F(CompanionProcessTest, ACaptureFromThePanelClosesItForGood) {
  openPanel();
  clickPart("panel.area");
  EXPECT_FALSE(panel().isVisible());
  ASSERT_TRUE(waitUntil([this] { return !tool_->launched.empty(); }));
  Testing::writePicture(tool_->path(), 40, 30, 1);
  tool_->end(0);
  EXPECT_FALSE(panel().isVisible());
  EXPECT_TRUE(store_->lastCapturedShot());
}

TEST_F(CompanionProcessTest, ThePanelStopsARecording) {
  store_->capture(CaptureMode::recordScreen, Store::Panel::Keep);
  ASSERT_TRUE(waitUntil([this] { return store_->recording(); }));
  openPanel();
  clickPart("panel.stopRecording");
  EXPECT_EQ(tool_->interrupts(), 1);
}

TEST_F(CompanionProcessTest, TheLastCaptureIsUndoneAndForgottenByAllProcesses) {
  store_->capture(CaptureMode::screen, Store::Panel::Keep);
  ASSERT_TRUE(waitUntil([this] { return !tool_->launched.empty(); }));
  Testing::writePicture(tool_->path(), 40, 30, 1);
  const auto path = tool_->path();
  tool_->end(0);
  ASSERT_TRUE(home_.suiteOfOtherProcess()->value(QStringLiteral("lastCapturedID")).isDouble());
  openPanel();
  clickPart("panel.undo");
  EXPECT_TRUE(home_.suiteOfOtherProcess()->value(QStringLiteral("lastCapturedID")).isUndefined());
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(path)));
}

TEST_F(CompanionProcessTest, TheApplicationIsOpenedFromThePanel) {
  openPanel();
  clickPart("panel.openMainApp");
  EXPECT_THAT(opened_, ElementsAre(""));
  EXPECT_FALSE(panel().isVisible());
}

TEST_F(CompanionProcessTest, TheOwnerIsAskedOverThePanelWhichStaysOpen) {
  addSecret();
  openPanel();
  store_->withAccess({Testing::shotNamed(*store_, "secret.png")}, [] {});
  ASSERT_NE(owner_->prompt, nullptr);
  owner_->prompt->ask("Password:", CredentialPrompt::Echo::Off, [](const std::optional<std::string>&) {});
  auto* sheet = panel().findChild<AuthenticationSheet*>();
  ASSERT_NE(sheet, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(sheet));
  Testing::runEventLoopFor(std::chrono::milliseconds(400));
  EXPECT_TRUE(panel().isVisible());
  owner_->prompt->end();
}

TEST_F(CompanionProcessTest, LeavingLocksWhatWasUnlocked) {
  addSecret();
  openPanel();
  store_->withAccess({Testing::shotNamed(*store_, "secret.png")}, [] {});
  owner_->decide(true);
  ASSERT_FALSE(store_->unlockedSensitiveIDs().empty());
  Q_EMIT qApp->focusWindowChanged(nullptr);
  EXPECT_TRUE(waitUntil([this] { return store_->unlockedSensitiveIDs().empty() && !panel().isVisible(); }));
}

TEST_F(CompanionProcessTest, WhoStartsItAgainSeesThePanel) {
  process_->answer({.activationToken = "token"});
  EXPECT_TRUE(panel().isVisible());
  ASSERT_FALSE(activation_->brought.empty());
  EXPECT_EQ(activation_->brought.back().token, "token");
}

TEST_F(CompanionProcessTest, AnActionOfTheLauncherIsDoneWithoutThePanel) {
  process_->answer({.kind = StartRequest::Kind::Action, .action = "screen"});
  EXPECT_FALSE(panel().isVisible());
  ASSERT_TRUE(waitUntil([this] { return tool_->launched.size() == 1; }));
  process_->answer({.kind = StartRequest::Kind::Action, .action = "explode"});
  EXPECT_TRUE(panel().isVisible()) << "one that is unknown asks for nothing in particular";
}

TEST_F(CompanionProcessTest, FilesThatAreOpenedWithItEnterTheCatalogue) {
  process_->answer({.kind = StartRequest::Kind::Open, .files = {home_.addFile(home_.path("a.png"))}});
  EXPECT_THAT(Testing::namesOf(store_->shots()), ElementsAre("a.png"));
}

TEST_F(CompanionProcessTest, TheTrayIsWatchedForItsAbsence) { EXPECT_TRUE(tray_.isObserved()); }

TEST_F(CompanionProcessTest, ACompanionThatNobodyAskedToSeeShowsNothingWhenItIsStartedAgain) {
  process_->answer({.kind = StartRequest::Kind::Action, .action = MenuBarCompanion::unaskedAction});
  EXPECT_FALSE(panel().isVisible());
}

TEST_F(CompanionProcessTest, QuittingTakesTheIconAwayAndEndsTheProcess) {
  openPanel();
  int begun = 0;
  QObject::connect(process_.get(), &CompanionProcess::quitBegun, process_.get(), [&] { ++begun; });
  QTimer::singleShot(0, [this] { clickPart("panel.quit"); });
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_EQ(begun, 1);
  EXPECT_FALSE(tray_.isVisible);
  EXPECT_FALSE(panel().isVisible());
  process_->answer({});
  EXPECT_FALSE(panel().isVisible());
}

TEST_F(CompanionProcessTest, ItsEndLeavesTheTrayAlone) {
  process_.reset();
  EXPECT_FALSE(tray_.isVisible);
  EXPECT_FALSE(tray_.isObserved());
  tray_.activate({});
}

}  // namespace
}  // namespace Nimbrel
