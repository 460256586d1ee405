#include "Views/Editor/CanvasGeometry.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

constexpr CanvasGeometry wide{.picture = {1600, 400}, .room = {832, 432}, .zoom = 1, .scrolled = {}};

TEST(CanvasGeometryTest, APictureIsFittedWithAMarginAndCentred) {
  EXPECT_EQ(wide.fitted(), QSizeF(800, 200));
  EXPECT_EQ(wide.place(), QRectF(16, 116, 800, 200));
}

TEST(CanvasGeometryTest, ASmallPictureIsEnlarged) {
  const CanvasGeometry dot{.picture = {1, 1}, .room = {832, 432}, .zoom = 1, .scrolled = {}};
  EXPECT_EQ(dot.fitted(), QSizeF(400, 400));
}

TEST(CanvasGeometryTest, WithoutPictureOrRoomNothingIsFitted) {
  const CanvasGeometry none{.picture = {}, .room = {832, 432}, .zoom = 1, .scrolled = {}};
  EXPECT_EQ(none.fitted(), QSizeF(0, 0));
  const CanvasGeometry narrow{.picture = {10, 10}, .room = {32, 432}, .zoom = 1, .scrolled = {}};
  EXPECT_EQ(narrow.fitted(), QSizeF(0, 0));
  EXPECT_EQ(none.pixelZoom(1), 1);
}

TEST(CanvasGeometryTest, PointsStayThoseOfTheFittedPicture) {
  auto zoomed = wide;
  zoomed.zoom = 4;
  zoomed.scrolled = {300, 150};
  const QPointF point(410, 77);
  EXPECT_EQ(zoomed.toFitted(zoomed.toCanvas(point)), point);
  EXPECT_EQ(zoomed.toFitted({16, 16}), QPointF(75, 37.5));
}

TEST(CanvasGeometryTest, AZoomKeepsWhatIsUnderTheAnchor) {
  auto zoomed = wide;
  zoomed.zoom = 4;
  zoomed.scrolled = {300, 150};
  const QPointF anchor(500, 200);
  const auto closer = zoomed.zoomed(8, anchor);
  EXPECT_EQ(closer.zoom, 8);
  EXPECT_NEAR(closer.toFitted(anchor).x(), zoomed.toFitted(anchor).x(), 1e-9);
  EXPECT_NEAR(closer.toFitted(anchor).y(), zoomed.toFitted(anchor).y(), 1e-9);
}

TEST(CanvasGeometryTest, TheZoomReachesFromTheWholeToSinglePixels) {
  EXPECT_EQ(wide.pixelZoom(1), 2);
  EXPECT_EQ(wide.pixelZoom(2), 1);
  EXPECT_EQ(wide.possibleZoom(0.1, 1), 1);
  EXPECT_EQ(wide.possibleZoom(500, 1), 32);
  const CanvasGeometry small{.picture = {100, 50}, .room = {832, 432}, .zoom = 1, .scrolled = {}};
  EXPECT_EQ(small.possibleZoom(0.01, 1), 0.125);
}

TEST(CanvasGeometryTest, AVeryLongPictureKeepsAHeight) {
  const CanvasGeometry strip{.picture = {30'000, 100}, .room = {860, 483}, .zoom = 1, .scrolled = {}};
  EXPECT_EQ(strip.fitted().width(), 828);
  EXPECT_NEAR(strip.fitted().height(), 2.76, 1e-9);
}

}  // namespace
}  // namespace Nimbrel
