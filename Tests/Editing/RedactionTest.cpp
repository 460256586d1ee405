// What is covered by a redaction is gone: from the picture, and from the file that is written.

#include "EditingFixture.h"

namespace Nimbrel {
namespace {

using namespace Testing;
using Kind = Annotation::Kind;

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

}  // namespace
}  // namespace Nimbrel
