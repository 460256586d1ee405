// What is covered by a redaction is gone: from the picture, and from the file that is written.

#include "EditingFixture.h"

#include "Platform/ImageFile.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using namespace Testing;
using Kind = Annotation::Kind;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr QRgb black = qRgb(0, 0, 0);
constexpr QRgb secret = qRgb(12, 250, 99);

class Redaction : public EditingFixture {};

Annotation redaction(QPointF start, QPointF end, int colorIndex = 0) {
  return mark(Kind::redact, start, end, colorIndex);
}

TEST_F(Redaction, IsBlackInEveryColourAndReachesTwoPixelsFarther) {
  for (const int colorIndex : {0, 3, 4}) {
    const auto image = render(plain(100, 50), {redaction({0.6, 0.8}, {0.3, 0.4}, colorIndex)});
    const QRect covered(28, 18, 34, 24);
    for (int y = 0; y < 50; ++y) {
      for (int x = 0; x < 100; ++x) {
        ASSERT_EQ(image.pixel(x, y), covered.contains(x, y) ? black : qRgb(255, 255, 255)) << x << ", " << y;
      }
    }
  }
}

TEST_F(Redaction, NoPixelShinesThroughAtAnEdgeBetweenPixels) {
  const auto image = render(plain(100, 100, QColor(secret)), {redaction({0.2049, 0.2051}, {0.4001, 0.3999})});
  const QRect covered(18, 18, 25, 24);
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 100; ++x) {
      ASSERT_EQ(image.pixel(x, y), covered.contains(x, y) ? black : secret) << x << ", " << y;
    }
  }
}

TEST_F(Redaction, OfAPointIsASmallSquare) {
  const auto image = render(plain(100, 100), {redaction({0.5, 0.5}, {0.5, 0.5})});
  EXPECT_EQ(boundsOfOthers(image, qRgb(255, 255, 255)), QRect(48, 48, 4, 4));
}

TEST_F(Redaction, IsOpaqueWhereThePictureIsTransparent) {
  QImage source(100, 100, QImage::Format_ARGB32);
  source.fill(qRgba(12, 250, 99, 0));
  for (int x = 0; x < 100; ++x) source.setPixel(x, 50, qRgba(12, 250, 99, 100));
  const auto image = render(source, {redaction({0.2, 0.2}, {0.8, 0.8})});
  EXPECT_EQ(image.pixel(50, 50), black);
  EXPECT_EQ(image.pixel(20, 20), black);
  EXPECT_EQ(qAlpha(image.pixel(5, 5)), 0);
  EXPECT_EQ(qAlpha(image.pixel(5, 50)), 100);
}

TEST_F(Redaction, LaterMarksShowNothingOfWhatIsUnderIt) {
  const auto at = [&](const QColor& ground) {
    return render(plain(100, 100, ground), {redaction({0.2, 0.2}, {0.8, 0.8}), mark(Kind::blur, {0.3, 0.3}, {0.9, 0.7}),
                                            mark(Kind::highlight, {0.2, 0.2}, {0.8, 0.8}, 1)})
        .copy(18, 18, 64, 64);
  };
  EXPECT_EQ(at(QColor(secret)), at(Qt::white));
}

bool isSeen(const QImage& image, QRgb colour) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if ((image.pixel(x, y) & RGB_MASK) == (colour & RGB_MASK)) return true;
    }
  }
  return false;
}

TEST_F(Redaction, LeavesNoTraceInTheFileThatIsWritten) {
  auto source = picture(300, 200, 3);
  for (int y = 80; y < 120; ++y) {
    for (int x = 100; x < 200; ++x) source.setPixel(x, y, secret);
  }
  source.setText(QStringLiteral("Comment"), QStringLiteral("the secret in words"));
  writePicture(source, folder_.path("source.png"));
  ASSERT_THAT(contentOf(folder_.path("source.png")), HasSubstr("the secret in words"));
  ASSERT_TRUE(isSeen(source, secret));

  const auto copy = Flatten::render(folder_.path("source.png"),
                                    std::vector{redaction({100 / 300.0, 80 / 200.0}, {200 / 300.0, 120 / 200.0})});
  ASSERT_FALSE(ImageFile::writePNG(copy, folder_.path("copy.png")));
  EXPECT_THAT(chunksOfPng(folder_.path("copy.png")), ElementsAre("IHDR", "sRGB", "IDAT", "IEND"));
  EXPECT_THAT(contentOf(folder_.path("copy.png")), Not(HasSubstr("the secret in words")));
  const QImage written(QString::fromStdString(folder_.path("copy.png")));
  ASSERT_EQ(written.size(), source.size());
  EXPECT_FALSE(isSeen(written, secret));
  EXPECT_EQ(ImageFile::picture(folder_.path("copy.png")).copy(0, 0, 300, 78),
            ImageFile::picture(folder_.path("source.png")).copy(0, 0, 300, 78));
}

TEST_F(Redaction, ColoursUnderWhatIsTransparentAreNotHandedOn) {
  QImage source(50, 50, QImage::Format_ARGB32);
  source.fill(secret & RGB_MASK);
  source.setPixel(0, 0, qRgb(9, 9, 9));
  const auto copy = render(source, {redaction({0.5, 0.5}, {1, 1})});
  ASSERT_FALSE(ImageFile::writePNG(copy, folder_.path("copy.png")));
  const QImage written(QString::fromStdString(folder_.path("copy.png")));
  EXPECT_EQ(written.pixel(0, 0), qRgb(9, 9, 9));
  EXPECT_EQ(written.pixel(49, 49), black);
  EXPECT_EQ(qAlpha(written.pixel(10, 10)), 0);
  EXPECT_FALSE(isSeen(written, secret));
}

}  // namespace
}  // namespace Nimbrel
