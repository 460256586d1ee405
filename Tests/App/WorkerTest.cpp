#include "Support/EnvironmentVariable.h"
#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <signal.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using Testing::startProgram;
using Testing::StoreHome;
using Testing::waitUntil;
using Testing::writePicture;

/// What another process sees in the catalogue: a Store of the test's own that only polls.
class WorkerTest : public ::testing::Test {
 protected:
  [[nodiscard]] bool seesHashed(const std::string& name) {
    return waitUntil([&] {
      return std::ranges::any_of(observer_->shots(),
                                 [&](const ShotPtr& shot) { return shot->name == name && shot->phash != 0; });
    });
  }
  [[nodiscard]] bool seesNone() {
    return waitUntil([&] { return observer_->shots().empty(); });
  }
  static void end(QProcess& worker, int signal) {
    ASSERT_TRUE(waitUntil([&] { return Testing::catchesSignal(worker, signal); }));
    ASSERT_EQ(kill(static_cast<pid_t>(worker.processId()), signal), 0);
    ASSERT_TRUE(worker.waitForFinished());
    EXPECT_EQ(worker.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(worker.exitCode(), 0);
  }

  StoreHome home_;
  std::unique_ptr<Store> observer_ = home_.open(ProcessRole::mainApplication);
};

TEST_F(WorkerTest, FindsAndHashesNewFilesUntilASignalEndsItCleanly) {
  const auto worker = startProgram("nimbrel-menubar", {}, home_.folder().path());
  writePicture(home_.desktop("Screenshot 1.png"), 200, 100, 1);
  EXPECT_TRUE(seesHashed("Screenshot 1.png"));
  EXPECT_EQ(worker->state(), QProcess::Running);
  end(*worker, SIGTERM);
}

TEST_F(WorkerTest, SeesFilesThatArriveByRenamingFromATemporaryName) {
  const auto worker = startProgram("nimbrel-menubar", {}, home_.folder().path());
  writePicture(home_.desktop("Screenshot first.png"), 200, 100, 1);
  ASSERT_TRUE(seesHashed("Screenshot first.png"));
  writePicture(home_.desktop(".Screenshot 2.tmp.png"), 200, 100, 2);
  std::filesystem::rename(home_.desktop(".Screenshot 2.tmp.png"), home_.desktop("Screenshot 2.png"));
  EXPECT_TRUE(seesHashed("Screenshot 2.png"));
  end(*worker, SIGINT);
}

TEST_F(WorkerTest, SeesFilesInNewSubfoldersOfTheLibrary) {
  home_.folder().makeFolder("Pictures/Nimbrel");
  const auto worker = startProgram("nimbrel-menubar", {}, home_.folder().path());
  writePicture(home_.desktop("Screenshot first.png"), 200, 100, 1);
  ASSERT_TRUE(seesHashed("Screenshot first.png"));
  writePicture(home_.inLibrary("2026/2026-03/new.png"), 200, 100, 3);
  EXPECT_TRUE(seesHashed("new.png"));
  end(*worker, SIGTERM);
}

TEST_F(WorkerTest, DropsFilesThatAreDeleted) {
  writePicture(home_.desktop("Screenshot 1.png"), 200, 100, 1);
  const auto worker = startProgram("nimbrel-menubar", {}, home_.folder().path());
  ASSERT_TRUE(seesHashed("Screenshot 1.png"));
  std::filesystem::remove(home_.desktop("Screenshot 1.png"));
  EXPECT_TRUE(seesNone());
  end(*worker, SIGHUP);
}

TEST_F(WorkerTest, FollowsAChangeOfItsFolders) {
  const auto worker = startProgram("nimbrel-menubar", {}, home_.folder().path());
  writePicture(home_.path("elsewhere/Screenshot 1.png"), 200, 100, 1);
  observer_->settings().sources.set({home_.path("elsewhere")});
  EXPECT_TRUE(seesHashed("Screenshot 1.png"));
  end(*worker, SIGTERM);
}

TEST_F(WorkerTest, ASignalEndsAFirstScanThatIsFarFromDone) {
  constexpr std::size_t files = 12'000;
  for (std::size_t i = 0; i < files; ++i) home_.addFile(home_.inLibrary("2026/" + std::to_string(i) + ".png"));
  const auto worker = startProgram("nimbrel-menubar", {}, home_.folder().path());
  ASSERT_TRUE(waitUntil([&] { return !observer_->database().indexedPaths().empty(); }));
  end(*worker, SIGTERM);
  const auto rows = observer_->database().indexedPaths().size();
  EXPECT_GT(rows, 0U);
  EXPECT_LT(rows, files);
}

TEST_F(WorkerTest, ASignalInTheMiddleOfABatchLeavesTheRestPendingAndNothingHalfWritten) {
  constexpr std::size_t shots = 60;
  for (std::size_t i = 0; i < shots; ++i) {
    writePicture(home_.inLibrary("2026/" + std::to_string(i) + ".png"), 900, 600, static_cast<int>(i));
  }
  const auto worker = startProgram("nimbrel-menubar", {}, home_.folder().path());
  auto& catalogue = observer_->database();
  const auto isRead = [](const ShotPtr& shot) { return shot->ocrDone; };
  ASSERT_TRUE(waitUntil([&] { return std::ranges::any_of(catalogue.allShots({}), isRead); }));
  end(*worker, SIGTERM);
  const auto left = catalogue.allShots({});
  ASSERT_EQ(left.size(), shots);
  EXPECT_FALSE(std::ranges::all_of(left, isRead));
  for (const auto& shot : left) EXPECT_NE(catalogue.needsCodes(shot->id), shot->ocrDone) << shot->name;
}

TEST_F(WorkerTest, TheNextOneGoesOnWhereOneWasKilledInTheMiddleOfABatch) {
  constexpr std::size_t shots = 12;
  for (std::size_t i = 0; i < shots; ++i) {
    writePicture(home_.inLibrary("2026/" + std::to_string(i) + ".png"), 900, 600, static_cast<int>(i));
  }
  const auto killed = startProgram("nimbrel-menubar", {}, home_.folder().path());
  auto& catalogue = observer_->database();
  const auto isRead = [](const ShotPtr& shot) { return shot->ocrDone; };
  ASSERT_TRUE(waitUntil([&] { return std::ranges::any_of(catalogue.allShots({}), isRead); }));
  killed->kill();
  ASSERT_TRUE(killed->waitForFinished());
  ASSERT_FALSE(std::ranges::all_of(catalogue.allShots({}), isRead)) << "it was in the middle";
  const auto next = startProgram("nimbrel-menubar", {}, home_.folder().path());
  EXPECT_TRUE(waitUntil([&] {
    const auto rows = catalogue.allShots({});
    return rows.size() == shots &&
           std::ranges::all_of(rows, [&](const ShotPtr& shot) { return isRead(shot) && shot->phash != 0; });
  }));
  end(*next, SIGTERM);
}

TEST_F(WorkerTest, AHeadlessPassRunsBesideIt) {
  writePicture(home_.desktop("Screenshot 1.png"), 200, 100, 1);
  const auto worker = startProgram("nimbrel-menubar", {}, home_.folder().path());
  ASSERT_TRUE(seesHashed("Screenshot 1.png"));
  const auto pass = Testing::runProgram("nimbrel", {QStringLiteral("--scan")}, home_.folder().path());
  EXPECT_EQ(pass.status, 0);
  EXPECT_THAT(pass.output, ::testing::StartsWith("1 shots indexed, 1 waiting in the Inbox\n"));
  EXPECT_EQ(worker->state(), QProcess::Running);
  end(*worker, SIGTERM);
}

TEST_F(WorkerTest, TheApplicationWithoutADisplayRunsWithVerboseAloneAndScansNothing) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  const Testing::EnvironmentVariable platform("QT_QPA_PLATFORM", std::nullopt);
  const auto application = startProgram("nimbrel", {QStringLiteral("--verbose")}, home_.folder().path());
  Testing::runEventLoopFor(std::chrono::milliseconds(1500));
  EXPECT_EQ(application->state(), QProcess::Running);
  EXPECT_TRUE(observer_->shots().empty());
  end(*application, SIGTERM);
}

}  // namespace
}  // namespace Nimbrel
