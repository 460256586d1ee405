// How each kind of mark looks, on a picture 4200 pixels wide, where all sizes are whole numbers, and on a small one.

#include "EditingFixture.h"

#include "Editing/MarkText.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using namespace Testing;
using Kind = Annotation::Kind;

constexpr QRgb white = qRgb(255, 255, 255);
constexpr QRgb red = qRgb(230, 41, 41);
constexpr QRgb black = qRgb(0, 0, 0);

/// A point of the large picture, 4200 x 400, in pixels.
QPointF at(double x, double y) { return {x / 4200, y / 400}; }

class MarkDrawing : public EditingFixture {
 protected:
  [[nodiscard]] QImage large(const std::vector<Annotation>& marks, const QColor& ground = Qt::white) const {
    return render(plain(4200, 400, ground), marks);
  }
  [[nodiscard]] QImage small(const std::vector<Annotation>& marks) const { return render(plain(420, 100), marks); }
};

bool isAbout(const QRectF& one, const QRectF& other, double tolerance = 1.01) {
  return std::abs(one.left() - other.left()) <= tolerance && std::abs(one.top() - other.top()) <= tolerance &&
         std::abs(one.right() - other.right()) <= tolerance && std::abs(one.bottom() - other.bottom()) <= tolerance;
}

::testing::AssertionResult coversAbout(const QRect& covered, const QRectF& expected) {
  if (isAbout(covered, expected)) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << covered.x() << ", " << covered.y() << ", " << covered.width() << " x "
                                       << covered.height();
}

TEST_F(MarkDrawing, ABoxIsALineAroundItsPlace) {
  const auto image = large({mark(Kind::box, at(1000, 100), at(2000, 300))});
  EXPECT_EQ(boundsOfOthers(image, white), QRect(995, 95, 1010, 210));
  for (const QPoint inked : {QPoint(995, 95), QPoint(1004, 200), QPoint(2004, 304), QPoint(1500, 104)}) {
    EXPECT_EQ(image.pixel(inked), red) << inked.x() << ", " << inked.y();
  }
  for (const QPoint clear : {QPoint(1005, 200), QPoint(994, 200), QPoint(1500, 105)}) {
    EXPECT_EQ(image.pixel(clear), white) << clear.x() << ", " << clear.y();
  }
}

TEST_F(MarkDrawing, LinesAreAtLeastTwoPixelsWide) {
  const auto image = small({mark(Kind::box, {0.25, 0.25}, {0.5, 0.75}, 4)});
  EXPECT_EQ(boundsOfOthers(image, white), QRect(104, 24, 107, 52));
  EXPECT_EQ(image.pixel(105, 50), black);
  EXPECT_EQ(image.pixel(106, 50), white);
}

TEST_F(MarkDrawing, AHighlightLetsThePictureThrough) {
  const auto onWhite = large({mark(Kind::highlight, at(1000, 100), at(2000, 300))});
  EXPECT_EQ(boundsOfOthers(onWhite, white), QRect(1000, 100, 1000, 200));
  EXPECT_TRUE(isNear(onWhite.pixel(1500, 200), qRgb(248, 195, 195)));
  EXPECT_TRUE(
      isNear(large({mark(Kind::highlight, at(0, 0), at(4200, 400), 1)}, Qt::black).pixel(9, 9), qRgb(71, 57, 7)));
}

TEST_F(MarkDrawing, AHighlightCoversAPixelInPart) {
  const auto image = large({mark(Kind::highlight, at(1000.5, 100), at(2000, 300), 4)});
  EXPECT_TRUE(isNear(image.pixel(1000, 200), qRgb(219, 219, 219), 2));
  EXPECT_TRUE(isNear(image.pixel(1001, 200), qRgb(184, 184, 184)));
}

TEST_F(MarkDrawing, AnArrowHasItsHeadAtItsEnd) {
  // Its head is as long as may be: 90, which reaches 76 back and 48.2 to each side.
  const auto image = large({mark(Kind::arrow, at(1000, 200), at(3000, 200))});
  EXPECT_TRUE(coversAbout(boundsOfOthers(image, white), QRectF(995, 146.8, 2010, 106.4)));
  EXPECT_EQ(image.pixel(1000, 195), red);
  // Its ends are round: red in the middle, white where a square one had its corner.
  EXPECT_EQ(image.pixel(996, 200), red);
  EXPECT_EQ(image.pixel(995, 195), white);
  EXPECT_EQ(image.pixel(995, 204), white);
  EXPECT_EQ(image.pixel(1500, 204), red);
  EXPECT_EQ(image.pixel(1500, 194), white);
  EXPECT_EQ(image.pixel(3000 - 76, 200 - 48), red);
  EXPECT_EQ(image.pixel(3000 - 76, 200 + 47), red);
  EXPECT_EQ(image.pixel(3000 - 70, 200 + 30), white);
}

TEST_F(MarkDrawing, TheHeadPointsWhereTheArrowGoes) {
  const auto down = large({mark(Kind::arrow, at(2000, 50), at(2000, 350))});
  // A quarter of its length: 75, which reaches 63.3 back and 40.2 to each side.
  EXPECT_TRUE(coversAbout(boundsOfOthers(down, white), QRectF(1954.8, 45, 90.4, 310)));
  EXPECT_EQ(down.pixel(2000 - 40, 350 - 63), red);
  EXPECT_EQ(down.pixel(2000 + 39, 350 - 63), red);
}

TEST_F(MarkDrawing, AVeryShortArrowIsSmallerThanItsHead) {
  // The head is 40 long: 33.8 back, 21.4 to each side.
  const auto image = large({mark(Kind::arrow, at(2000, 200), at(2010, 200))});
  EXPECT_TRUE(coversAbout(boundsOfOthers(image, white), QRectF(1971.2, 173.6, 43.8, 52.8)));
}

TEST_F(MarkDrawing, SmallPicturesHaveSmallHeads) {
  const auto headHeight = [&](double length) {
    return boundsOfOthers(small({mark(Kind::arrow, {0.1, 0.5}, {0.1 + length / 420, 0.5}, 4)}), white).height();
  };
  EXPECT_NEAR(headHeight(10), 2 * 8 * 0.536 + 2, 1.5);
  EXPECT_NEAR(headHeight(48), 2 * 12 * 0.536 + 2, 1.5);
  EXPECT_NEAR(headHeight(300), 2 * 18 * 0.536 + 2, 1.5);
}

TEST_F(MarkDrawing, AStepIsADiscWithItsNumberInTheMiddle) {
  const QPointF centre(2000, 200);
  const auto image = large({step(at(2000, 200), 8, 4)});
  EXPECT_TRUE(coversAbout(boundsOfOthers(image, white), QRectF(1940, 140, 120, 120)));
  EXPECT_EQ(image.pixel(1945, 200), black);
  const auto disc = image.copy(1960, 160, 80, 80);
  const auto digit = boundsOfOthers(disc, black, 128).translated(1960, 160);
  EXPECT_NEAR(QRectF(digit).center().x(), centre.x(), 0.75);
  EXPECT_NEAR(QRectF(digit).center().y(), centre.y(), 0.75);
  const auto expected = Flatten::MarkText(QStringLiteral("8"), 75).ink();
  EXPECT_NEAR(digit.height(), expected.height(), 1.5);
  EXPECT_NEAR(digit.width(), expected.width(), 1.5);
}

TEST_F(MarkDrawing, AStepOfASmallPictureIsAsLargeAsItsLeast) {
  const auto image = small({step({0.5, 0.5}, 1, 2)});
  EXPECT_TRUE(coversAbout(boundsOfOthers(image, white), QRectF(196, 36, 28, 28)));
  EXPECT_EQ(image.pixel(198, 50), qRgb(26, 122, 242));
  // Inside of the disc only the digit is of another colour.
  const auto digit = boundsOfOthers(image.copy(201, 41, 18, 18), qRgb(26, 122, 242), 60);
  const auto expected = Flatten::MarkText(QStringLiteral("1"), 17.5).ink();
  EXPECT_NEAR(digit.height(), expected.height(), 1.5);
  EXPECT_NEAR(digit.width(), expected.width(), 1.5);
}

TEST_F(MarkDrawing, ANumberMayBeWiderThanItsDisc) {
  const auto image = large({step(at(2000, 200), -1234567)}, Qt::black);
  const auto bounds = boundsOfOthers(image, black);
  EXPECT_GT(bounds.width(), 250);
  EXPECT_NEAR(QRectF(bounds).center().x(), 2000, 2);
}

TEST_F(MarkDrawing, ALabelBeginsAtItsTopLeft) {
  for (const int width : {4200, 420}) {
    const double size = width == 4200 ? 4200 / 45.0 : 18;
    const auto image = render(plain(width, 200), {label({0.25, 0.25}, "HM", 4)});
    const auto bounds = boundsOfOthers(image, white, 100);
    EXPECT_NEAR(bounds.left(), width * 0.25, size * 0.15) << width;
    EXPECT_NEAR(bounds.top(), 50, size * 0.15) << width;
    EXPECT_NEAR(bounds.height(), Flatten::MarkText(QStringLiteral("HM"), size).ink().height(), 2) << width;
    EXPECT_NEAR(bounds.width(), Flatten::MarkText(QStringLiteral("HM"), size).ink().width(), 2) << width;
  }
}

TEST_F(MarkDrawing, ALabelIsFilledWithItsInk) {
  const auto image = large({label(at(2000, 200), "I", 2)});
  const auto bounds = boundsOfOthers(image, white, 100);
  EXPECT_EQ(image.pixel(bounds.center()), qRgb(26, 122, 242));
}

TEST_F(MarkDrawing, ALabelHasAThinOutline) {
  // On its own colour the outline alone is seen: black at 0.35 of at most 1.4 pixels.
  const auto image = large({label(at(2000, 100), "IIII", 3)});
  int darkest = 255;
  int dark = 0;
  const auto bounds = boundsOfOthers(image, white, 30);
  for (int y = bounds.top(); y <= bounds.bottom(); ++y) {
    for (int x = bounds.left(); x <= bounds.right(); ++x) {
      darkest = std::min(darkest, qGreen(image.pixel(x, y)));
      if (qGreen(image.pixel(x, y)) < 225) ++dark;
    }
  }
  EXPECT_NEAR(darkest, 166, 8);
  EXPECT_GT(dark, 2 * bounds.height());
  EXPECT_LT(dark, 8 * 2 * bounds.height() + 8 * bounds.width());
}

TEST_F(MarkDrawing, AnEmptyLabelDrawsNothing) {
  EXPECT_TRUE(boundsOfOthers(large({label(at(2000, 200), "", 4)}), white).isNull());
}

TEST_F(MarkDrawing, FurtherLinesOfALabelStandBelow) {
  const auto one = boundsOfOthers(large({label(at(2000, 50), "HHH", 4)}), white, 100);
  const auto two = boundsOfOthers(large({label(at(2000, 50), "HHH\nH", 4)}), white, 100);
  EXPECT_EQ(two.topLeft(), one.topLeft());
  EXPECT_EQ(two.right(), one.right());
  EXPECT_GT(two.height(), 2 * one.height());
}

TEST_F(MarkDrawing, EveryLineEndIsOne) {
  const auto expected = large({label(at(2000, 50), "HHH\nH", 4)});
  for (const auto* end : {"\r\n", "\r", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
    EXPECT_EQ(large({label(at(2000, 50), std::string("HHH") + end + "H", 4)}), expected);
  }
}

TEST_F(MarkDrawing, NoTextStopsTheDrawing) {
  const auto isBoxDrawnAfter = [&](const std::string& text) {
    return small({label({0.5, 0.5}, text), mark(Kind::box, {0.25, 0.25}, {0.4, 0.75}, 4)}).pixel(105, 50) == black;
  };
  for (const auto* text : {"\xF0\x9F\x8E\x89", "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D", "\t", "\x01\x7F", "a\xCC\x8A",
                           "\xFF\xFE", "\r\n\r\n", "\xE2\x80\xAE"}) {
    EXPECT_TRUE(isBoxDrawnAfter(text)) << text;
  }
  EXPECT_TRUE(isBoxDrawnAfter(std::string(3, '\0')));
}

TEST_F(MarkDrawing, AVeryLongLabelEndsWithThePicture) {
  const auto image = small({label({0.5, 0.1}, std::string(2'000'000, 'i') + std::string(2'000'000, '\n') + "end", 4)});
  EXPECT_GT(boundsOfOthers(image, white, 100).right(), 410);
}

class MarkColour : public MarkDrawing {
 protected:
  [[nodiscard]] QRgb of(int colorIndex) const {
    return small({mark(Kind::box, {0.25, 0.25}, {0.5, 0.75}, colorIndex)}).pixel(105, 50);
  }
};

TEST_F(MarkColour, IsTheInkOfTheIndex) {
  EXPECT_EQ(of(0), red);
  EXPECT_EQ(of(1), qRgb(255, 204, 26));
  EXPECT_EQ(of(2), qRgb(26, 122, 242));
  EXPECT_EQ(of(3), white);
  EXPECT_EQ(of(4), black);
}

TEST_F(MarkColour, ColorIndexNineIsBlack) { EXPECT_EQ(of(9), black); }

TEST_F(MarkColour, AnIndexBelowTheInksMeansTheFirst) { EXPECT_EQ(of(-1), red); }

}  // namespace
}  // namespace Nimbrel
