#include "App/HeadlessRun.h"

#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <sstream>

namespace Nimbrel {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using Testing::runProgram;
using Testing::setModificationTime;
using ::testing::StartsWith;
using Testing::StoreHome;
using Testing::writePicture;

std::vector<std::string> linesOf(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

class HeadlessRunTest : public ::testing::Test {
 protected:
  [[nodiscard]] Testing::ProgramOutput run(const QStringList& arguments) const {
    return runProgram("nimbrel", arguments, home_.folder().path());
  }

  StoreHome home_;
};

TEST_F(HeadlessRunTest, AnEmptyCataloguePrintsTwoLinesWithZeros) {
  const auto output = run({QStringLiteral("--scan")});
  EXPECT_EQ(output.status, 0);
  EXPECT_EQ(output.output, "0 shots indexed, 0 waiting in the Inbox\nhashed 0, 0 look sensitive\n");
  EXPECT_EQ(output.errors, "");
}

TEST_F(HeadlessRunTest, ListsTheNewestTwentyInTheExactForm) {
  for (int i = 0; i < 25; ++i) {
    const auto path = home_.addFile(home_.desktop("Screenshot " + std::to_string(i) + ".png"));
    setModificationTime(path, 1'700'000'000 + i * 3600);
  }
  home_.addFile(home_.inLibrary("filed.png"));
  setModificationTime(home_.inLibrary("filed.png"), 1'600'000'000);
  const auto lines = linesOf(run({QStringLiteral("--scan")}).output);
  ASSERT_EQ(lines.size(), 22U);
  EXPECT_EQ(lines[0], "26 shots indexed, 25 waiting in the Inbox");
  EXPECT_EQ(lines[1], "hashed 0, 0 look sensitive");
  EXPECT_EQ(lines[2], "  Nov 15, 2023, 10:13\u202FPM  Screenshot 24.png  10 bytes");
  EXPECT_THAT(lines[21], HasSubstr("  Screenshot 5.png  "));
}

TEST_F(HeadlessRunTest, AnApplicationStandsInBrackets) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  setModificationTime(path, 1'700'000'000);
  {
    const auto store = home_.open(ProcessRole::tool);
    store->importFiles({path});
    store->database().setApp(store->shots().front()->id, "Terminal", "", Database::Trusted::Yes);
  }
  EXPECT_EQ(linesOf(run({QStringLiteral("--scan")}).output).at(2),
            "  Nov 14, 2023, 10:13\u202FPM  Screenshot 1.png  10 bytes  [Terminal]");
}

TEST_F(HeadlessRunTest, VerbosePrintsTheHashOfEachPendingShot) {
  writePicture(home_.desktop("Screenshot 1.png"), 200, 100, 1);
  const auto lines = linesOf(run({QStringLiteral("--scan"), QStringLiteral("--verbose")}).output);
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_THAT(lines[0], MatchesRegex("  [0-9a-f]{16}  Screenshot 1\\.png"));
  EXPECT_EQ(lines[1], "1 shots indexed, 1 waiting in the Inbox");
  EXPECT_EQ(lines[2], "hashed 1, 0 look sensitive");
  EXPECT_EQ(linesOf(run({QStringLiteral("--scan"), QStringLiteral("--verbose")}).output).at(1),
            "hashed 0, 0 look sensitive");
}

TEST_F(HeadlessRunTest, CountsWhatLooksSensitive) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  {
    const auto store = home_.open(ProcessRole::tool);
    store->importFiles({path});
    store->database().setOCR(store->shots().front()->id, "ann@example.com", {});
  }
  EXPECT_EQ(linesOf(run({QStringLiteral("--scan")}).output).at(1), "hashed 0, 1 look sensitive");
}

TEST_F(HeadlessRunTest, LeavesTextRecognitionPending) {
  writePicture(home_.desktop("Screenshot 1.png"));
  EXPECT_EQ(run({QStringLiteral("--scan")}).status, 0);
  EXPECT_EQ(home_.open(ProcessRole::tool)->database().pendingOCR(10).size(), 1U);
}

TEST_F(HeadlessRunTest, ACatalogueThatCannotBeOpenedEndsWithOneLineAndStatusOne) {
  home_.folder().makeFolder(".local/share/Nimbrel/nimbrel.sqlite");
  const auto output = run({QStringLiteral("--scan")});
  EXPECT_EQ(output.status, 1);
  EXPECT_EQ(output.output, "");
  EXPECT_EQ(output.errors,
            "nimbrel: Cannot open database at " + home_.path(".local/share/Nimbrel/nimbrel.sqlite") + "\n");
}

}  // namespace
}  // namespace Nimbrel
