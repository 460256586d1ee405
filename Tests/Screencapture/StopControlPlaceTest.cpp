#include "Screencapture/StopControlPlace.h"

#include <gtest/gtest.h>

namespace Nimbrel::Screencapture {

namespace {

const QRect monitor(100, 0, 1000, 800);
constexpr QSize control(120, 40);

QRect outside(const QRect& area) {
  const auto place = placeOutside(area, monitor, control);
  EXPECT_TRUE(place);
  return place.value_or(QRect());
}

QPoint cornerOf(const QRect& area) { return area.bottomRight() - QPoint(12, 12); }

TEST(StopControlPlaceTest, BelowTheAreaAtItsMiddleWhereThereIsRoom) {
  const QRect area(400, 200, 301, 200);
  const auto place = outside(area);
  EXPECT_EQ(place.size(), control);
  EXPECT_EQ(place.top(), 412);
  EXPECT_NEAR(place.center().x(), area.center().x(), 1);
}

TEST(StopControlPlaceTest, AboveItWhereThereIsNoneBelow) {
  const auto place = outside({400, 200, 300, 590});
  EXPECT_EQ(place.bottom(), 187);
}

TEST(StopControlPlaceTest, ToTheRightAndElseToTheLeftOfATallOne) {
  EXPECT_EQ(outside({400, 0, 300, 800}).left(), 712);
  EXPECT_EQ(outside({400, 0, 690, 800}).right(), 387);
}

TEST(StopControlPlaceTest, InTheCornerOfOneThatLeavesNoRoom) {
  for (const auto& area : {monitor, QRect(150, 30, 900, 740)}) {
    EXPECT_FALSE(placeOutside(area, monitor, control));
    EXPECT_EQ(placeInside(area, monitor, control).bottomRight(), cornerOf(area));
  }
}

TEST(StopControlPlaceTest, OfAnAreaOverSeveralMonitorsTheOneCounts) {
  const QRect all(0, 0, 5000, 800);
  EXPECT_FALSE(placeOutside(all, monitor, control));
  EXPECT_EQ(placeInside(all, monitor, control).bottomRight(), cornerOf(monitor));
  EXPECT_EQ(outside({0, 0, 5000, 400}).top(), 412);
}

TEST(StopControlPlaceTest, OfAnAreaElsewhereTheMonitorsCorner) {
  for (const auto& area : {QRect(), QRect(5000, 0, 100, 100)}) {
    EXPECT_EQ(outside(area).bottomRight(), cornerOf(monitor));
  }
}

TEST(StopControlPlaceTest, IsAlwaysOnTheMonitorAndOutsideIfItCan) {
  for (int x = 0; x < 1200; x += 70) {
    for (int y = 0; y < 900; y += 70) {
      for (const QSize size : {QSize(2, 2), QSize(400, 300), QSize(1000, 20), QSize(20, 800)}) {
        const QRect area(QPoint(x, y), size);
        const auto place = outside(area);
        ASSERT_TRUE(monitor.contains(place)) << x << " " << y;
        ASSERT_FALSE(place.intersects(area)) << x << " " << y;
      }
    }
  }
}

TEST(StopControlPlaceTest, AMonitorSmallerThanTheControlShowsItsBeginning) {
  EXPECT_EQ(placeInside({0, 0, 50, 20}, {0, 0, 50, 20}, control).topLeft(), QPoint(0, 0));
}

}  // namespace

}  // namespace Nimbrel::Screencapture
