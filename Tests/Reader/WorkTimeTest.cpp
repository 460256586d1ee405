#include "Reader/WorkTime.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace Nimbrel::Reader {
namespace {

using namespace std::chrono_literals;

TEST(WorkTime, DoesNotGoByWhileTheProcessWaits) {
  const WorkTime time;
  std::this_thread::sleep_for(400ms);
  EXPECT_LT(time.spent(), 200ms);
}

TEST(WorkTime, CountsTheWorkOfAllThreads) {
  const WorkTime time;
  std::atomic<bool> isDone = false;
  std::jthread worker([&] {
    while (!isDone) {
    }
  });
  const auto limit = std::chrono::steady_clock::now() + 20s;
  while (time.spent() < 100ms && std::chrono::steady_clock::now() < limit) std::this_thread::sleep_for(10ms);
  isDone = true;
  EXPECT_GE(time.spent(), 100ms);
}

}  // namespace
}  // namespace Nimbrel::Reader
