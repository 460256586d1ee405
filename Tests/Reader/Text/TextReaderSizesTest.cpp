#include "Reader/PageLines.h"
#include "Reader/TextReader.h"

#include <gmock/gmock.h>

#include <QPainter>

#include <random>

namespace Nimbrel::Reader {
namespace {

using ::testing::IsEmpty;
using ::testing::Lt;
using ::testing::SizeIs;

QImage flat(int width, int height, QColor colour = Qt::white) {
  QImage picture(width, height, QImage::Format_RGB32);
  picture.fill(colour);
  return picture;
}

/// One pixel of so many differs from the page.
QImage noise(int width, int height, unsigned rarity) {
  std::mt19937 random(7);
  auto picture = flat(width, height);
  for (int y = 0; y < height; ++y) {
    auto* row = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < width; ++x) {
      const auto value = static_cast<QRgb>(random());
      if (value % rarity == 0) row[x] = qRgb(value >> 8 & 255, value >> 16 & 255, value >> 24);
    }
  }
  return picture;
}

TEST(TextReaderSizes, TheSmallestPicturesHaveNoText) {
  TextReader reader("eng");
  for (const auto& [width, height] : {std::pair(1, 1), std::pair(2, 2), std::pair(1, 300), std::pair(300, 1)}) {
    EXPECT_THAT(reader.read(flat(width, height), {}), IsEmpty());
    EXPECT_THAT(reader.read(noise(width, height, 2), {}), IsEmpty());
  }
}

TEST(TextReaderSizes, LongStripsAreRead) {
  TextReader reader("eng");
  for (const auto& [width, height] : {std::pair(20'000, 200), std::pair(200, 20'000)}) {
    auto picture = flat(width, height);
    QPainter painter(&picture);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(15);
    painter.setFont(font);
    painter.drawText(width - 120, height - 60, QStringLiteral("The far end"));
    painter.end();
    const auto blocks = reader.read(picture, {});
    ASSERT_EQ(blocks.size(), 1U);
    EXPECT_EQ(blocks[0].text, "The far end");
  }
}

TEST(TextReaderSizes, ALineLongerThanTheModelsTakeIsReadInPieces) {
  auto picture = flat(20'000, 60);
  QPainter painter(&picture);
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(11);
  painter.setFont(font);
  painter.drawText(10, 30, QStringLiteral("word ").repeated(700));
  painter.end();
  const auto lines = linesOnPage(picture, {});
  EXPECT_GT(lines.size(), 1U);
  for (const auto& line : lines) EXPECT_LT(line.line.box.width(), 10'000);
}

TEST(TextReaderSizes, NoiseEndsAndGivesLittleText) {
  TextReader reader("eng");
  for (const unsigned rarity : {1U, 3U, 40U}) {
    const auto blocks = reader.read(noise(300, 200, rarity), {});
    EXPECT_THAT(blocks, SizeIs(Lt(20))) << rarity;
    for (const auto& block : blocks) EXPECT_TRUE(QRectF(0, 0, 1, 1).contains(block.rect)) << block.text;
  }
}

TEST(TextReaderSizes, LinesOfNoiseLieOnThePage) {
  for (const unsigned rarity : {1U, 6U, 60U}) {
    const auto lines = linesOnPage(noise(1600, 1200, rarity), {});
    EXPECT_THAT(lines, SizeIs(Lt(2'000))) << rarity;
    for (const auto& line : lines) EXPECT_TRUE((Box{0, 0, 1600, 1200}.contains(line.line.box))) << rarity;
  }
}

}  // namespace
}  // namespace Nimbrel::Reader
