#include "Screencapture/ScreenRecording.h"

#include "Platform/MediaFile.h"
#include "Screencapture/PaintedScreen.h"
#include "Screencapture/SoundServer.h"
#include "Support/DesktopSession.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace Nimbrel::Screencapture {

namespace {

using Testing::waitUntil;

class ScreenRecordingTest : public ::testing::Test {
 protected:
  void record(const QRect& area, ScreenRecording::Then then = {}) {
    const CaptureRequest request{
        .subject = CaptureRequest::Subject::selection, .kind = CaptureRequest::Kind::movie, .path = path_};
    recording_ = recordScreen(context_.get(), area, request, [this, then](const std::optional<Error>& failure) {
      ++ends_;
      failure_ = failure;
      if (then) then(failure);
    });
  }
  [[nodiscard]] bool hasEnded() {
    return waitUntil([this] { return ends_ > 0; });
  }
  [[nodiscard]] bool isFolderEmpty() const { return std::filesystem::is_empty(folder_.path()); }

  Testing::TemporaryFolder folder_;
  std::string path_ = folder_.path("Recording.mov");
  Testing::NoSoundServer silence_;
  Testing::DesktopSession session_;
  Testing::PaintedScreen screen_{Qt::red};
  std::unique_ptr<QObject> context_ = std::make_unique<QObject>();
  std::unique_ptr<ScreenRecording> recording_;
  std::optional<Error> failure_;
  int ends_ = 0;
};

TEST_F(ScreenRecordingTest, StoppedAtOnceItIsAMovieAllTheSame) {
  record({100, 100, 65, 49});
  recording_->stop();
  recording_->stop();
  EXPECT_EQ(ends_, 0) << "it is told within a call";
  EXPECT_TRUE(hasEnded());
  EXPECT_EQ(failure_, std::nullopt);
  const auto pictures = MediaFile::FrameGrabber::open(path_);
  ASSERT_TRUE(pictures);
  const auto frame = pictures.value()->frameAt(0);
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame.value().size(), QSize(64, 48));
  recording_->stop();
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(ends_, 1);
}

TEST_F(ScreenRecordingTest, WhoHearsOfItsEndMayDestroyIt) {
  record({100, 100, 64, 48}, [this](const auto&) { recording_.reset(); });
  recording_->stop();
  EXPECT_TRUE(hasEnded());
  EXPECT_EQ(recording_, nullptr);
}

TEST_F(ScreenRecordingTest, WithItsContextItIsGivenUp) {
  record({100, 100, 64, 48});
  ASSERT_TRUE(waitUntil([this] { return !isFolderEmpty(); }));
  context_.reset();
  EXPECT_TRUE(isFolderEmpty());
  recording_->stop();
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(ends_, 0);
}

TEST_F(ScreenRecordingTest, DestroyedItLeavesNothing) {
  record({100, 100, 64, 48});
  ASSERT_TRUE(waitUntil([this] { return !isFolderEmpty(); }));
  recording_.reset();
  EXPECT_TRUE(isFolderEmpty());
  EXPECT_EQ(ends_, 0);
}

TEST_F(ScreenRecordingTest, AnAreaOffTheScreenIsAnError) {
  record({1200, 100, 200, 100});
  EXPECT_TRUE(hasEnded());
  EXPECT_NE(failure_, std::nullopt);
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(ScreenRecordingTest, AnAreaTooSmallForAMovieIsAnError) {
  record({100, 100, 1, 200});
  EXPECT_TRUE(hasEnded());
  EXPECT_EQ(failure_ ? failure_->message : "", "The area to record is too small for a movie");
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(ScreenRecordingTest, AFolderThatIsNotThereIsAnError) {
  path_ = folder_.path("none/Recording.mov");
  record({100, 100, 64, 48});
  EXPECT_TRUE(hasEnded());
  EXPECT_NE(failure_, std::nullopt);
}

}  // namespace

}  // namespace Nimbrel::Screencapture
