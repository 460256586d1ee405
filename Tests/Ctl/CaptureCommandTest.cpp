// nimbrelctl with a script in the place of the program that takes captures.

#include "CtlFixture.h"

#include "Support/TerminalRun.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <signal.h>

#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using Testing::ProgramOutput;
using ::testing::SizeIs;
using ::testing::StartsWith;
using Testing::waitUntil;

class CaptureCommandTest : public Testing::CtlFixture {
 protected:
  CaptureCommandTest() {
    Testing::writePicture(home_.path("picture.png"), 120, 80);
    fs::create_directory(home_.path("bin"));
    fs::copy_file(Testing::programPath("nimbrelctl").toStdString(), program_);
  }

  /// The commands run in the home; `$file` is the file to write.
  void useTool(const std::string& commands) const {
    const auto script = home_.folder().write(
        "bin/nimbrel-screencapture", "#!/bin/sh\ncd '" + home_.folder().path() +
                                         "' || exit\necho \"$*\" > words\nfor file; do :; done\n" + commands + "\n");
    fs::permissions(script, fs::perms::owner_all);
  }
  /// One that records until it is interrupted, and then does what the commands say.
  void useRecorder(const std::string& atItsEnd) const {
    useTool("trap '" + atItsEnd + "' INT\n: > begun\nwhile [ ! -e end ]; do sleep 0.02; done");
  }

  [[nodiscard]] ProgramOutput capture(const QStringList& words) const {
    return Testing::runProgram(program_, QStringList{QStringLiteral("capture")} + words, home_.folder().path());
  }
  [[nodiscard]] std::unique_ptr<QProcess> started(const QStringList& words) const {
    auto process =
        Testing::startProgram(program_, QStringList{QStringLiteral("capture")} + words, home_.folder().path());
    EXPECT_TRUE(waitUntil([this] { return fs::exists(home_.path("begun")); }));
    return process;
  }
  static void interrupt(const QProcess& process) {
    ASSERT_EQ(::kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
  }
  [[nodiscard]] static ProgramOutput resultOf(QProcess& process) {
    EXPECT_TRUE(process.waitForFinished());
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput().toStdString(), process.readAllStandardError().toStdString()};
  }
  [[nodiscard]] std::vector<fs::path> recordings() const {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(home_.path("Desktop"))) files.push_back(entry.path());
    return files;
  }
  [[nodiscard]] ShotList shots() { return home_.open(ProcessRole::tool)->shots(); }

  const std::string program_ = home_.path("bin/nimbrelctl");
};

TEST_F(CaptureCommandTest, TakesAScreenshotAndWaitsForItsRow) {
  useTool("cp picture.png \"$file\"");
  const auto result = capture({QStringLiteral("window")});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_THAT(result.output, StartsWith("Captured"));
  const auto rows = shots();
  ASSERT_THAT(rows, SizeIs(1));
  EXPECT_THAT(rows.front()->path, StartsWith(home_.desktop("Screenshot ")));
  EXPECT_EQ(rows.front()->width, 120);
  EXPECT_EQ(Testing::contentOf(home_.path("words")), "-i -w -d " + rows.front()->path + "\n");
  EXPECT_EQ(home_.open(ProcessRole::tool)->lastCapturedID(), rows.front()->id);
}

TEST_F(CaptureCommandTest, KnowsEachMode) {
  useTool("exit 0");
  const auto told = [this](const char* mode) {
    EXPECT_EQ(capture({QLatin1String(mode)}).status, 0);
    return Testing::contentOf(home_.path("words"));
  };
  EXPECT_THAT(told("area"), StartsWith("-i -s -d /"));
  EXPECT_THAT(told("window"), StartsWith("-i -w -d /"));
  EXPECT_THAT(told("screen"), StartsWith("-m -d /"));
  EXPECT_THAT(told("recordArea"), StartsWith("-v -i -Jvideo -d /"));
  EXPECT_THAT(told("recordScreen"), StartsWith("-v -m -d /"));
}

TEST_F(CaptureCommandTest, ACancelledCaptureIsNoFailure) {
  useTool("exit 0");
  const auto result = capture({QStringLiteral("area"), QStringLiteral("--json")});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "{\"status\":\"Capture cancelled\"}\n");
  EXPECT_THAT(shots(), SizeIs(0));
}

TEST_F(CaptureCommandTest, FailsWithTheStatusAndShowsWhatTheProgramSaid) {
  useTool("echo 'no screen' >&2; exit 3");
  const auto result = capture({QStringLiteral("screen")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "no screen\nnimbrelctl: Capture failed; check screen recording permission\n");
}

TEST_F(CaptureCommandTest, FailsWhereThereIsNoProgram) {
  const auto result = capture({QStringLiteral("screen")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, StartsWith("nimbrelctl: Capture failed: nimbrel-screencapture cannot be started: "));
}

TEST_F(CaptureCommandTest, FailsWhenTheFolderCannotBeMade) {
  useTool("exit 0");
  home_.open(ProcessRole::tool)->settings().sources.set({home_.path("picture.png/below")});
  const auto result = capture({QStringLiteral("screen")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.errors, StartsWith("nimbrelctl: Capture failed: "));
  EXPECT_FALSE(fs::exists(home_.path("words")));
}

TEST_F(CaptureCommandTest, AProgramThatDiesFails) {
  useTool("kill -KILL $$");
  const auto result = capture({QStringLiteral("area")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "nimbrelctl: Capture failed; check screen recording permission\n");
}

TEST_F(CaptureCommandTest, ADryRunOnlySaysWhereItWouldGo) {
  useTool("exit 0");
  const auto result = capture({QStringLiteral("recordArea"), QStringLiteral("--dry-run")});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.output, StartsWith(home_.desktop("Recording ")));
  EXPECT_THAT(result.output, EndsWith(".mov\n"));
  EXPECT_FALSE(fs::exists(home_.path("words")));

  home_.open(ProcessRole::tool)->settings().captureDestination.set(CaptureDestination::library);
  const auto path = json({"capture", "screen", "--dry-run"}).object().value(QStringLiteral("path"));
  EXPECT_THAT(path.toString().toStdString(), StartsWith(home_.inLibrary("20")));
  EXPECT_FALSE(fs::exists(home_.path("Pictures")));
}

TEST_F(CaptureCommandTest, AnythingElseIsWrongUsage) {
  useTool("exit 0");
  for (const char* word : {"Selection", "Area", "", "video"}) {
    const auto result = capture({QLatin1String(word)});
    EXPECT_EQ(result.status, 2) << word;
    EXPECT_THAT(result.errors, HasSubstr("area|window|screen|recordArea|recordScreen"));
  }
  EXPECT_EQ(capture({}).status, 2);
  EXPECT_FALSE(fs::exists(home_.path("words")));
}

TEST_F(CaptureCommandTest, AnInterruptEndsARecordingAndWaitsForItsFile) {
  useRecorder("sleep 0.2; echo movie > \"$file\"; exit 0");
  const auto process = started({QStringLiteral("recordArea")});
  interrupt(*process);
  const auto result = resultOf(*process);
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "Recording saved to Desktop\n");
  const auto recording = home_.open(ProcessRole::tool)->lastRecordingURL();
  ASSERT_TRUE(recording);
  EXPECT_EQ(Testing::contentOf(*recording), "movie\n");
}

TEST_F(CaptureCommandTest, MoreInterruptsAreHarmless) {
  useRecorder("echo >> interrupts");
  const auto process = started({QStringLiteral("recordScreen")});
  interrupt(*process);
  ASSERT_TRUE(waitUntil([this] { return fs::exists(home_.path("interrupts")); }));
  interrupt(*process);
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(process->state(), QProcess::Running);
  home_.folder().write("end", "");
  EXPECT_EQ(resultOf(*process).output, "Capture cancelled\n");
  EXPECT_EQ(Testing::contentOf(home_.path("interrupts")), "\n");
}

TEST_F(CaptureCommandTest, AnInterruptAtTheKeyboardWhichReachesBothEndsARecordingToo) {
  useRecorder("echo movie > \"$file\"; exit 0");
  Testing::TerminalRun run(program_, {QStringLiteral("capture"), QStringLiteral("recordArea")},
                           Testing::environmentOf(home_.folder().path()));
  ASSERT_TRUE(waitUntil([this] { return fs::exists(home_.path("begun")); }));
  run.type("\x03");
  const auto result = run.result();
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output, "Recording saved to Desktop\n");
}

TEST_F(CaptureCommandTest, AnInterruptGivesAScreenshotUp) {
  useTool(": > begun\nwhile [ ! -e end ]; do sleep 0.02; done; : > ended");
  const auto process = started({QStringLiteral("area")});
  interrupt(*process);
  const auto result = resultOf(*process);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "nimbrelctl: interrupted\n");
  // The script does not hear of the end by itself.
  home_.folder().write("end", "");
  EXPECT_TRUE(waitUntil([this] { return fs::exists(home_.path("ended")); }));
}

TEST_F(CaptureCommandTest, AnInterruptGivesACountdownUp) {
  useTool(": > begun");
  home_.open(ProcessRole::tool)->settings().captureDelay.set(10);
  const auto process =
      Testing::startProgram(program_, {QStringLiteral("capture"), QStringLiteral("recordArea")}, home_.folder().path());
  ASSERT_TRUE(waitUntil([&] { return Testing::catchesSignal(*process, SIGINT); }));
  interrupt(*process);
  const auto result = resultOf(*process);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "nimbrelctl: interrupted\n");
  EXPECT_FALSE(fs::exists(home_.path("begun")));
}

TEST_F(CaptureCommandTest, ARecordingOutlivesATerminatedCommandAndItsFileIsKept) {
  useTool(": > begun\nwhile [ ! -e end ]; do sleep 0.02; done; echo movie > \"$file\"; : > ended");
  const auto process = started({QStringLiteral("recordArea")});
  process->terminate();
  const auto result = resultOf(*process);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.errors, "nimbrelctl: interrupted\n");
  EXPECT_FALSE(fs::exists(home_.path("ended")));
  home_.folder().write("end", "");
  EXPECT_TRUE(waitUntil([this] { return fs::exists(home_.path("ended")); }));
  EXPECT_THAT(recordings(), SizeIs(1));
}

}  // namespace
}  // namespace Nimbrel
