#include "DrawnMask.h"

#include "Reader/Components.h"

#include <gmock/gmock.h>

namespace Nimbrel::Reader {
namespace {

using Testing::drawnMask;

TEST(Components, PixelsThatTouchAtACornerBelongTogether) {
  const auto components = componentsOf(drawnMask({
      "#    ##",
      " #   ##",
      "  #    ",
  }));
  ASSERT_EQ(components.size(), 2U);
  EXPECT_EQ(components[0].box, (Box{0, 0, 3, 3}));
  EXPECT_EQ(components[0].pixels, 3);
  EXPECT_EQ(components[1].box, (Box{5, 0, 7, 2}));
  EXPECT_EQ(components[1].fill(), 1);
}

TEST(Components, ArmsThatMeetFurtherDownAreOne) {
  const auto components = componentsOf(drawnMask({
      "# # #",
      "# # #",
      "#####",
  }));
  ASSERT_EQ(components.size(), 1U);
  EXPECT_EQ(components[0].box, (Box{0, 0, 5, 3}));
  EXPECT_EQ(components[0].pixels, 11);
}

TEST(Components, AnErasedOneLeavesTheOthers) {
  auto mask = drawnMask({
      "###  #",
      "# #  #",
      "###  #",
  });
  erase(mask, componentsOf(mask)[0]);
  const auto left = componentsOf(mask);
  ASSERT_EQ(left.size(), 1U);
  EXPECT_EQ(left[0].box, (Box{5, 0, 6, 3}));
}

TEST(Components, AnEmptyMaskHasNone) { EXPECT_TRUE(componentsOf(Plane(40, 3)).empty()); }

}  // namespace
}  // namespace Nimbrel::Reader
