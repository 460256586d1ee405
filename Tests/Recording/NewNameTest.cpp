#include "Recording/NewName.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <vector>

namespace Nimbrel {
namespace {

using RecordingProcessor::takeNewName;
using ::testing::ElementsAre;
using ::testing::SizeIs;

class NewNameTest : public ::testing::Test {
 protected:
  /// The name that is taken by the first attempt.
  [[nodiscard]] std::string nameOf(const std::string& recording) const {
    return takeNewName(folder_.path(recording), ".trimmed.mov", [](const std::string&) { return true; }).value_or("");
  }

  Testing::TemporaryFolder folder_;
};

TEST_F(NewNameTest, StandsBesideTheRecording) {
  EXPECT_EQ(nameOf("X.mov"), folder_.path("X.trimmed.mov"));
  EXPECT_EQ(nameOf("X.trimmed.mov"), folder_.path("X.trimmed.trimmed.mov"));
  EXPECT_EQ(nameOf("A b.c.mp4"), folder_.path("A b.c.trimmed.mov"));
  EXPECT_EQ(nameOf("X"), folder_.path("X.trimmed.mov"));
}

TEST_F(NewNameTest, IsTheFirstThatIsFree) {
  folder_.write("X.trimmed.mov", "");
  EXPECT_EQ(nameOf("X.mov"), folder_.path("X.trimmed 2.mov"));
}

TEST_F(NewNameTest, IsAnotherOneWhereSomebodyElseWasQuicker) {
  std::vector<std::string> asked;
  const auto name = takeNewName(folder_.path("X.mov"), ".gif", [&](const std::string& path) {
    asked.push_back(path);
    if (asked.size() == 3) return true;
    folder_.write(asked.size() == 1 ? "X.gif" : "X 2.gif", "somebody else's");
    return false;
  });
  EXPECT_EQ(name, folder_.path("X 3.gif"));
  EXPECT_THAT(asked, ElementsAre(folder_.path("X.gif"), folder_.path("X 2.gif"), folder_.path("X 3.gif")));
}

TEST_F(NewNameTest, IsAskedForOnceWhereNothingCanBeMade) {
  std::vector<std::string> asked;
  const auto refuse = [&](const std::string& path) {
    asked.push_back(path);
    return false;
  };
  EXPECT_FALSE(takeNewName(folder_.path("X.mov"), ".gif", refuse));
  EXPECT_FALSE(takeNewName("/proc/no such folder/X.mov", ".gif", refuse));
  EXPECT_THAT(asked, SizeIs(2));
}

TEST_F(NewNameTest, IsAskedForOnceWhereAllAreTaken) {
  folder_.write("X.gif", "");
  for (int number = 2; number <= 999; ++number) folder_.write("X " + std::to_string(number) + ".gif", "");
  int count = 0;
  EXPECT_FALSE(takeNewName(folder_.path("X.mov"), ".gif", [&](const std::string&) { return ++count > 1; }));
  EXPECT_EQ(count, 1);
}

}  // namespace
}  // namespace Nimbrel
