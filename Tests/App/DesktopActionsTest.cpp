#include "App/DesktopActions.h"

#include "Support/FakeScreenCaptureTool.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

class DesktopActionsTest : public ::testing::Test {
 protected:
  DesktopActionsTest() {
    Services services;
    auto tool = std::make_unique<Testing::FakeScreenCaptureTool>();
    tool_ = tool.get();
    services.screenCaptureTool = std::move(tool);
    store_ = home_.open(ProcessRole::tool, std::move(services));
  }
  /// What the program for captures was told, without the file to write.
  [[nodiscard]] std::vector<std::string> toldFor(const std::string& action) {
    const DesktopActions actions(*store_);
    EXPECT_TRUE(actions.run(action, {}));
    EXPECT_TRUE(waitUntil([this] { return !tool_->launched.empty(); }));
    auto arguments = tool_->launched.back();
    arguments.pop_back();
    return arguments;
  }
  [[nodiscard]] static std::vector<std::string> argumentsOf(CaptureMode mode) {
    auto arguments = captureArguments(mode, "file");
    arguments.pop_back();
    return arguments;
  }

  Testing::StoreHome home_;
  Testing::FakeScreenCaptureTool* tool_ = nullptr;
  std::unique_ptr<Store> store_;
};

TEST_F(DesktopActionsTest, SelectionTakesAnArea) { EXPECT_EQ(toldFor("selection"), argumentsOf(CaptureMode::area)); }

TEST_F(DesktopActionsTest, WindowTakesAWindow) { EXPECT_EQ(toldFor("window"), argumentsOf(CaptureMode::window)); }

TEST_F(DesktopActionsTest, ScreenTakesTheScreen) { EXPECT_EQ(toldFor("screen"), argumentsOf(CaptureMode::screen)); }

TEST_F(DesktopActionsTest, RecordBeginsARecordingAndEndsTheOneThatRuns) {
  EXPECT_EQ(toldFor("record"), argumentsOf(CaptureMode::recordArea));
  EXPECT_EQ(tool_->interrupts(), 0);
  const DesktopActions actions(*store_);
  ASSERT_TRUE(store_->recording());
  EXPECT_TRUE(actions.run("record", {}));
  EXPECT_EQ(tool_->interrupts(), 1);
  EXPECT_EQ(tool_->launched.size(), 1U);
}

TEST_F(DesktopActionsTest, OurWindowsAreNotInThePicture) {
  int hidden = 0;
  QObject::connect(store_.get(), &Store::hidingRequested, store_.get(), [&] { ++hidden; });
  (void)toldFor("screen");
  EXPECT_EQ(hidden, 1);
}

TEST_F(DesktopActionsTest, WhatIsAddedIsDoneWithItsToken) {
  DesktopActions actions(*store_);
  std::string given;
  EXPECT_FALSE(actions.run("find", "token"));
  actions.add("find", [&](const std::string& token) { given = token; });
  EXPECT_TRUE(actions.run("find", "token"));
  EXPECT_EQ(given, "token");
}

}  // namespace
}  // namespace Nimbrel
