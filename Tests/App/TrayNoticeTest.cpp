#include "App/TrayNotice.h"

#include "Support/FakeTrayIcon.h"
#include "Support/LogRecorder.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <optional>

namespace Nimbrel {
namespace {

using namespace std::chrono_literals;
using ::testing::IsEmpty;
using Testing::waitUntil;

class TrayNoticeTest : public ::testing::Test {
 protected:
  void watch(std::chrono::milliseconds patience = 0ms) { notice_.emplace(*store_, tray_, patience); }
  [[nodiscard]] bool isSaid() {
    return waitUntil([this] { return !log_.lines().empty(); });
  }

  const Testing::LogRecorder log_;
  Testing::StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::tool);
  Testing::FakeTrayIcon tray_;
  std::optional<TrayNotice> notice_;
};

TEST_F(TrayNoticeTest, ADesktopWithoutATrayIsToldOfInOneLine) {
  watch();
  tray_.tellHost(false);
  ASSERT_TRUE(isSaid());
  EXPECT_THAT(store_->status(), ::testing::StartsWith("This desktop has no tray"));
  EXPECT_EQ(log_.lines(), std::vector{store_->status()});
  tray_.tellHost(true);
  tray_.tellHost(false);
  Testing::runEventLoopFor(50ms);
  EXPECT_EQ(log_.lines().size(), 1U) << "once is enough";
}

TEST_F(TrayNoticeTest, ATrayThatComesInTimeIsNotMissed) {
  watch(1h);
  tray_.tellHost(false);
  tray_.tellHost(true);
  Testing::runEventLoopFor(50ms);
  EXPECT_THAT(log_.lines(), IsEmpty());
  EXPECT_EQ(store_->status(), "");
}

TEST_F(TrayNoticeTest, NobodyIsToldWhoWantsNoIcon) {
  store_->setShowMenuBar(false);
  watch();
  tray_.tellHost(false);
  Testing::runEventLoopFor(50ms);
  EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(TrayNoticeTest, AnotherMessageStays) {
  store_->setStatus("Captured");
  watch();
  tray_.tellHost(false);
  ASSERT_TRUE(isSaid());
  EXPECT_EQ(store_->status(), "Captured");
}

TEST_F(TrayNoticeTest, ItsEndIsTheEndOfWatching) {
  watch();
  EXPECT_TRUE(tray_.isObserved());
  notice_.reset();
  EXPECT_FALSE(tray_.isObserved());
}

}  // namespace
}  // namespace Nimbrel
