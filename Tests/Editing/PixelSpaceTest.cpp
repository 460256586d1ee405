#include "Editing/PixelSpace.h"

#include <gtest/gtest.h>

#include <limits>

namespace Nimbrel::Flatten {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

Annotation between(QPointF start, QPointF end, Annotation::Kind kind = Annotation::Kind::box) {
  return {.kind = kind, .start = start, .end = end};
}

TEST(MarkSizes, GrowWithTheWidth) {
  const MarkSizes sizes({4200, 10});
  EXPECT_DOUBLE_EQ(sizes.lineWidth, 10);
  EXPECT_NEAR(sizes.labelFont, 93.33, 0.004);
  EXPECT_DOUBLE_EQ(sizes.stepRadius, 60);
  EXPECT_DOUBLE_EQ(sizes.stepFont, 75);
  EXPECT_NEAR(sizes.blurRadius, 32.31, 0.004);
  EXPECT_DOUBLE_EQ(sizes.arrowHead(0), 40);
  EXPECT_DOUBLE_EQ(sizes.arrowHead(200), 50);
  EXPECT_DOUBLE_EQ(sizes.arrowHead(4000), 90);
}

TEST(MarkSizes, HaveALeastSize) {
  for (const int width : {420, 1}) {
    const MarkSizes sizes({width, 5000});
    EXPECT_DOUBLE_EQ(sizes.lineWidth, 2);
    EXPECT_DOUBLE_EQ(sizes.labelFont, 18);
    EXPECT_DOUBLE_EQ(sizes.stepRadius, 14);
    EXPECT_DOUBLE_EQ(sizes.stepFont, 17.5);
    EXPECT_DOUBLE_EQ(sizes.blurRadius, 6);
    EXPECT_DOUBLE_EQ(sizes.arrowHead(0), 8);
    EXPECT_DOUBLE_EQ(sizes.arrowHead(1000), 18);
  }
}

TEST(MarkSizes, LeaveTheirLeastOneByOne) {
  EXPECT_GT(MarkSizes({841, 1}).lineWidth, 2);
  EXPECT_GT(MarkSizes({811, 1}).labelFont, 18);
  EXPECT_GT(MarkSizes({981, 1}).stepRadius, 14);
  EXPECT_GT(MarkSizes({781, 1}).blurRadius, 6);
  EXPECT_DOUBLE_EQ(MarkSizes({840, 1}).lineWidth, 2);
  EXPECT_DOUBLE_EQ(MarkSizes({810, 1}).labelFont, 18);
  EXPECT_DOUBLE_EQ(MarkSizes({980, 1}).stepRadius, 14);
  EXPECT_DOUBLE_EQ(MarkSizes({780, 1}).blurRadius, 6);
}

TEST(PixelSpace, ScalesEachAxisByItself) {
  EXPECT_EQ(inPixels(QPointF(0.25, 0.75), {400, 200}), QPointF(100, 150));
  EXPECT_EQ(inPixels(between({0.5, 0.75}, {0.25, 0.25}), {400, 200}), QRectF(100, 50, 100, 100));
}

TEST(PixelSpace, KeepsWhatIsEndlessWithinReach) {
  const auto rect = inPixels(between({-infinity, -infinity}, {infinity, infinity}), {400, 200});
  EXPECT_LT(rect.left(), -1e6);
  EXPECT_GT(rect.right(), 1e6);
  EXPECT_EQ(touchedPixels(rect, {400, 200}), QRect(0, 0, 400, 200));
}

TEST(PixelSpace, APixelIsTouchedWereItByASliver) {
  EXPECT_EQ(touchedPixels({10, 20, 5, 6}, {100, 100}), QRect(10, 20, 5, 6));
  EXPECT_EQ(touchedPixels({10.9, 20.99, 0.2, 0.02}, {100, 100}), QRect(10, 20, 2, 2));
}

TEST(PixelSpace, RoundingOfTheSumCostsNoPixel) {
  // 0.07 * 100 is 7.000000000000001, 0.29 * 100 is 28.999999999999996.
  EXPECT_EQ(touchedPixels(inPixels(between({0.29, 0.29}, {0.07, 0.07}), {100, 100}), {100, 100}), QRect(7, 7, 22, 22));
}

TEST(PixelSpace, OnlyPixelsOfThePictureAreTouched) {
  EXPECT_EQ(touchedPixels({-50, 90, 60, 60}, {100, 100}), QRect(0, 90, 10, 10));
  for (const auto& outside : {QRectF(-50, 0, 40, 100), QRectF(100, 0, 5, 5), QRectF(0, 200, 5, 5)}) {
    EXPECT_TRUE(touchedPixels(outside, {100, 100}).isEmpty());
  }
}

TEST(PixelSpace, WhatIsNoNumberHasNoPlace) {
  EXPECT_TRUE(hasPlace(between({0, 0}, {1, infinity})));
  EXPECT_FALSE(hasPlace(between({noNumber, 0}, {1, 1})));
  EXPECT_FALSE(hasPlace(between({0, 0}, {1, noNumber})));
  EXPECT_TRUE(hasPlace(between({0, 0}, {1, noNumber}, Annotation::Kind::step)));
  EXPECT_TRUE(hasPlace(between({0, 0}, {1, noNumber}, Annotation::Kind::label)));
  EXPECT_FALSE(hasPlace(between({0, noNumber}, {1, 1}, Annotation::Kind::label)));
}

}  // namespace
}  // namespace Nimbrel::Flatten
