#include "Screencapture/StopControlPlace.h"

#include <gtest/gtest.h>

namespace Nimbrel::Screencapture {

namespace {

const QRect monitor(100, 0, 1000, 800);
constexpr QSize control(120, 40);

TEST(StopControlPlaceTest, BelowTheAreaAtItsMiddleWhereThereIsRoom) {
  const QRect area(400, 200, 301, 200);
  const auto place = stopControlPlace(area, monitor, control);
  EXPECT_EQ(place.size(), control);
  EXPECT_EQ(place.top(), 412);
  EXPECT_NEAR(place.center().x(), area.center().x(), 1);
}

TEST(StopControlPlaceTest, AboveItWhereThereIsNoneBelow) {
  const auto place = stopControlPlace({400, 200, 300, 590}, monitor, control);
  EXPECT_EQ(place.bottom(), 187);
}

TEST(StopControlPlaceTest, ToTheRightAndElseToTheLeftOfATallOne) {
  EXPECT_EQ(stopControlPlace({400, 0, 300, 800}, monitor, control).left(), 712);
  EXPECT_EQ(stopControlPlace({400, 0, 690, 800}, monitor, control).right(), 387);
}

TEST(StopControlPlaceTest, InTheCornerOfOneThatLeavesNoRoom) {
  EXPECT_EQ(stopControlPlace(monitor, monitor, control).bottomRight(), monitor.bottomRight() - QPoint(12, 12));
  const QRect large(150, 30, 900, 740);
  EXPECT_EQ(stopControlPlace(large, monitor, control).bottomRight(), large.bottomRight() - QPoint(12, 12));
}

TEST(StopControlPlaceTest, OfAnAreaOverSeveralMonitorsTheOneCounts) {
  const QRect all(0, 0, 5000, 800);
  EXPECT_EQ(stopControlPlace(all, monitor, control).bottomRight(), monitor.bottomRight() - QPoint(12, 12));
  EXPECT_EQ(stopControlPlace({0, 0, 5000, 400}, monitor, control).top(), 412);
}

TEST(StopControlPlaceTest, OfAnUnknownAreaTheMonitorsCorner) {
  EXPECT_EQ(stopControlPlace({}, monitor, control).bottomRight(), monitor.bottomRight() - QPoint(12, 12));
  EXPECT_EQ(stopControlPlace({5000, 0, 100, 100}, monitor, control).bottomRight(),
            monitor.bottomRight() - QPoint(12, 12));
}

TEST(StopControlPlaceTest, IsAlwaysOnTheMonitorAndOutsideIfItCan) {
  for (int x = 0; x < 1200; x += 70) {
    for (int y = 0; y < 900; y += 70) {
      for (const QSize size : {QSize(2, 2), QSize(400, 300), QSize(1000, 20), QSize(20, 800)}) {
        const QRect area(QPoint(x, y), size);
        const auto place = stopControlPlace(area, monitor, control);
        ASSERT_TRUE(monitor.contains(place)) << x << " " << y;
        ASSERT_FALSE(place.intersects(area)) << x << " " << y;
      }
    }
  }
}

TEST(StopControlPlaceTest, AMonitorSmallerThanTheControlShowsItsBeginning) {
  EXPECT_EQ(stopControlPlace({0, 0, 50, 20}, {0, 0, 50, 20}, control).topLeft(), QPoint(0, 0));
}

}  // namespace

}  // namespace Nimbrel::Screencapture
