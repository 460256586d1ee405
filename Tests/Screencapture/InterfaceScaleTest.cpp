#include "Screencapture/InterfaceScale.h"

#include <gtest/gtest.h>

namespace Nimbrel::Screencapture {

namespace {

TEST(InterfaceScale, IsOneUnlessSomethingIsSaid) {
  EXPECT_EQ(interfaceScale({}, "DP-1", 0), 1);
  EXPECT_EQ(interfaceScale({.factor = "much", .screenFactors = "so;so"}, "DP-1", 0), 1);
  EXPECT_EQ(interfaceScale({.factor = "-2", .screenFactors = "DP-1=0"}, "DP-1", 0), 1);
}

TEST(InterfaceScale, FollowsTheResolutionOfType) {
  EXPECT_EQ(interfaceScale({.dotsPerInch = 144}, "DP-1", 0), 1.5);
  EXPECT_EQ(interfaceScale({.factor = "2", .dotsPerInch = 144}, "DP-1", 0), 3);
}

TEST(InterfaceScale, MonitorsHaveTheirOwn) {
  EXPECT_EQ(interfaceScale({.screenFactors = "2;1.5"}, "DP-1", 1), 1.5);
  EXPECT_EQ(interfaceScale({.screenFactors = "2;1.5"}, "DP-1", 2), 1);
  EXPECT_EQ(interfaceScale({.screenFactors = "DP-2=2;DP-1=1.25"}, "DP-1", 0), 1.25);
  EXPECT_EQ(interfaceScale({.screenFactors = "DP-2=2", .dotsPerInch = 192}, "DP-2", 0), 2) << "instead of that of type";
}

TEST(InterfaceScale, StaysWithinReason) {
  EXPECT_EQ(interfaceScale({.factor = "0.2"}, "DP-1", 0), 1);
  EXPECT_EQ(interfaceScale({.factor = "1000000000000"}, "DP-1", 0), 4);
}

TEST(InterfaceScale, FindsTheResolutionAmongResources) {
  EXPECT_EQ(typeResolution("XTerm*font:\tfixed\nXft.dpi:\t192\nXft.hinting: 1\n"), 192);
  EXPECT_EQ(typeResolution("*Xft.dpi: 192"), 0);
  EXPECT_EQ(typeResolution("Xft.dpi: none"), 0);
  EXPECT_EQ(typeResolution(""), 0);
}

}  // namespace

}  // namespace Nimbrel::Screencapture
