// What the supervision makes of a child that does just what a test wants: a script in the place of nimbrel-reader.

#include "Linux/Reading/AttemptJournal.h"
#include "Linux/Reading/ReaderProcess.h"

#include "Support/LogRecorder.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <QThread>

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using namespace Testing;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::SizeIs;

class ReaderProcessScriptTest : public ::testing::Test {
 protected:
  using Reading = std::optional<PictureReading>;

  /// With a child that runs the commands for each request, in the test's folder. They may call `begun`, and `code` with
  /// a payload to answer.
  [[nodiscard]] std::unique_ptr<PictureReader> open(const std::string& commands,
                                                    std::chrono::milliseconds timeLimit = 30s) const {
    const auto program = folder_.write("reader", "#!/bin/sh\ncd '" + folder_.path() +
                                                     "' || exit\n"
                                                     "begun() { echo '{\"begun\":true}'; }\n"
                                                     "code() { echo '{\"blocks\":[],\"codes\":[\"'\"$1\"'\"]}'; }\n"
                                                     "echo '{\"ready\":true}'\n"
                                                     "while read -r _; do\n" +
                                                     commands + "\ndone\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    return makeReaderProcess({.program = program, .journal = journal_, .timeLimit = timeLimit});
  }

  void ask(PictureReader& reader) {
    reader.read(&context_, picture_, PictureReader::Wanted::Codes,
                [this](Reading reading) { answers_.push_back(std::move(reading)); });
  }

  void askAndWaitUntilBegun(PictureReader& reader) {
    ask(reader);
    ASSERT_TRUE(waitUntil([this] { return attempts() > 0; }));
  }

  [[nodiscard]] bool answered(std::size_t count = 1) const {
    return waitUntil([&] { return answers_.size() >= count; });
  }

  [[nodiscard]] int attempts() const { return AttemptJournal(journal_).attempts(picture_); }

  static Reading codes(const std::string& payload) { return PictureReading{{}, {payload}}; }

  const TemporaryFolder folder_;
  const std::string journal_ = folder_.path("caches/journal.json");
  const std::string picture_ = folder_.write("picture", "old");
  QObject context_;
  std::vector<Reading> answers_;
};

TEST_F(ReaderProcessScriptTest, TakesAnAnswerThatCameInTimeWhileItDidNotLook) {
  // Still at work when the time is up, so that it would be given no more of it.
  const auto reader = open("begun; while [ ! -e go ]; do :; done; code done; while :; do :; done", 2s);
  askAndWaitUntilBegun(*reader);
  folder_.write("go", "");
  QThread::msleep(2050);
  ASSERT_TRUE(answered());
  EXPECT_THAT(answers_, ElementsAre(codes("done")));
  EXPECT_EQ(attempts(), 0);
}

TEST_F(ReaderProcessScriptTest, StartsTheLimitOnceMoreWhenItDidNotRunItself) {
  const auto reader = open("begun; while [ ! -e go ]; do :; done; code done", 1s);
  askAndWaitUntilBegun(*reader);
  QThread::msleep(1500);
  runEventLoopFor(50ms);
  folder_.write("go", "");
  ASSERT_TRUE(answered());
  EXPECT_THAT(answers_, ElementsAre(codes("done")));
}

TEST_F(ReaderProcessScriptTest, GivesMoreTimeToAChildThatGetsNoProcessor) {
  const auto reader = open("begun; while [ ! -e go ]; do sleep .05; done; code done", 1s);
  askAndWaitUntilBegun(*reader);
  runEventLoopFor(1500ms);
  folder_.write("go", "");
  ASSERT_TRUE(answered());
  EXPECT_THAT(answers_, ElementsAre(codes("done")));
}

TEST_F(ReaderProcessScriptTest, WaitsNotForEverForAChildThatDoesNothing) {
  const auto reader = open("begun; exec sleep 1000", 200ms);
  ask(*reader);
  ASSERT_TRUE(answered());
  EXPECT_THAT(answers_, ElementsAre(PictureReading()));
  EXPECT_EQ(attempts(), 1);
}

TEST_F(ReaderProcessScriptTest, AsksAnotherChildWhenOneDiesBeforeItLooked) {
  const auto reader = open("[ -e died ] || { : > died; exit 1; }\nbegun; code done");
  ask(*reader);
  ASSERT_TRUE(answered());
  EXPECT_THAT(answers_, ElementsAre(codes("done")));
}

TEST_F(ReaderProcessScriptTest, LooksAtNoPictureWhenChildrenDieBeforeTheyLook) {
  const LogRecorder log;
  const auto reader = open("echo >> starts; exit 1");
  for (int i = 0; i < 5; ++i) ask(*reader);
  ASSERT_TRUE(answered(5));
  EXPECT_THAT(answers_, Each(Reading()));
  EXPECT_EQ(contentOf(folder_.path("starts")), "\n\n") << "two children, not one for each picture";
  EXPECT_EQ(attempts(), 0);
  ask(*reader);
  ASSERT_TRUE(answered(6));
  EXPECT_FALSE(answers_.back());
  EXPECT_THAT(log.lines(), SizeIs(1));
}

TEST_F(ReaderProcessScriptTest, LooksAtNoPictureWhenChildrenHangBeforeTheyLook) {
  const LogRecorder log;
  const auto reader = open("exec sleep 1000", 200ms);
  ask(*reader);
  ASSERT_TRUE(answered());
  EXPECT_THAT(answers_, ElementsAre(Reading()));
}

TEST_F(ReaderProcessScriptTest, ReadsAPictureAgainThatWasStillBeingWritten) {
  const auto reader = open("content=$(cat picture); begun; while [ ! -e go ]; do sleep .02; done; code \"$content\"");
  askAndWaitUntilBegun(*reader);
  folder_.write("picture", "whole");
  folder_.write("go", "");
  ASSERT_TRUE(answered());
  EXPECT_THAT(answers_, ElementsAre(codes("whole")));
  EXPECT_EQ(attempts(), 0);
}

TEST_F(ReaderProcessScriptTest, ReadsAPictureThatKeepsChangingNoMoreThanTwice) {
  const auto reader = open("printf , >> picture; begun; code \"$(cat picture)\"");
  ask(*reader);
  ASSERT_TRUE(answered());
  EXPECT_THAT(answers_, ElementsAre(codes("old,,")));
}

TEST_F(ReaderProcessScriptTest, KeepsWhatWasReadOffAPictureThatWasMovedAway) {
  const auto reader = open("content=$(cat picture); begun; while [ ! -e go ]; do sleep .02; done; code \"$content\"");
  askAndWaitUntilBegun(*reader);
  std::filesystem::rename(picture_, folder_.path("moved"));
  folder_.write("go", "");
  ASSERT_TRUE(answered());
  EXPECT_THAT(answers_, ElementsAre(codes("old")));
}

}  // namespace
}  // namespace Nimbrel
