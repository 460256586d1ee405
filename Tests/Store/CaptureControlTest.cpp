#include "Store/CaptureControl.h"

#include "Support/FakeScreenCaptureTool.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <chrono>
#include <optional>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using Testing::waitUntil;

class CaptureControlTest : public ::testing::Test {
 protected:
  bool accept() {
    return control_->accept(0s, [this] { ++accepted_; });
  }
  void accepted() {
    ASSERT_TRUE(accept());
    ASSERT_TRUE(waitUntil([this] { return accepted_ == 1; }));
  }
  std::optional<Error> launch(CaptureMode mode) {
    return control_->launch(mode, "/somewhere/file", [this](int exitStatus) {
      wasIdleAtItsEnd_ = !control_->isBusy() && !control_->isRecording();
      exitStatus_ = exitStatus;
    });
  }

  Testing::FakeScreenCaptureTool tool_;
  std::unique_ptr<CaptureControl> control_ = std::make_unique<CaptureControl>(tool_, nullptr);
  int accepted_ = 0;
  std::optional<int> exitStatus_;
  bool wasIdleAtItsEnd_ = false;
};

TEST_F(CaptureControlTest, IsIdleAtFirst) {
  EXPECT_FALSE(control_->isBusy());
  EXPECT_FALSE(control_->isRecording());
  control_->stopRecording();
  EXPECT_EQ(tool_.interrupts(), 0);
}

TEST_F(CaptureControlTest, EvenWithoutADelayItGoesOnInALaterTurn) {
  EXPECT_TRUE(accept());
  EXPECT_TRUE(control_->isBusy());
  EXPECT_EQ(accepted_, 0);
  EXPECT_TRUE(waitUntil([this] { return accepted_ == 1; }));
  EXPECT_TRUE(control_->isBusy());
}

TEST_F(CaptureControlTest, AcceptsOneAtATime) {
  EXPECT_TRUE(accept());
  EXPECT_FALSE(accept());
  EXPECT_TRUE(waitUntil([this] { return accepted_ == 1; }));
  EXPECT_FALSE(accept());
  Testing::runEventLoopFor(20ms);
  EXPECT_EQ(accepted_, 1);
}

TEST_F(CaptureControlTest, WaitsForAsLongAsItIsTold) {
  EXPECT_TRUE(control_->accept(10s, [this] { ++accepted_; }));
  Testing::runEventLoopFor(20ms);
  EXPECT_EQ(accepted_, 0);
  EXPECT_EQ(control_->findChild<QTimer*>()->intervalAsDuration(), 10s);
}

TEST_F(CaptureControlTest, IsIdleAgainOnceItWasGivenUp) {
  accepted();
  control_->giveUp();
  EXPECT_FALSE(control_->isBusy());
  EXPECT_TRUE(accept());
}

TEST_F(CaptureControlTest, IsIdleByTheTimeTheEndIsTold) {
  accepted();
  EXPECT_EQ(launch(CaptureMode::recordArea), std::nullopt);
  EXPECT_TRUE(control_->isBusy());
  EXPECT_TRUE(control_->isRecording());
  EXPECT_THAT(tool_.launched, ElementsAre(ElementsAre("-v", "-i", "-Jvideo", "-d", "/somewhere/file")));
  tool_.end(4);
  EXPECT_EQ(exitStatus_, 4);
  EXPECT_TRUE(wasIdleAtItsEnd_);
}

TEST_F(CaptureControlTest, APictureIsNoRecording) {
  accepted();
  EXPECT_EQ(launch(CaptureMode::screen), std::nullopt);
  EXPECT_TRUE(control_->isBusy());
  EXPECT_FALSE(control_->isRecording());
  control_->stopRecording();
  EXPECT_EQ(tool_.interrupts(), 0);
}

TEST_F(CaptureControlTest, SaysWhyAProgramCouldNotBeStartedAndIsIdle) {
  tool_.refusal = Error{"there is none"};
  accepted();
  EXPECT_EQ(launch(CaptureMode::recordArea), Error{"there is none"});
  EXPECT_FALSE(control_->isBusy());
  EXPECT_FALSE(control_->isRecording());
}

TEST_F(CaptureControlTest, OnceItIsGoneTheEndIsToldToNobody) {
  accepted();
  EXPECT_EQ(launch(CaptureMode::recordArea), std::nullopt);
  control_.reset();
  EXPECT_EQ(tool_.interrupts(), 0) << "the recording goes on";
  tool_.end(0);
  EXPECT_EQ(exitStatus_, std::nullopt);
}

}  // namespace
}  // namespace Nimbrel
