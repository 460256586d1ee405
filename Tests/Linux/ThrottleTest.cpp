#include "Linux/Files/Throttle.h"

#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

namespace Nimbrel {

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;
using Testing::runEventLoopFor;
using Testing::waitUntil;

class ThrottleTest : public ::testing::Test {
 protected:
  void begin(Seconds interval) {
    throttle_->set([this] { calls_.push_back(steady_clock::now()); }, interval);
  }

  std::unique_ptr<Throttle> throttle_ = std::make_unique<Throttle>();
  std::vector<steady_clock::time_point> calls_;
};

}  // namespace

TEST_F(ThrottleTest, TheFirstChangeCallsAtOnce) {
  begin(Seconds(3600));
  throttle_->noteChange();
  EXPECT_TRUE(waitUntil([&] { return calls_.size() == 1; }));
}

TEST_F(ThrottleTest, ChangesMeanwhileCallOnceTheIntervalIsOver) {
  begin(Seconds(0.2));
  throttle_->noteChange();
  ASSERT_TRUE(waitUntil([&] { return calls_.size() == 1; }));
  for (int change = 0; change < 5; ++change) throttle_->noteChange();
  ASSERT_TRUE(waitUntil([&] { return calls_.size() == 2; }));
  EXPECT_GE(calls_[1] - calls_[0], 199ms);
  runEventLoopFor(300ms);
  EXPECT_EQ(calls_.size(), 2U);
}

TEST_F(ThrottleTest, ChangesThatGoOnCallOnceInEachInterval) {
  begin(Seconds(0.05));
  EXPECT_TRUE(waitUntil([&] {
    throttle_->noteChange();
    return calls_.size() == 5;
  }));
  for (std::size_t call = 1; call < calls_.size(); ++call) EXPECT_GE(calls_[call] - calls_[call - 1], 49ms);
}

TEST_F(ThrottleTest, AfterAQuietTimeAChangeCallsAtOnceAgain) {
  begin(Seconds(0.02));
  throttle_->noteChange();
  ASSERT_TRUE(waitUntil([&] { return calls_.size() == 1; }));
  runEventLoopFor(50ms);
  throttle_->set([this] { calls_.push_back(steady_clock::now()); }, Seconds(3600));
  throttle_->noteChange();
  EXPECT_TRUE(waitUntil([&] { return calls_.size() == 2; }));
}

TEST_F(ThrottleTest, AChangeNotedBeforeAnotherCallIsSetGoesToThatCall) {
  begin(Seconds(0));
  throttle_->noteChange();
  int others = 0;
  throttle_->set([&] { ++others; }, Seconds(0));
  EXPECT_TRUE(waitUntil([&] { return others == 1; }));
  EXPECT_TRUE(calls_.empty());
}

TEST_F(ThrottleTest, StoppingDropsWhatWasNoted) {
  begin(Seconds(0));
  throttle_->noteChange();
  throttle_->stop();
  runEventLoopFor(50ms);
  EXPECT_TRUE(calls_.empty());
}

TEST_F(ThrottleTest, AnIntervalThatMakesNoSenseIsNone) {
  for (const double seconds :
       {-1.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    calls_.clear();
    begin(Seconds(seconds));
    EXPECT_TRUE(waitUntil([&] {
      throttle_->noteChange();
      return calls_.size() == 2;
    }));
  }
}

TEST_F(ThrottleTest, TheCallMayDestroyIt) {
  bool called = false;
  throttle_->set(
      [&] {
        throttle_.reset();
        called = true;
      },
      Seconds(0));
  throttle_->noteChange();
  EXPECT_TRUE(waitUntil([&] { return called; }));
}

}  // namespace Nimbrel
