#include "EditingFixture.h"

#include <cstddef>
#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace Nimbrel {
namespace {

using namespace Testing;
using Kind = Annotation::Kind;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();
constexpr QRgb black = qRgb(0, 0, 0);
constexpr QRgb white = qRgb(255, 255, 255);

class Flattening : public EditingFixture {
 protected:
  [[nodiscard]] QSize sizeAfter(const std::vector<Annotation>& marks) const {
    return render(plain(1000, 500), marks).size();
  }
};

TEST_F(Flattening, WithoutMarksThereIsAPlainCopy) {
  const auto source = picture(333, 222, 4);
  EXPECT_EQ(render(source, {}), source);
}

/// The JPEG with EXIF data that say it is to be turned by a quarter, clockwise.
std::string turned(std::string jpeg) {
  using namespace std::string_literals;
  constexpr std::size_t startOfImage = 2;
  return jpeg.insert(startOfImage,
                     "\xFF\xE1\0\x22"s
                     "Exif\0\0"
                     "II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0\x06\0\0\0\0\0\0\0"s);
}

TEST_F(Flattening, MarksLieOnTheUprightPicture) {
  auto stored = plain(128, 64);
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 64; ++x) stored.setPixel(x, y, qRgb(90, 90, 90));
  }
  writePicture(stored, folder_.path("stored.jpg"));
  const auto url = folder_.write("turned.jpg", turned(contentOf(folder_.path("stored.jpg"))));
  // What is at the upper left in the file is at the upper right when it is looked at.
  const auto upright = Flatten::render(url, {});
  ASSERT_EQ(upright.size(), QSize(64, 128));
  EXPECT_EQ(boundsOfOthers(upright, white, 40), QRect(32, 0, 32, 64));
  const auto redacted = Flatten::render(url, std::vector{mark(Kind::redact, {0.5, 0}, {1, 0.5})});
  ASSERT_EQ(redacted.size(), QSize(64, 128));
  EXPECT_EQ(boundsOfOthers(redacted, white, 40), QRect(30, 0, 34, 66));
  EXPECT_TRUE(boundsOfOthers(redacted.copy(30, 0, 34, 66), black, 0).isNull());
}

TEST_F(Flattening, TheFileStaysAsItIs) {
  const auto source = picture(100, 100, 4);
  writePicture(source, folder_.path("picture.png"));
  const auto content = contentOf(folder_.path("picture.png"));
  EXPECT_NE(Flatten::render(folder_.path("picture.png"), std::vector{mark(Kind::redact, {0, 0}, {1, 1})}), source);
  EXPECT_EQ(contentOf(folder_.path("picture.png")), content);
}

TEST_F(Flattening, WhatCannotBeReadGivesNothing) {
  EXPECT_TRUE(Flatten::render(folder_.path("missing.png"), {}).isNull());
  EXPECT_TRUE(Flatten::render(folder_.path(), {}).isNull());
  EXPECT_TRUE(Flatten::render(folder_.write("text.png", "no picture"), {}).isNull());
  writePicture(folder_.path("whole.png"), 100, 100);
  const auto content = contentOf(folder_.path("whole.png"));
  EXPECT_TRUE(Flatten::render(folder_.write("cut.png", content.substr(0, content.size() / 2)), {}).isNull());
}

TEST_F(Flattening, APictureThatIsTooLargeToBeHeldGivesNothing) {
  QImage vast(9000, 9000, QImage::Format_Mono);
  vast.fill(0);
  EXPECT_TRUE(render(vast, {mark(Kind::box, {0, 0}, {1, 1})}).isNull());
}

TEST_F(Flattening, LaterMarksLieOverEarlierOnes) {
  const QPointF start(0.2, 0.2);
  const QPointF end(0.8, 0.8);
  const auto box = mark(Kind::box, start, end, 4);
  const auto highlight = mark(Kind::highlight, start, end, 3);
  EXPECT_EQ(render(plain(100, 100), {highlight, box}).pixel(20, 50), black);
  EXPECT_TRUE(isNear(render(plain(100, 100), {box, highlight}).pixel(20, 50), qRgb(71, 71, 71)));
}

TEST_F(Flattening, ARedactionOverABlurIsBlack) {
  const auto source = picture(200, 200, 3);
  const auto image =
      render(source, {mark(Kind::blur, {0.1, 0.1}, {0.9, 0.9}), mark(Kind::redact, {0.3, 0.3}, {0.7, 0.7})});
  EXPECT_TRUE(boundsOfOthers(image.copy(58, 58, 84, 84), black, 0).isNull());
  EXPECT_NE(image.copy(20, 20, 160, 30), source.copy(20, 20, 160, 30));
}

TEST_F(Flattening, ABlurPlacedAfterARedactionLiesUnderIt) {
  const auto source = picture(200, 200, 3);
  const auto redaction = mark(Kind::redact, {0.3, 0.3}, {0.7, 0.7});
  const auto blur = mark(Kind::blur, {0.1, 0.1}, {0.9, 0.9});
  const auto image = render(source, {redaction, blur});
  EXPECT_TRUE(boundsOfOthers(image.copy(58, 58, 84, 84), black, 0).isNull());
  EXPECT_EQ(image, render(source, {blur, redaction}));
}

TEST_F(Flattening, TheBlurShowsNothingOfOtherMarks) {
  const auto blur = mark(Kind::blur, {0.5, 0}, {1, 1});
  const auto plainBlur = render(picture(200, 100, 3), {blur});
  const auto besideInk = render(picture(200, 100, 3), {mark(Kind::redact, {0, 0}, {0.4, 1}), blur});
  EXPECT_EQ(besideInk.copy(100, 0, 100, 100), plainBlur.copy(100, 0, 100, 100));
}

TEST_F(Flattening, ACropCutsFromTheTopLeft) {
  const auto source = picture(400, 200, 3);
  const auto part = render(source, {mark(Kind::crop, {0.75, 0.5}, {0.25, 0.25})});
  EXPECT_EQ(part, source.copy(100, 50, 200, 50));
}

TEST_F(Flattening, ACropIsRoundedOutward) {
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {0.1005, 0.1011}, {0.2001, 0.2})}), QSize(101, 50));
}

TEST_F(Flattening, MarksAreDrawnBeforeTheCrop) {
  const auto part =
      render(plain(100, 100), {mark(Kind::crop, {0.5, 0.5}, {1, 1}), mark(Kind::redact, {0, 0}, {0.6, 0.6})});
  ASSERT_EQ(part.size(), QSize(50, 50));
  EXPECT_EQ(part.pixel(11, 11), black);
  EXPECT_EQ(part.pixel(12, 12), white);
}

TEST_F(Flattening, OnlyTheLastCropCounts) {
  const auto large = mark(Kind::crop, {0, 0}, {0.5, 0.5});
  const auto small = mark(Kind::crop, {0.2, 0.2}, {0.4, 0.4});
  EXPECT_EQ(sizeAfter({large, small}), QSize(200, 100));
  EXPECT_EQ(sizeAfter({small, mark(Kind::box, {0, 0}, {1, 1}), large}), QSize(500, 250));
}

TEST_F(Flattening, ACropOfExactlyAHundredthIsIgnored) {
  const QSize whole(1000, 500);
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {0, 0}, {0.01, 1})}), whole);
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {0.5, 0}, {0.51, 1})}), whole);
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {0, 0.3}, {1, 0.31})}), whole);
}

TEST_F(Flattening, ACropJustOverAHundredthIsApplied) {
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {0, 0}, {0.0101, 1})}), QSize(11, 500));
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {0, 0.5}, {1, 0.5101})}), QSize(1000, 6));
}

TEST_F(Flattening, ALastCropThatIsTooSmallHidesTheOneBefore) {
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {0, 0}, {0.5, 0.5}), mark(Kind::crop, {0, 0}, {0.01, 0.01})}),
            QSize(1000, 500));
}

TEST_F(Flattening, ACropIsCutAtTheEdgesOfThePicture) {
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {-0.5, 0.5}, {0.5, 3})}), QSize(500, 250));
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {-infinity, -infinity}, {0.25, infinity})}), QSize(250, 500));
}

TEST_F(Flattening, ACropOutsideThePictureIsIgnored) {
  const QSize whole(1000, 500);
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {1.1, 0}, {1.5, 1})}), whole);
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {0, -2}, {1, -1})}), whole);
  EXPECT_EQ(sizeAfter({mark(Kind::crop, {0, 0}, {0.5, noNumber})}), whole);
}

TEST_F(Flattening, CoordinatesThatAreNoNumbersDrawNothing) {
  const auto source = picture(120, 90, 3);
  for (const auto kind : allAnnotationKinds) {
    auto broken = mark(kind, {noNumber, 0.5}, {0.7, 0.7});
    broken.text = "Note";
    EXPECT_EQ(render(source, {broken}), source) << rawValue(kind);
  }
}

TEST_F(Flattening, MarksMayLieAnywhere) {
  const auto source = plain(120, 90);
  constexpr double farthest = std::numeric_limits<double>::max();
  for (const auto kind : allAnnotationKinds) {
    for (const double a : {-infinity, -farthest, -1e5, -3.0, 0.5, 1.0, 1e5, farthest, infinity}) {
      for (const double b : {-infinity, -1e7, 0.0, 0.5, 2.0, farthest, infinity}) {
        auto wild = mark(kind, {a, b}, {b, a}, std::numeric_limits<int>::min());
        wild.number = std::numeric_limits<int>::min();
        wild.text = "Note";
        EXPECT_FALSE(render(source, {wild}).isNull());
      }
    }
  }
}

TEST_F(Flattening, MarksThatReachFarOutsideAreSeenAsFarAsTheyReachIn) {
  const auto redacted = render(plain(120, 90), {mark(Kind::redact, {0.5, -infinity}, {infinity, infinity})});
  EXPECT_EQ(redacted.pixel(119, 89), black);
  EXPECT_EQ(redacted.pixel(58, 0), black);
  EXPECT_EQ(redacted.pixel(57, 0), white);
  const auto boxed = render(plain(120, 90), {mark(Kind::box, {-1e5, 0.5}, {1e5, 1e5}, 4)});
  EXPECT_EQ(boundsOfOthers(boxed, white), QRect(0, 44, 120, 2));
  const auto crossed = render(plain(120, 120), {mark(Kind::arrow, {-1e5, -1e5}, {1e5, 1e5}, 4)});
  EXPECT_EQ(crossed.pixel(60, 60), black);
  EXPECT_EQ(crossed.pixel(2, 2), black);
  EXPECT_EQ(crossed.pixel(60, 64), white);
}

TEST_F(Flattening, WorksOffTheMainThread) {
  const auto source = picture(400, 300, 3);
  const std::vector marks{label({0.1, 0.1}, "Note"), step({0.5, 0.5}, 7), mark(Kind::blur, {0, 0}, {0.5, 0.5})};
  const auto here = render(source, marks);
  QImage there;
  std::thread([&] { there = render(source, marks); }).join();
  EXPECT_EQ(there, here);
}

}  // namespace
}  // namespace Nimbrel
