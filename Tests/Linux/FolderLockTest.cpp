#include "Platform/FolderLock.h"

#include "RefusedCalls.h"
#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/syscall.h>

#include <cerrno>
#include <chrono>
#include <future>
#include <optional>
#include <stop_token>
#include <thread>

namespace Nimbrel {
namespace {

class FolderLockTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::optional<FolderLock> take(const std::stop_token& stop = {}) const {
    return FolderLock::take(folder_.path(), stop);
  }
  /// Whether it could be had at once.
  [[nodiscard]] bool isFree() const {
    std::stop_source stop;
    stop.request_stop();
    return take(stop.get_token()).has_value();
  }

  Testing::TemporaryFolder folder_;
};

TEST_F(FolderLockTest, HasOneHolderAtATime) {
  auto first = take();
  ASSERT_TRUE(first.has_value());
  EXPECT_FALSE(isFree());
  first.reset();
  EXPECT_TRUE(isFree());
}

TEST_F(FolderLockTest, MovesWithItsObject) {
  auto first = take();
  ASSERT_TRUE(first.has_value());
  const auto second = std::move(*first);
  first.reset();
  EXPECT_FALSE(isFree());
}

TEST_F(FolderLockTest, IsWaitedFor) {
  auto first = take();
  std::promise<void> isTaken;
  std::jthread waiting([&] {
    if (take()) isTaken.set_value();
  });
  auto taken = isTaken.get_future();
  EXPECT_EQ(taken.wait_for(std::chrono::milliseconds(1)), std::future_status::timeout);
  first.reset();
  taken.wait();
}

TEST_F(FolderLockTest, AStopEndsTheWaiting) {
  const auto first = take();
  std::promise<bool> hasCome;
  std::jthread waiting([&](const std::stop_token& stop) { hasCome.set_value(take(stop).has_value()); });
  waiting.request_stop();
  EXPECT_FALSE(hasCome.get_future().get());
}

TEST_F(FolderLockTest, FoldersAreHeldOnTheirOwn) {
  const auto one = take();
  EXPECT_TRUE(FolderLock::take(folder_.makeFolder("another"), {}).has_value());
}

TEST_F(FolderLockTest, WithoutLocksNobodyWaits) {
  const auto first = take();
  EXPECT_TRUE(FolderLock::take(folder_.path("missing"), {}).has_value());
  EXPECT_TRUE(FolderLock::take(folder_.write("file", ""), {}).has_value());
  for (const int error : {ENOLCK, EOPNOTSUPP, EBADF}) {
    EXPECT_EQ(Testing::withRefusedCalls({{SYS_flock, error}}, [&] { return take() ? 0 : 1; }), 0) << error;
  }
}

TEST_F(FolderLockTest, AnInterruptedCallIsMadeAgain) {
  int calls = 0;
  const auto thirdTime = [&]() -> long { return ++calls < 3 ? -EINTR : 0; };
  EXPECT_EQ(Testing::withAnsweredCall(SYS_flock, thirdTime, [&] { return take() ? calls : 0; }), 3);
}

}  // namespace
}  // namespace Nimbrel
