#include "Views/QuickFind/QuickFindPanel.h"
#include "Views/Shelf/CaptureShelf.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

TEST(FloatingPlaces, QuickFindStandsInTheMiddleAboveTheMiddle) {
  // The lower edge is 0.12 of 1200 above the middle, which is at 640.
  EXPECT_EQ(quickFindPlace({100, 40, 1600, 1200}, {620, 420}), QPoint(100 + 490, 496 - 420));
}

TEST(FloatingPlaces, QuickFindStaysWholeOnASmallScreen) {
  EXPECT_EQ(quickFindPlace({0, 30, 1280, 770}, {620, 420}), QPoint(330, 30));
  EXPECT_EQ(quickFindPlace({-600, 0, 600, 400}, {620, 420}), QPoint(-600, 0));
}

TEST(FloatingPlaces, TheShelfStandsAtTheLowerRight) {
  EXPECT_EQ(shelfPlace({100, 40, 1600, 1000}, {366, 190}), QPoint(100 + 1600 - 366 - 24, 40 + 1000 - 180 - 190));
}

TEST(FloatingPlaces, TheShelfStaysWholeOnASmallScreen) {
  EXPECT_EQ(shelfPlace({-300, 10, 300, 200}, {366, 190}), QPoint(-300, 10));
}

}  // namespace
}  // namespace Nimbrel
