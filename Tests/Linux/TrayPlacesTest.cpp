#include "Linux/Tray/TrayPlaces.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

const std::vector<TrayScreen> screens{{.geometry = {0, 0, 1280, 800}, .scale = 1},
                                      {.geometry = {1280, 0, 1440, 900}, .scale = 2}};

TEST(PlacesInTheTray, PixelsAreCountedFromTheCornerOfTheirScreen) {
  EXPECT_EQ(placeOfPixel({1270, 10}, screens), QRect(1270, 10, 1, 1));
  EXPECT_EQ(placeOfPixel({1280 + 2000, 20}, screens), QRect(1280 + 1000, 10, 1, 1));
}

TEST(PlacesInTheTray, WhatIsNowhereIsNotKnown) {
  EXPECT_TRUE(placeOfPixel({0, 0}, screens).isEmpty());
  EXPECT_TRUE(placeOfPixel({-5, 20}, screens).isEmpty());
  EXPECT_TRUE(placeOfPixel({9000, 20}, screens).isEmpty());
  EXPECT_TRUE(placeOfPixel({5, 5}, {}).isEmpty());
}

}  // namespace
}  // namespace Nimbrel
