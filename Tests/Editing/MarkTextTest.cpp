#include "Editing/MarkText.h"

#include "EditingFixture.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

namespace Nimbrel::Flatten {
namespace {

TEST(MarkText, IsTheBoldSystemFont) {
  auto font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
  font.setBold(true);
  font.setPixelSize(400);
  const auto ink = MarkText(QStringLiteral("Hamburg"), 400).ink();
  EXPECT_NEAR(ink.width(), QFontMetricsF(font).tightBoundingRect(QStringLiteral("Hamburg")).width(), 8);
  font.setBold(false);
  EXPECT_GT(ink.width(), QFontMetricsF(font).tightBoundingRect(QStringLiteral("Hamburg")).width() + 16);
}

TEST(MarkText, SizesNeedNotBeWhole) {
  const auto widthAt = [](double size) { return MarkText(QStringLiteral("Hamburg"), size).ink().width(); };
  EXPECT_NEAR(widthAt(4200 / 45.0) / widthAt(100), 0.933333, 1e-5);
  EXPECT_NEAR(widthAt(17.5) / widthAt(100), 0.175, 1e-5);
}

/// What is seen of a white line on black that begins at 20, 70, and is filled or outlined.
QRect seen(const QString& line, bool isFilled) {
  QImage image(400, 100, QImage::Format_RGB32);
  image.fill(Qt::black);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  const MarkText text(line, 40);
  isFilled ? text.fill(painter, {20, 70}, Qt::white) : text.outline(painter, {20, 70}, Qt::white, 0.01);
  painter.end();
  return Testing::boundsOfOthers(image, qRgb(0, 0, 0), 40);
}

TEST(MarkText, TheOutlineLiesWhereTheLettersAre) {
  for (const auto& line :
       {QStringLiteral("Hamburg"), QStringLiteral("a\tb\u0001c"), QStringLiteral("\u05E9\u05DC\u05D5\u05DD abc"),
        QStringLiteral("fi \u00C5A\u030A"), QStringLiteral("\u0633\u0644\u0627\u0645")}) {
    const auto filled = seen(line, true);
    const auto outlined = seen(line, false);
    ASSERT_FALSE(filled.isNull()) << line.toStdString();
    EXPECT_NEAR(filled.left(), outlined.left(), 1) << line.toStdString();
    EXPECT_NEAR(filled.right(), outlined.right(), 1) << line.toStdString();
    EXPECT_NEAR(filled.top(), outlined.top(), 1) << line.toStdString();
    EXPECT_NEAR(filled.bottom(), outlined.bottom(), 1) << line.toStdString();
    EXPECT_GE(filled.left(), 19) << line.toStdString();
  }
}

TEST(MarkText, ABlankStandsForWhatHasNoShape) {
  EXPECT_EQ(seen(QStringLiteral("a\tb"), true), seen(QStringLiteral("a b"), true));
  EXPECT_EQ(seen(QStringLiteral("a\u0007b"), true), seen(QStringLiteral("a b"), true));
}

TEST(MarkText, ALineHasRoomAboveAndBelow) {
  const MarkText text(QStringLiteral("Hamburg"), 50);
  EXPECT_GT(text.lineHeight(), 50);
  EXPECT_LT(text.lineHeight(), 80);
  EXPECT_GT(text.descent(), text.ink().bottom() - 1);
}

}  // namespace
}  // namespace Nimbrel::Flatten
