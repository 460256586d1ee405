#include "Foundation/Background.h"

#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <QSemaphore>

#include <atomic>
#include <memory>

namespace Nimbrel {
namespace {

TEST(Background, WorkRunsElsewhereAndItsResultComesBackToTheThreadOfTheContext) {
  QObject context;
  QThreadPool pool;
  QThread* workThread = nullptr;
  QThread* thenThread = nullptr;
  int result = 0;
  inBackground(
      &context, pool,
      [&] {
        workThread = QThread::currentThread();
        return 42;
      },
      [&](int value) {
        thenThread = QThread::currentThread();
        result = value;
      });
  ASSERT_TRUE(Testing::waitUntil([&] { return result == 42; }));
  EXPECT_NE(workThread, QThread::currentThread());
  EXPECT_EQ(thenThread, QThread::currentThread());
}

TEST(Background, AResultComesInALaterTurnHoweverSoonTheWorkIsDone) {
  QObject context;
  QThreadPool pool;
  for (int round = 0; round < 200; ++round) {
    bool told = false;
    inBackground(
        &context, pool, [] { return 1; }, [&](int) { told = true; });
    EXPECT_FALSE(told);
    ASSERT_TRUE(Testing::waitUntil([&] { return told; }));
  }
}

TEST(Background, AResultWhoseContextIsGoneIsDropped) {
  auto context = std::make_unique<QObject>();
  QThreadPool pool;
  QSemaphore mayFinish;
  std::atomic<bool> told = false;
  inBackground(
      context.get(), pool,
      [&] {
        mayFinish.acquire();
        return 1;
      },
      [&](int) { told = true; });
  context.reset();
  mayFinish.release();
  pool.waitForDone();
  QObject other;
  bool later = false;
  inBackground(
      &other, pool, [] { return 1; }, [&](int) { later = true; });
  ASSERT_TRUE(Testing::waitUntil([&] { return later; }));
  EXPECT_FALSE(told);
}

}  // namespace
}  // namespace Nimbrel
