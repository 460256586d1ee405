#include "Views/Pins/PinGeometry.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

using PinGeometry::Enlarged;
using PinGeometry::Limits;
using PinGeometry::Ratio;

constexpr QRect screen(0, 28, 1600, 872);
constexpr Limits wide{.largest = {1600, 872}};

QSize opened(int width, int height, double scale = 1) {
  return PinGeometry::openedSize(PinGeometry::naturalSize({width, height}, scale));
}

TEST(PinGeometry, ANewPinIsAsLargeAsItsPicture) { EXPECT_EQ(opened(300, 200), QSize(300, 200)); }

TEST(PinGeometry, TheLargerSideOfANewPinIsLimited) {
  EXPECT_EQ(opened(2560, 1440), QSize(460, 259));
  EXPECT_EQ(opened(900, 1800), QSize(230, 460));
}

TEST(PinGeometry, ASmallPictureGetsTheSmallestWindow) { EXPECT_EQ(opened(100, 50), QSize(160, 120)); }

TEST(PinGeometry, AThinPictureGetsALargerWindow) {
  EXPECT_EQ(opened(4000, 1000), QSize(460, 120));
  EXPECT_EQ(opened(30'000, 100), QSize(460, 120));
  EXPECT_EQ(opened(1, 9000), QSize(160, 460));
}

TEST(PinGeometry, OfASinglePixelThereIsAPin) { EXPECT_EQ(opened(1, 1), QSize(160, 120)); }

TEST(PinGeometry, OnAFinerScreenAPictureTakesLessRoom) {
  EXPECT_EQ(opened(600, 400, 2), QSize(300, 200));
  EXPECT_EQ(opened(600, 400, 1.5), QSize(400, 267));
  EXPECT_EQ(opened(600, 400, 1.25), QSize(460, 307));
}

TEST(PinGeometry, ANewPinStandsAtTheTopRight) {
  EXPECT_EQ(PinGeometry::openedPlace(screen, {460, 259}, 0), QPoint(1600 - 460 - 40, 28 + 40));
}

TEST(PinGeometry, TheThirdPinStandsTwoStepsFurtherDownAndLeft) {
  const auto first = PinGeometry::openedPlace(screen, {300, 200}, 0);
  const auto third = PinGeometry::openedPlace(screen, {300, 200}, 2);
  EXPECT_EQ(third - first, QPoint(-52, 52));
}

TEST(PinGeometry, OnAnotherScreenItStandsAtTheTopRightOfThat) {
  EXPECT_EQ(PinGeometry::openedPlace({1600, 0, 1280, 1024}, {300, 200}, 0), QPoint(2880 - 340, 40));
  EXPECT_EQ(PinGeometry::openedPlace({-1920, -200, 1920, 1080}, {300, 200}, 1), QPoint(-366, -134));
}

TEST(PinGeometry, HoweverManyAreOpenItStaysOnItsScreen) {
  for (int others = 0; others < 200; ++others) {
    const QRect pin(PinGeometry::openedPlace(screen, {460, 259}, others), QSize(460, 259));
    EXPECT_TRUE(screen.contains(pin)) << others;
  }
}

TEST(PinGeometry, OnAScreenThatIsTooSmallItsUpperLeftCornerIsSeen) {
  const QRect tiny(100, 50, 200, 150);
  for (int others = 0; others < 20; ++others) {
    EXPECT_EQ(PinGeometry::openedPlace(tiny, {460, 259}, others), tiny.topLeft());
  }
}

TEST(PinGeometry, APictureIsFittedIntoTheMiddleOfItsWindow) {
  EXPECT_EQ(PinGeometry::picturePlace({1000, 500}, {400, 400}, Enlarged::Yes), QRectF(0, 100, 400, 200));
  EXPECT_EQ(PinGeometry::picturePlace({500, 1000}, {400, 400}, Enlarged::No), QRectF(100, 0, 200, 400));
}

TEST(PinGeometry, ASmallPictureIsEnlargedWhenThatIsWanted) {
  EXPECT_EQ(PinGeometry::picturePlace({100, 50}, {160, 120}, Enlarged::No), QRectF(30, 35, 100, 50));
  EXPECT_EQ(PinGeometry::picturePlace({100, 50}, {160, 120}, Enlarged::Yes), QRectF(0, 20, 160, 80));
}

TEST(PinGeometry, EdgesAndCornersAreTakenHoldOfAtTheRim) {
  const QSize window(300, 200);
  EXPECT_EQ(PinGeometry::edgesAt({150, 100}, window), Qt::Edges());
  EXPECT_EQ(PinGeometry::edgesAt({6, 100}, window), Qt::Edges());
  EXPECT_EQ(PinGeometry::edgesAt({5.5, 100}, window), Qt::LeftEdge);
  EXPECT_EQ(PinGeometry::edgesAt({150, 0}, window), Qt::TopEdge);
  EXPECT_EQ(PinGeometry::edgesAt({299, 100}, window), Qt::RightEdge);
  EXPECT_EQ(PinGeometry::edgesAt({150, 199}, window), Qt::BottomEdge);
  EXPECT_EQ(PinGeometry::edgesAt({0, 0}, window), Qt::LeftEdge | Qt::TopEdge);
  EXPECT_EQ(PinGeometry::edgesAt({290, 199}, window), Qt::RightEdge | Qt::BottomEdge) << "along the lower edge";
  EXPECT_EQ(PinGeometry::edgesAt({290, 190}, window), Qt::Edges()) << "inside of the corner";
}

constexpr QRect start(100, 100, 400, 200);

TEST(PinGeometry, ADraggedEdgeMovesAlone) {
  EXPECT_EQ(PinGeometry::dragged(start, Qt::RightEdge, {50, 70}, Ratio::Free, wide), QRect(100, 100, 450, 200));
  EXPECT_EQ(PinGeometry::dragged(start, Qt::LeftEdge, {50, 70}, Ratio::Free, wide), QRect(150, 100, 350, 200));
  EXPECT_EQ(PinGeometry::dragged(start, Qt::TopEdge, {50, -70}, Ratio::Free, wide), QRect(100, 30, 400, 270));
  EXPECT_EQ(PinGeometry::dragged(start, Qt::BottomEdge | Qt::LeftEdge, {-20, 30}, Ratio::Free, wide),
            QRect(80, 100, 420, 230));
}

TEST(PinGeometry, AnEdgeStopsAtTheSmallestWindow) {
  EXPECT_EQ(PinGeometry::dragged(start, Qt::RightEdge, {-900, 0}, Ratio::Free, wide), QRect(100, 100, 160, 200));
  EXPECT_EQ(PinGeometry::dragged(start, Qt::LeftEdge | Qt::TopEdge, {900, 900}, Ratio::Free, wide),
            QRect(340, 180, 160, 120))
      << "the opposite corner stays";
}

TEST(PinGeometry, AnEdgeStopsAtTheSizeOfTheScreen) {
  EXPECT_EQ(PinGeometry::dragged(start, Qt::RightEdge | Qt::BottomEdge, {9000, 9000}, Ratio::Free, wide),
            QRect(100, 100, 1600, 872));
}

TEST(PinGeometry, AWindowLargerThanTheScreenKeepsTheLengthThatIsNotDragged) {
  const QRect tall(0, 0, 400, 1200);
  EXPECT_EQ(PinGeometry::dragged(tall, Qt::RightEdge, {10, 0}, Ratio::Free, wide), QRect(0, 0, 410, 1200));
}

TEST(PinGeometry, WithItsRatioKeptAnEdgeBringsTheOtherLengthWithIt) {
  EXPECT_EQ(PinGeometry::dragged(start, Qt::RightEdge, {100, 0}, Ratio::Kept, wide), QRect(100, 100, 500, 250));
  EXPECT_EQ(PinGeometry::dragged(start, Qt::TopEdge, {0, -100}, Ratio::Kept, wide), QRect(100, 0, 600, 300));
  EXPECT_EQ(PinGeometry::dragged(start, Qt::LeftEdge, {100, 0}, Ratio::Kept, wide), QRect(200, 100, 300, 150));
}

TEST(PinGeometry, WithItsRatioKeptTheLongerDragOfACornerDecides) {
  EXPECT_EQ(PinGeometry::dragged(start, Qt::RightEdge | Qt::BottomEdge, {40, 100}, Ratio::Kept, wide),
            QRect(100, 100, 600, 300));
  EXPECT_EQ(PinGeometry::dragged(start, Qt::LeftEdge | Qt::TopEdge, {-200, 10}, Ratio::Kept, wide),
            QRect(-100, 0, 600, 300))
      << "the opposite corner stays";
}

TEST(PinGeometry, TheRatioIsKeptAtTheLimits) {
  EXPECT_EQ(PinGeometry::dragged(start, Qt::RightEdge, {-390, 0}, Ratio::Kept, wide), QRect(100, 100, 240, 120));
  EXPECT_EQ(PinGeometry::dragged(start, Qt::RightEdge, {9000, 0}, Ratio::Kept, wide), QRect(100, 100, 1600, 800));
}

TEST(PinGeometry, ScalingKeepsWhatLiesUnderThePointerThere) {
  const QRectF window(100, 100, 400, 200);
  EXPECT_EQ(PinGeometry::scaled(window, 1.5, {100, 100}, wide), QRectF(100, 100, 600, 300));
  EXPECT_EQ(PinGeometry::scaled(window, 0.75, {500, 300}, wide), QRectF(200, 150, 300, 150));
  EXPECT_EQ(PinGeometry::scaled(window, 1.5, {300, 200}, wide), QRectF(0, 50, 600, 300));
}

TEST(PinGeometry, ScalingStopsAtTheLimitsWithTheRatioKept) {
  const QRectF window(100, 100, 400, 200);
  EXPECT_EQ(PinGeometry::scaled(window, 0.01, {100, 100}, wide).size(), QSizeF(240, 120));
  EXPECT_EQ(PinGeometry::scaled(window, 100, {100, 100}, wide).size(), QSizeF(1600, 800));
}

TEST(PinGeometry, AWindowBeyondALimitComesNoFurther) {
  const QRectF flat(0, 0, 460, 100);
  EXPECT_EQ(PinGeometry::scaled(flat, 0.5, {0, 0}, wide).size(), flat.size());
  const QRectF huge(0, 0, 3200, 400);
  EXPECT_EQ(PinGeometry::scaled(huge, 2, {0, 0}, wide).size(), huge.size());
}

TEST(PinGeometry, ScalingThereAndBackLeavesTheWindowAsItWas) {
  QRectF window(100, 100, 453, 217);
  const QPointF anchor(321, 123);
  for (int notch = 0; notch < 10; ++notch) window = PinGeometry::scaled(window, 1.1, anchor, wide);
  for (int notch = 0; notch < 10; ++notch) window = PinGeometry::scaled(window, 1 / 1.1, anchor, wide);
  EXPECT_EQ(window.toRect(), QRect(100, 100, 453, 217));
}

}  // namespace
}  // namespace Nimbrel
