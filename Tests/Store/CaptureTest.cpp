// From the request for a capture to the end of the program that takes it.

#include "CaptureFixture.h"

#include <QSignalSpy>

#include <chrono>
#include <filesystem>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::SizeIs;
using ::testing::StartsWith;

class CaptureTest : public Testing::CaptureFixture {
 protected:
  void SetUp() override { open(); }
};

TEST_F(CaptureTest, HandsTheModesArgumentsAndThePathToTheProgram) {
  begin(CaptureMode::area);
  EXPECT_THAT(tool_->launched.back(), ElementsAre("-i", "-s", "-d", tool_->path()));
  tool_->end(0);
  begin(CaptureMode::recordScreen);
  EXPECT_THAT(tool_->launched.back(), ElementsAre("-v", "-m", "-d", tool_->path()));
}

TEST_F(CaptureTest, IsBusyFromTheRequestUntilTheProgramHasEnded) {
  EXPECT_FALSE(store_->captureBusy());
  const QSignalSpy told(store_.get(), &Store::captureBusyChanged);
  store_->capture(CaptureMode::area, Store::Panel::Keep);
  EXPECT_TRUE(store_->captureBusy());
  EXPECT_EQ(told.count(), 1);
  EXPECT_THAT(tool_->launched, SizeIs(0)) << "the rest runs in a later turn";
  ASSERT_TRUE(Testing::waitUntil([this] { return !tool_->launched.empty(); }));
  EXPECT_TRUE(store_->captureBusy());
  tool_->end(0);
  EXPECT_FALSE(store_->captureBusy());
  EXPECT_EQ(told.count(), 2);
}

TEST_F(CaptureTest, ASecondRequestHasNoEffectAtAll) {
  begin(CaptureMode::area);
  const QSignalSpy statuses(store_.get(), &Store::statusChanged);
  const QSignalSpy hidden(store_.get(), &Store::hidingRequested);
  store_->capture(CaptureMode::recordArea, Store::Panel::Dismiss);
  Testing::runEventLoopFor(20ms);
  EXPECT_THAT(tool_->launched, SizeIs(1));
  EXPECT_EQ(statuses.count(), 0);
  EXPECT_EQ(hidden.count(), 0);
  EXPECT_FALSE(store_->recording());
}

TEST_F(CaptureTest, ASecondRequestDuringTheCountdownHasNoEffectEither) {
  store_->settings().captureDelay.set(3);
  store_->capture(CaptureMode::area, Store::Panel::Keep);
  store_->capture(CaptureMode::screen, Store::Panel::Keep);
  countdown().setInterval(0);
  ASSERT_TRUE(Testing::waitUntil([this] { return !tool_->launched.empty(); }));
  Testing::runEventLoopFor(20ms);
  EXPECT_THAT(tool_->launched, ElementsAre(::testing::Contains("-s")));
}

TEST_F(CaptureTest, AnotherCaptureCanFollow) {
  take();
  home_.now += Seconds(1);
  take();
  EXPECT_THAT(store_->shots(), SizeIs(2));
}

TEST_F(CaptureTest, APictureLeavesTheStatusUntilItIsTaken) {
  const QSignalSpy statuses(store_.get(), &Store::statusChanged);
  begin(CaptureMode::window);
  EXPECT_EQ(statuses.count(), 0);
  EXPECT_FALSE(store_->recording());
  EXPECT_EQ(tool_->held(), 0) << "a picture is given up in the program itself";
  store_->stopRecording();
  EXPECT_EQ(tool_->interrupts(), 0);
}

TEST_F(CaptureTest, TheApplicationIsHiddenForTheWholeCountdownAndUntilTheProgramHasEnded) {
  store_->settings().captureDelay.set(10);
  const QSignalSpy hidden(store_.get(), &Store::hidingRequested);
  const QSignalSpy shown(store_.get(), &Store::unhidingRequested);
  store_->capture(CaptureMode::area, Store::Panel::Dismiss);
  EXPECT_EQ(hidden.count(), 1);
  EXPECT_TRUE(countdown().isActive());
  EXPECT_EQ(countdown().intervalAsDuration(), 10s);
  Testing::runEventLoopFor(20ms);
  EXPECT_THAT(tool_->launched, SizeIs(0));
  EXPECT_EQ(shown.count(), 0);

  countdown().setInterval(0);
  ASSERT_TRUE(Testing::waitUntil([this] { return !tool_->launched.empty(); }));
  EXPECT_EQ(shown.count(), 0);
  tool_->end(0);
  EXPECT_EQ(hidden.count(), 1);
  EXPECT_EQ(shown.count(), 1);
}

TEST_F(CaptureTest, EvenWithoutACountdownAPanelHasTheTimeToGoOffTheScreen) {
  store_->capture(CaptureMode::area, Store::Panel::Dismiss);
  EXPECT_EQ(countdown().intervalAsDuration(), 150ms);
  ASSERT_TRUE(Testing::waitUntil([this] { return !tool_->launched.empty(); }));
}

TEST_F(CaptureTest, WithoutAPanelNothingIsHidden) {
  const QSignalSpy hidden(store_.get(), &Store::hidingRequested);
  const QSignalSpy shown(store_.get(), &Store::unhidingRequested);
  take();
  EXPECT_EQ(hidden.count() + shown.count(), 0);
}

TEST_F(CaptureTest, TheApplicationInFrontIsAskedForAfterTheCountdown) {
  store_->settings().captureDelay.set(3);
  store_->capture(CaptureMode::screen, Store::Panel::Keep);
  front_->application = Application{"Later", "org.example.Later"};
  countdown().setInterval(0);
  ASSERT_TRUE(Testing::waitUntil([this] { return !tool_->launched.empty(); }));
  front_->application = Application{"Last", "org.example.Last"};
  Testing::writePicture(tool_->path());
  tool_->end(0);
  EXPECT_EQ(store_->shots().front()->appName, "Later");
  EXPECT_EQ(store_->shots().front()->bundleID, "org.example.Later");
}

TEST_F(CaptureTest, TheSettingsAreThoseOfTheRequest) {
  setLibrary();
  store_->settings().captureDelay.set(3);
  store_->capture(CaptureMode::recordArea, Store::Panel::Keep);
  store_->settings().captureDestination.set(CaptureDestination::inbox);
  countdown().setInterval(0);
  ASSERT_TRUE(Testing::waitUntil([this] { return !tool_->launched.empty(); }));
  EXPECT_THAT(tool_->path(), StartsWith(home_.inLibrary("Recordings/")));
}

TEST_F(CaptureTest, ACancelledCaptureSaysSoAndLeavesEverythingElse) {
  const QSignalSpy shown(store_.get(), &Store::unhidingRequested);
  begin(CaptureMode::area, Store::Panel::Dismiss);
  tool_->end(0);
  EXPECT_EQ(store_->status(), "Capture cancelled");
  EXPECT_THAT(store_->shots(), SizeIs(0));
  EXPECT_EQ(store_->lastCapturedID(), std::nullopt);
  EXPECT_EQ(shown.count(), 1);
}

TEST_F(CaptureTest, AFailureWithoutAFilePointsToThePermission) {
  const QSignalSpy shown(store_.get(), &Store::unhidingRequested);
  for (const int exitStatus : {1, 3, 128 + 9}) {
    begin(CaptureMode::area, Store::Panel::Dismiss);
    tool_->end(exitStatus);
    EXPECT_EQ(store_->status(), "Capture failed; check screen recording permission");
    store_->lockSensitive();
  }
  EXPECT_EQ(shown.count(), 3);
  EXPECT_FALSE(store_->captureBusy());
}

TEST_F(CaptureTest, AFileCountsWhateverTheExitStatus) {
  begin(CaptureMode::screen);
  Testing::writePicture(tool_->path());
  tool_->end(1);
  EXPECT_EQ(store_->status(), "Captured from Editor");
}

TEST_F(CaptureTest, AProgramThatCannotBeStartedFailsTheCapture) {
  const QSignalSpy shown(store_.get(), &Store::unhidingRequested);
  tool_->refusal = Error{"there is none"};
  for (const auto mode : {CaptureMode::area, CaptureMode::recordArea}) {
    begin(mode, Store::Panel::Dismiss);
    EXPECT_EQ(store_->status(), "Capture failed: there is none");
    EXPECT_FALSE(store_->captureBusy());
    EXPECT_FALSE(store_->recording());
  }
  EXPECT_EQ(shown.count(), 2);
  tool_->refusal.reset();
  take();
  EXPECT_EQ(store_->status(), "Captured from Editor");
}

TEST_F(CaptureTest, AFolderThatCannotBeMadeFailsTheCapture) {
  const QSignalSpy shown(store_.get(), &Store::unhidingRequested);
  setLibrary();
  home_.addFile(home_.path("Pictures/Nimbrel"));
  store_->capture(CaptureMode::area, Store::Panel::Dismiss);
  ASSERT_TRUE(Testing::waitUntil([this] { return !store_->captureBusy(); }));
  EXPECT_THAT(store_->status(), StartsWith("Capture failed: "));
  EXPECT_GT(store_->status().size(), std::string("Capture failed: ").size());
  EXPECT_THAT(tool_->launched, SizeIs(0));
  EXPECT_EQ(shown.count(), 1);
}

TEST_F(CaptureTest, WithoutAnythingThatTakesCapturesTheStatusSaysSo) {
  store_ = home_.open(ProcessRole::mainApplication);
  store_->capture(CaptureMode::area, Store::Panel::Keep);
  ASSERT_TRUE(Testing::waitUntil([this] { return !store_->captureBusy(); }));
  EXPECT_EQ(store_->status(), "Capture failed: Screenshots cannot be taken here");
}

/// Hands everything on to a tool that outlives the Store.
class BorrowedTool final : public ScreenCaptureTool {
 public:
  explicit BorrowedTool(ScreenCaptureTool& tool) : tool_(tool) {}
  [[nodiscard]] Result<std::unique_ptr<RunningCapture>> launch(QObject* context, std::vector<std::string> arguments,
                                                               Then then) override {
    return tool_.launch(context, std::move(arguments), std::move(then));
  }

 private:
  ScreenCaptureTool& tool_;
};

TEST_F(CaptureTest, WhenTheStoreIsGoneTheRecordingGoesOnAndItsOutcomeIsDropped) {
  Testing::FakeScreenCaptureTool tool;
  Services services;
  services.screenCaptureTool = std::make_unique<BorrowedTool>(tool);
  store_ = home_.open(ProcessRole::mainApplication, std::move(services));
  store_->capture(CaptureMode::recordArea, Store::Panel::Keep);
  ASSERT_TRUE(Testing::waitUntil([this] { return store_->recording(); }));
  store_.reset();
  EXPECT_EQ(tool.interrupts(), 0);
  EXPECT_EQ(tool.held(), 0);
  home_.addFile(tool.path());
  tool.end(0);
  EXPECT_EQ(home_.open(ProcessRole::tool)->lastRecordingURL(), std::nullopt);
}

TEST_F(CaptureTest, WhenTheStoreIsGoneDuringTheCountdownNothingIsTaken) {
  Testing::FakeScreenCaptureTool tool;
  Services services;
  services.screenCaptureTool = std::make_unique<BorrowedTool>(tool);
  store_ = home_.open(ProcessRole::mainApplication, std::move(services));
  store_->capture(CaptureMode::area, Store::Panel::Keep);
  store_.reset();
  Testing::runEventLoopFor(20ms);
  EXPECT_THAT(tool.launched, SizeIs(0));
}

TEST_F(CaptureTest, TheSignalsOfAnEndComeTogetherOnceAllIsDone) {
  begin(CaptureMode::area);
  Testing::writePicture(tool_->path());
  std::string status;
  ShotIDSet selection;
  QObject::connect(store_.get(), &Store::captureBusyChanged, store_.get(), [&] {
    status = store_->status();
    selection = store_->selection();
  });
  tool_->end(0);
  EXPECT_EQ(status, "Captured from Editor");
  EXPECT_THAT(selection, SizeIs(1));
}

class RecordingTest : public CaptureTest {};

TEST_F(RecordingTest, SaysHowItIsStoppedWhileItRuns) {
  const QSignalSpy told(store_.get(), &Store::recordingChanged);
  begin(CaptureMode::recordArea);
  EXPECT_TRUE(store_->recording());
  EXPECT_EQ(told.count(), 1);
  EXPECT_EQ(store_->status(), "Recording — use Stop Recording in the menu bar when done");
  tool_->end(0);
  EXPECT_FALSE(store_->recording());
  EXPECT_EQ(told.count(), 2);
  EXPECT_EQ(tool_->held(), 0);
}

TEST_F(RecordingTest, StoppingInterruptsTheProgramWhoseEndDoesTheRest) {
  begin(CaptureMode::recordScreen);
  store_->stopRecording();
  EXPECT_EQ(tool_->interrupts(), 1);
  EXPECT_TRUE(store_->recording());
  EXPECT_TRUE(store_->captureBusy());
  home_.addFile(tool_->path());
  tool_->end(0);
  EXPECT_EQ(store_->status(), "Recording saved to Desktop");
  store_->stopRecording();
  EXPECT_EQ(tool_->interrupts(), 1);
}

TEST_F(RecordingTest, IsRememberedAndNeverARow) {
  record();
  EXPECT_EQ(store_->lastRecordingURL(), tool_->path());
  EXPECT_EQ(store_->status(), "Recording saved to Desktop");
  store_->scan();
  EXPECT_THAT(store_->shots(), SizeIs(0));
  EXPECT_EQ(store_->lastCapturedID(), std::nullopt);
  EXPECT_THAT(store_->selection(), SizeIs(0));
}

TEST_F(RecordingTest, InTheLibraryTheStatusNamesItsFolderAndNotTheFile) {
  setLibrary();
  record();
  EXPECT_EQ(store_->status(), "Recording saved to Recordings");
  store_->scan();
  EXPECT_THAT(store_->shots(), SizeIs(0));
}

TEST_F(RecordingTest, ReachesOtherProcessesWithTheirNextPoll) {
  record();
  const auto other = home_.suiteOfOtherProcess()->value(QStringLiteral("lastRecordingPath"));
  EXPECT_EQ(other.toString().toStdString(), tool_->path());
  const auto next = home_.addFile(home_.desktop("Recording of another process.mov"));
  ASSERT_TRUE(home_.suiteOfOtherProcess()->set(QStringLiteral("lastRecordingPath"), QString::fromStdString(next)));
  store_->poll();
  EXPECT_EQ(store_->lastRecordingURL(), next);
}

TEST_F(RecordingTest, GivenUpBeforeItBeganLeavesTheFormerOne) {
  record();
  const auto former = store_->lastRecordingURL();
  begin(CaptureMode::recordArea);
  tool_->end(0);
  EXPECT_EQ(store_->status(), "Capture cancelled");
  EXPECT_EQ(store_->lastRecordingURL(), former);
}

TEST_F(RecordingTest, ItsToolsAreShownOnDemand) {
  const QSignalSpy told(store_.get(), &Store::showRecordingToolsChanged);
  EXPECT_FALSE(store_->showRecordingTools());
  store_->setShowRecordingTools(true);
  store_->setShowRecordingTools(true);
  EXPECT_TRUE(store_->showRecordingTools());
  EXPECT_EQ(told.count(), 1);
}

}  // namespace
}  // namespace Nimbrel
