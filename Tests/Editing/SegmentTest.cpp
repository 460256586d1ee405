#include "Editing/Segment.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

const QRectF area(0, 0, 100, 50);

TEST(Segment, WhatLiesInsideStaysAsItIs) {
  const QLineF line(10, 10, 90, 40);
  EXPECT_EQ(clipped(line, area), line);
  const QLineF point(10, 10, 10, 10);
  EXPECT_EQ(clipped(point, area), point);
}

TEST(Segment, EndsAtTheEdges) {
  EXPECT_EQ(clipped({-100, 25, 200, 25}, area), QLineF(0, 25, 100, 25));
  EXPECT_EQ(clipped({50, 75, 50, 25}, area), QLineF(50, 50, 50, 25));
  EXPECT_EQ(clipped({-25, -25, 125, 125}, area), QLineF(0, 0, 50, 50));
}

TEST(Segment, KeepsItsDirectionHoweverLongItIs) {
  const auto piece = clipped({-1e12, -5e11 + 25, 1e12, 5e11 + 25}, area);
  ASSERT_TRUE(piece);
  EXPECT_NEAR(piece->y1(), 25 + piece->x1() / 2, 0.01);
  EXPECT_NEAR(piece->y2(), 25 + piece->x2() / 2, 0.01);
}

TEST(Segment, WhatPassesByIsGone) {
  for (const QLineF line :
       {QLineF(-10, 10, -5, 40), QLineF(0, 60, 100, 60), QLineF(90, -30, 130, 30), QLineF(200, 200, 200, 200)}) {
    EXPECT_FALSE(clipped(line, area));
  }
}

}  // namespace
}  // namespace Nimbrel
