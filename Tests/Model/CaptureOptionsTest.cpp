#include "Model/CaptureOptions.h"

#include <gmock/gmock.h>

#include <string_view>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;

TEST(CaptureOptionsTest, TheModesAreKnownByTheseTextsInThisOrder) {
  std::vector<std::string_view> texts;
  for (const auto mode : allCaptureModes) texts.push_back(rawValue(mode));
  EXPECT_THAT(texts, ElementsAre("Selection", "Window", "Main Screen", "Record Selection", "Record Main Screen"));
}

TEST(CaptureOptionsTest, TheLastTwoModesRecord) {
  std::vector<bool> records;
  for (const auto mode : allCaptureModes) records.push_back(isRecording(mode));
  EXPECT_THAT(records, ElementsAre(false, false, false, true, true));
}

TEST(CaptureOptionsTest, ThePathComesLastAndBehindItsOption) {
  const auto arguments = [](CaptureMode mode) { return captureArguments(mode, "/a b/c.png"); };
  EXPECT_THAT(arguments(CaptureMode::area), ElementsAre("-i", "-s", "-d", "/a b/c.png"));
  EXPECT_THAT(arguments(CaptureMode::window), ElementsAre("-i", "-w", "-d", "/a b/c.png"));
  EXPECT_THAT(arguments(CaptureMode::screen), ElementsAre("-m", "-d", "/a b/c.png"));
  EXPECT_THAT(arguments(CaptureMode::recordArea), ElementsAre("-v", "-i", "-Jvideo", "-d", "/a b/c.png"));
  EXPECT_THAT(arguments(CaptureMode::recordScreen), ElementsAre("-v", "-m", "-d", "/a b/c.png"));
}

TEST(CaptureOptionsTest, TheDestinationsAreKnownByTheseTextsInThisOrder) {
  std::vector<std::string_view> texts;
  for (const auto destination : allCaptureDestinations) texts.push_back(rawValue(destination));
  EXPECT_THAT(texts, ElementsAre("Inbox", "Library"));
}

}  // namespace
}  // namespace Nimbrel
