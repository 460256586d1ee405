#include "Editing/MarkText.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>

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

TEST(MarkText, ALineHasRoomAboveAndBelow) {
  const MarkText text(QStringLiteral("Hamburg"), 50);
  EXPECT_GT(text.lineHeight(), 50);
  EXPECT_LT(text.lineHeight(), 80);
  EXPECT_GT(text.descent(), text.ink().bottom() - 1);
}

}  // namespace
}  // namespace Nimbrel::Flatten
