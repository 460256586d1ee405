#include "CtlFixture.h"

#include "Support/Movies.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::HasSubstr;
using ::testing::SizeIs;
using ::testing::StartsWith;

class RecordingCommandsTest : public Testing::CtlFixture {
 protected:
  void writeRecording(const std::string& name, std::vector<double> clicks = {}) const {
    const double end = 3;
    Testing::writeMovie(home_.path(name),
                        {.times = Testing::steadyTimes(end),
                         .end = end,
                         .sound = Testing::MadeMovie::Sound{.end = end, .clicks = std::move(clicks)}});
  }

  [[nodiscard]] std::string pathOf(const std::vector<std::string>& words) const {
    return json(words).object().value(QStringLiteral("path")).toString().toStdString();
  }

  /// How many files in the home have that text in their names.
  [[nodiscard]] long filesNamed(const std::string& part) const {
    return std::ranges::count_if(std::filesystem::directory_iterator(home_.folder().path()), [&](const auto& entry) {
      return entry.path().filename().string().find(part) != std::string::npos;
    });
  }
};

TEST_F(RecordingCommandsTest, TellsTheLength) {
  writeRecording("a.mov");
  EXPECT_NEAR(json({"recording", "duration", "a.mov"}).object().value(QStringLiteral("duration")).toDouble(), 3, 0.001);
  EXPECT_EQ(ctl({"recording", "duration", "a.mov"}).output, "3.000\n");
}

TEST_F(RecordingCommandsTest, TellsWhatIsAudible) {
  writeRecording("a.mov", {0.5, 2.5});
  const auto ranges = json({"recording", "audible", "a.mov"}).array();
  ASSERT_THAT(ranges, SizeIs(2));
  EXPECT_NEAR(ranges[1].toArray()[0].toDouble(), 2.35, 0.05);
  EXPECT_NEAR(ranges[1].toArray()[1].toDouble(), 2.7, 0.07);
  writeRecording("silent.mov");
  EXPECT_THAT(json({"recording", "audible", "silent.mov"}).array(), SizeIs(0));
}

TEST_F(RecordingCommandsTest, TrimsIntoACopyBesideTheRecording) {
  writeRecording("a.mov", {1.5});
  const std::vector<std::string> words{"recording", "trim", "a.mov", "--start", "1", "--end", "2.5"};
  EXPECT_EQ(pathOf(words), home_.path("a.trimmed.mov"));
  EXPECT_EQ(ctl(words).output, home_.path("a.trimmed 2.mov") + "\n");
  const auto movie = Testing::readMovie(home_.path("a.trimmed.mov"));
  ASSERT_THAT(movie.pictures, SizeIs(45));
  EXPECT_EQ(movie.pictures.front().number, 30);
  ASSERT_THAT(movie.clicks(), SizeIs(1));
  EXPECT_NEAR(movie.clicks().front(), 0.5, 0.003);
}

TEST_F(RecordingCommandsTest, TrimLeavesSilenceOutWhenAsked) {
  writeRecording("a.mov", {0.5, 2.5});
  const auto path = pathOf({"recording", "trim", "a.mov", "--start", "0", "--end", "3", "--remove-silence"});
  const auto movie = Testing::readMovie(path);
  EXPECT_NEAR(movie.duration, 0.8, 0.15);
  EXPECT_THAT(movie.clicks(), SizeIs(2));
}

TEST_F(RecordingCommandsTest, AFileThatIsNoRecordingFails) {
  home_.addFile(home_.path("text.mov"));
  for (const auto& words :
       std::vector<std::vector<std::string>>{{"recording", "duration", "text.mov"},
                                             {"recording", "audible", "text.mov"},
                                             {"recording", "trim", "text.mov", "--start", "0", "--end", "1"}}) {
    const auto output = ctl(words);
    EXPECT_EQ(output.status, 1);
    EXPECT_EQ(output.errors, "nimbrelctl: The file is damaged or no recording\n");
  }
  EXPECT_EQ(filesNamed("trimmed"), 0);
  EXPECT_THAT(ctl({"recording", "duration", "missing.mov"}).errors,
              StartsWith("nimbrelctl: cannot read missing.mov: "));
}

TEST_F(RecordingCommandsTest, WrongUseIsTold) {
  writeRecording("a.mov");
  const auto misused = [this](const std::vector<std::string>& words) {
    const auto output = ctl(words);
    EXPECT_EQ(output.status, 2);
    return output.errors;
  };
  EXPECT_THAT(misused({"recording", "paint", "a.mov"}), HasSubstr("no such work on a recording: paint"));
  EXPECT_THAT(misused({"recording", "trim", "a.mov", "--end", "1"}), HasSubstr("--start is missing"));
  EXPECT_THAT(misused({"recording", "trim", "a.mov", "--start", "1"}), HasSubstr("--end is missing"));
  EXPECT_THAT(misused({"recording", "trim", "a.mov", "--start", "0", "--end", "1,5"}),
              HasSubstr("--end is no number of seconds: 1,5"));
  EXPECT_THAT(misused({"recording", "duration", "a.mov", "--start", "0"}), HasSubstr("all of the recording"));
  EXPECT_THAT(misused({"recording", "duration"}), HasSubstr("too few arguments"));
}

TEST_F(RecordingCommandsTest, AnInterruptedExportLeavesNoFile) {
  writeRecording("short.mov");
  Testing::repeatMovie(home_.path("short.mov"), home_.path("long.mov"), 400);
  const auto process = Testing::startProgram(
      "nimbrelctl",
      {QStringLiteral("recording"), QStringLiteral("trim"), QStringLiteral("long.mov"), QStringLiteral("--start"),
       QStringLiteral("0"), QStringLiteral("--end"), QStringLiteral("1200")},
      home_.folder().path());
  ASSERT_TRUE(Testing::waitUntil([&] { return filesNamed("long.trimmed.mov") == 1; }));
  ASSERT_EQ(::kill(static_cast<pid_t>(process->processId()), SIGINT), 0);
  ASSERT_TRUE(process->waitForFinished());
  EXPECT_EQ(process->exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(process->exitCode(), 1);
  EXPECT_EQ(process->readAllStandardError().toStdString(), "nimbrelctl: interrupted\n");
  EXPECT_EQ(filesNamed("trimmed"), 0);
  EXPECT_EQ(filesNamed(".nimbrel-"), 0);
}

}  // namespace
}  // namespace Nimbrel
