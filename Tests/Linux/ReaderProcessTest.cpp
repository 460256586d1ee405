// With the real child process: what it makes of pictures that it can read, that it dies over, and that it hangs at.

#include "Linux/Reading/AttemptJournal.h"
#include "Linux/Reading/ReaderProcess.h"

#include "Support/CodePictures.h"
#include "Support/LogRecorder.h"
#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <QPainter>

#include <gmock/gmock.h>

#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using namespace Testing;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Wanted = PictureReader::Wanted;

/// The children of this process of the reader's name that have not ended.
std::vector<pid_t> readerChildren() {
  const auto self = std::to_string(::getpid());
  std::ifstream list("/proc/" + self + "/task/" + self + "/children");
  std::vector<pid_t> found;
  for (pid_t child = 0; list >> child;) {
    std::ifstream status("/proc/" + std::to_string(child) + "/status");
    const std::string text((std::istreambuf_iterator<char>(status)), {});
    if (text.starts_with("Name:\tnimbrel-reader\n") && text.find("State:\tZ") == std::string::npos) {
      found.push_back(child);
    }
  }
  return found;
}

class ReaderProcessTest : public ::testing::Test {
 protected:
  using Reading = std::optional<PictureReading>;

  [[nodiscard]] ReaderProcessOptions options() const {
    return {.program = programPath("nimbrel-reader").toStdString(), .journal = folder_.path("caches/journal.json")};
  }

  [[nodiscard]] std::unique_ptr<PictureReader> open(std::chrono::milliseconds timeLimit = 30s) const {
    auto chosen = options();
    chosen.timeLimit = timeLimit;
    return makeReaderProcess(chosen);
  }

  [[nodiscard]] std::string code(const std::string& name, const std::string& payload) const {
    const auto path = folder_.path(name);
    const auto image = onPage(codePicture(ZXing::BarcodeFormat::QRCode, payload), {400, 300});
    // QImage would not write a name that is not valid UTF-8.
    const auto plain = folder_.path("plain.png");
    EXPECT_TRUE(image.save(QString::fromStdString(plain)));
    std::filesystem::rename(plain, path);
    return path;
  }

  /// One that takes the child a while.
  [[nodiscard]] std::string slowCode(const std::string& name, const std::string& payload) const {
    QImage image(2000, 2000, QImage::Format_Grayscale8);
    std::mt19937 noise(1);
    for (int y = 0; y < image.height(); ++y) {
      std::generate_n(image.scanLine(y), image.width(), [&] { return static_cast<uchar>(noise()); });
    }
    QPainter(&image).drawImage(0, 0, onPage(codePicture(ZXing::BarcodeFormat::QRCode, payload), {400, 300}));
    const auto path = folder_.path(name);
    EXPECT_TRUE(image.save(QString::fromStdString(path)));
    return path;
  }

  /// Asks for the codes; the answers are collected in order.
  void ask(PictureReader& reader, const std::string& path) {
    reader.read(&context_, path, Wanted::Codes, [this](Reading reading) { answers_.push_back(std::move(reading)); });
  }

  [[nodiscard]] bool answered(std::size_t count) const {
    return waitUntil([&] { return answers_.size() >= count; });
  }

  /// The child, once it has said that it is ready: it has answered a picture.
  pid_t runningChild(PictureReader& reader) {
    const auto before = answers_.size();
    ask(reader, code("first.png", "first"));
    EXPECT_TRUE(answered(before + 1));
    const auto children = readerChildren();
    EXPECT_THAT(children, SizeIs(1));
    return children.empty() ? -1 : children[0];
  }

  /// Asks for a slow picture and stops the child, which is left, over it.
  pid_t stopOver(PictureReader& reader, const std::string& path) {
    const auto child = runningChild(reader);
    const AttemptJournal journal(options().journal);
    const int attempts = journal.attempts(path);
    ask(reader, path);
    EXPECT_TRUE(waitUntil([&] { return journal.attempts(path) > attempts; }));
    EXPECT_EQ(::kill(child, SIGSTOP), 0);
    return child;
  }

  void dieOver(PictureReader& reader, const std::string& path) {
    const auto child = stopOver(reader, path);
    const auto before = answers_.size();
    ASSERT_EQ(::kill(child, SIGKILL), 0);
    ASSERT_TRUE(answered(before + 1));
    EXPECT_EQ(answers_.back(), Reading(PictureReading()));
  }

  static Reading codes(const std::string& payload) { return PictureReading{{}, {payload}}; }

  const TemporaryFolder folder_;
  QObject context_;
  std::vector<Reading> answers_;
};

TEST_F(ReaderProcessTest, ReadsTextAndCodes) {
  const auto reader = open();
  const auto path = code("code.png", "https://example.org");
  Reading both;
  reader->read(&context_, path, Wanted::TextAndCodes, [&](Reading reading) { both = std::move(reading); });
  ASSERT_TRUE(waitUntil([&] { return both.has_value(); }));
  EXPECT_THAT(both->codes, ElementsAre("https://example.org"));
}

TEST_F(ReaderProcessTest, AnswersInTheOrderOfAskingInALaterTurn) {
  const auto reader = open();
  ask(*reader, code("a.png", "a"));
  ask(*reader, folder_.path("missing.png"));
  ask(*reader, code("b.png", "b"));
  EXPECT_THAT(answers_, IsEmpty());
  ASSERT_TRUE(answered(3));
  EXPECT_THAT(answers_, ElementsAre(codes("a"), PictureReading(), codes("b")));
}

TEST_F(ReaderProcessTest, ReadsAFileWhoseNameIsNotValidUtf8) {
  const auto reader = open();
  ask(*reader, code("\xFF\xC3 \n\".png", "bytes"));
  ASSERT_TRUE(answered(1));
  EXPECT_THAT(answers_, ElementsAre(codes("bytes")));
}

TEST_F(ReaderProcessTest, KeepsOneChildForAllPictures) {
  const auto reader = open();
  const auto child = runningChild(*reader);
  EXPECT_EQ(runningChild(*reader), child);
}

TEST_F(ReaderProcessTest, StartsNoChildBeforeItIsAsked) {
  const auto reader = open();
  runEventLoopFor(20ms);
  EXPECT_THAT(readerChildren(), IsEmpty());
}

TEST_F(ReaderProcessTest, GoesOnWithTheNextPictureWhenTheChildDies) {
  const auto reader = open();
  const auto child = stopOver(*reader, slowCode("second.png", "second"));
  ask(*reader, code("third.png", "third"));
  ASSERT_EQ(::kill(child, SIGSEGV), 0);
  ASSERT_EQ(::kill(child, SIGCONT), 0);
  ASSERT_TRUE(answered(3));
  EXPECT_THAT(answers_, ElementsAre(codes("first"), PictureReading(), codes("third")));
}

TEST_F(ReaderProcessTest, GoesOnWithTheNextPictureWhenOneTakesTooLong) {
  const auto reader = open(1s);
  const auto child = stopOver(*reader, slowCode("second.png", "second"));
  ask(*reader, code("third.png", "third"));
  ASSERT_TRUE(answered(3));
  EXPECT_THAT(answers_, ElementsAre(codes("first"), PictureReading(), codes("third")));
  EXPECT_NE(::kill(child, 0), 0) << "the stopped child is still there";
}

TEST_F(ReaderProcessTest, StartsAnewAfterAChildThatDiedIdle) {
  const auto reader = open();
  const auto child = runningChild(*reader);
  ASSERT_EQ(::kill(child, SIGKILL), 0);
  ASSERT_TRUE(waitUntil([] { return readerChildren().empty(); }));
  runEventLoopFor(20ms);
  EXPECT_NE(runningChild(*reader), child);
  EXPECT_THAT(answers_, ElementsAre(codes("first"), codes("first")));
}

TEST_F(ReaderProcessTest, DoesNotTryAPictureAgainThatItDiedOverThreeTimes) {
  const auto bad = slowCode("bad.png", "bad");
  {
    const auto reader = open();
    for (int death = 0; death < 3; ++death) dieOver(*reader, bad);
    answers_.clear();
    ask(*reader, bad);
    ASSERT_TRUE(answered(1));
  }
  // Nor after a restart, until the picture is another one.
  const auto reader = open();
  ask(*reader, bad);
  ASSERT_TRUE(answered(2));
  EXPECT_THAT(answers_, ElementsAre(PictureReading(), PictureReading()));
  EXPECT_THAT(readerChildren(), IsEmpty());
  setModificationTime(bad, 1'500'000'000);
  ask(*reader, bad);
  ASSERT_TRUE(answered(3));
  EXPECT_EQ(answers_.back(), codes("bad"));
}

TEST_F(ReaderProcessTest, ForgetsADeathOnceThePictureWasRead) {
  const auto path = slowCode("once.png", "once");
  const auto reader = open();
  for (int round = 0; round < 4; ++round) {
    dieOver(*reader, path);
    ask(*reader, path);
    ASSERT_TRUE(answered(answers_.size() + 1));
    EXPECT_EQ(answers_.back(), codes("once")) << round;
  }
}

TEST_F(ReaderProcessTest, CountsADeathAgainstNoPictureBeforeItWasLookedAt) {
  const auto path = code("picture.png", "picture");
  const auto reader = open();
  const auto child = runningChild(*reader);
  ASSERT_EQ(::kill(child, SIGSTOP), 0);
  ask(*reader, path);
  runEventLoopFor(20ms);
  ASSERT_EQ(::kill(child, SIGKILL), 0);
  ASSERT_TRUE(answered(2));
  EXPECT_EQ(answers_.back(), codes("picture"));
}

TEST_F(ReaderProcessTest, CountsTheDeathOfAnIdleChildAgainstNoPicture) {
  const auto path = code("picture.png", "picture");
  const auto reader = open();
  const auto child = runningChild(*reader);
  ASSERT_EQ(::kill(child, SIGKILL), 0);
  ask(*reader, path);  // before its end could be noticed
  ASSERT_TRUE(answered(2));
  EXPECT_EQ(answers_.back(), codes("picture"));
}

TEST_F(ReaderProcessTest, ReadsThePictureThatTookThePlaceOfTheOneBeingRead) {
  const auto reader = open();
  const auto child = stopOver(*reader, slowCode("picture.png", "old"));
  std::filesystem::rename(code("fresh.png", "new"), folder_.path("picture.png"));
  ASSERT_EQ(::kill(child, SIGCONT), 0);
  ASSERT_TRUE(answered(2));
  EXPECT_EQ(answers_.back(), codes("new"));
}

TEST_F(ReaderProcessTest, ReadsAPictureAgainThatWasWrittenAnewMeanwhile) {
  const auto reader = open();
  const auto child = stopOver(*reader, slowCode("picture.png", "old"));
  folder_.write("picture.png", contentOf(code("fresh.png", "new")));
  ASSERT_EQ(::kill(child, SIGCONT), 0);
  ASSERT_TRUE(answered(2));
  EXPECT_EQ(answers_.back(), codes("new"));
}

TEST_F(ReaderProcessTest, ReadsThePictureThatTookThePlaceOfOneItDiedOver) {
  const auto reader = open();
  const auto child = stopOver(*reader, slowCode("picture.png", "old"));
  folder_.write("picture.png", contentOf(code("fresh.png", "new")));
  ASSERT_EQ(::kill(child, SIGKILL), 0);
  ASSERT_TRUE(answered(2));
  EXPECT_EQ(answers_.back(), codes("new"));
}

TEST_F(ReaderProcessTest, CountsACleanEndAgainstNoPicture) {
  const auto path = slowCode("picture.png", "picture");
  for (int end = 0; end < 4; ++end) {
    const auto reader = open();
    stopOver(*reader, path);
  }
  answers_.clear();
  const auto reader = open();
  ask(*reader, path);
  ASSERT_TRUE(answered(1));
  EXPECT_THAT(answers_, ElementsAre(codes("picture")));
}

TEST_F(ReaderProcessTest, LeavesNoChildBehind) {
  auto reader = open();
  ask(*reader, code("first.png", "first"));
  reader = nullptr;
  EXPECT_THAT(readerChildren(), IsEmpty()) << "still starting";
  reader = open();
  const auto child = runningChild(*reader);
  ASSERT_EQ(::kill(child, SIGSTOP), 0);
  ask(*reader, code("second.png", "second"));
  runEventLoopFor(10ms);
  const auto before = answers_.size();
  reader = nullptr;
  EXPECT_NE(::kill(child, 0), 0);
  runEventLoopFor(10ms);
  EXPECT_THAT(answers_, SizeIs(before)) << "answered by a reader that is gone";
}

TEST_F(ReaderProcessTest, LetsTheChildGoWhenItHasNothingToDo) {
  auto chosen = options();
  chosen.restAfter = 30ms;
  const auto reader = makeReaderProcess(chosen);
  ask(*reader, code("first.png", "first"));
  ASSERT_TRUE(answered(1));
  EXPECT_TRUE(waitUntil([] { return readerChildren().empty(); }));
  ask(*reader, code("second.png", "second"));
  ASSERT_TRUE(answered(2));
  EXPECT_EQ(answers_.back(), codes("second"));
}

TEST_F(ReaderProcessTest, DoesNotAnswerWhoIsGone) {
  const auto reader = open();
  auto context = std::make_unique<QObject>();
  const auto path = code("first.png", "first");
  for (int i = 0; i < 3; ++i) {
    reader->read(context.get(), path, Wanted::Codes, [](Reading) { ADD_FAILURE(); });
  }
  context = nullptr;
  ask(*reader, path);
  ASSERT_TRUE(answered(1));
  EXPECT_THAT(answers_, ElementsAre(codes("first")));
}

TEST_F(ReaderProcessTest, MayBeDestroyedByAnAnswer) {
  auto reader = open();
  const auto path = code("first.png", "first");
  reader->read(&context_, path, Wanted::Codes, [&](Reading) { reader = nullptr; });
  reader->read(&context_, path, Wanted::Codes, [](Reading) { ADD_FAILURE(); });
  ASSERT_TRUE(waitUntil([&] { return !reader; }));
  runEventLoopFor(20ms);
  EXPECT_THAT(readerChildren(), IsEmpty());
}

TEST_F(ReaderProcessTest, LooksAtNoPictureWithoutItsProgram) {
  const LogRecorder log;
  const auto path = code("first.png", "first");
  // Missing, no program, one that ends at once: none of them says anything about a picture.
  for (const auto& program :
       {folder_.path("missing"), folder_.write("script", "no program"), std::string("/bin/true")}) {
    auto chosen = options();
    chosen.program = program;
    const auto reader = makeReaderProcess(chosen);
    answers_.clear();
    for (int i = 0; i < 5; ++i) ask(*reader, path);
    ASSERT_TRUE(answered(5)) << program;
    ask(*reader, path);
    ASSERT_TRUE(answered(6)) << program;
    for (const auto& answer : answers_) EXPECT_FALSE(answer) << program;
  }
  EXPECT_THAT(log.lines(), SizeIs(3)) << "one line for each reader";
  const auto reader = open();
  ask(*reader, path);
  ASSERT_TRUE(answered(7));
  EXPECT_EQ(answers_.back(), codes("first")) << "it counted against the picture";
}

TEST_F(ReaderProcessTest, KeepsTheChildOutOfTheWay) {
  const auto reader = open();
  const auto child = runningChild(*reader);
  const auto folder = "/proc/" + std::to_string(child);
  EXPECT_THAT(contentOf(folder + "/limits"), HasSubstr("Max core file size        0                    0"));
  EXPECT_EQ(contentOf(folder + "/oom_score_adj"), "500\n");
  const auto environment = contentOf(folder + "/environ");
  EXPECT_THAT(environment, HasSubstr(std::string("OMP_THREAD_LIMIT=1") + '\0'));
  // The nice value is the seventeenth field behind the name.
  const auto stat = contentOf(folder + "/stat");
  std::istringstream fields(stat.substr(stat.rfind(')') + 2));
  std::vector<std::string> values(std::istream_iterator<std::string>(fields), {});
  ASSERT_GT(values.size(), 16U);
  EXPECT_GE(std::stoi(values[16]), 10);
}

TEST_F(ReaderProcessTest, LeavesItToNimbrelWhatASignalForBothMeans) {
  const auto reader = open();
  const auto child = runningChild(*reader);
  for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGQUIT}) ASSERT_EQ(::kill(child, number), 0);
  EXPECT_EQ(runningChild(*reader), child);
}

}  // namespace
}  // namespace Nimbrel
