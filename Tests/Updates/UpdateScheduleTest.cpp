#include "Updates/UpdateSchedule.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

constexpr auto noon = timestamp(1'790'000'000);

TEST(UpdateSchedule, TheFirstLookIsDueAtOnce) { EXPECT_TRUE(isUpdateCheckDue(std::nullopt, noon)); }

TEST(UpdateSchedule, TheNextIsDueADayLater) {
  EXPECT_FALSE(isUpdateCheckDue(noon, noon));
  EXPECT_FALSE(isUpdateCheckDue(noon, noon + Seconds(86'399)));
  EXPECT_TRUE(isUpdateCheckDue(noon, noon + Seconds(86'400)));
}

TEST(UpdateSchedule, AClockThatWasSetBackDoesNotSilenceItForYears) {
  EXPECT_TRUE(isUpdateCheckDue(noon + Seconds(1), noon));
  EXPECT_TRUE(isUpdateCheckDue(timestamp(1e300), noon));
}

}  // namespace
}  // namespace Nimbrel
