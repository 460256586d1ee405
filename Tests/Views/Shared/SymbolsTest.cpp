#include "Views/Shared/Symbols.h"

#include "Support/LogRecorder.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>

namespace Nimbrel {

namespace {

/// How many pixels are opaque and of that colour.
int solidPixels(const QPixmap& pixmap, const QColor& color) {
  const auto image = pixmap.toImage();
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == color ? 1 : 0;
  }
  return count;
}

TEST(SymbolsTest, EverySymbolDrawsInTheColourAskedFor) {
  const auto names = QDir(QStringLiteral(":/Symbols")).entryList({QStringLiteral("*.svg")});
  EXPECT_EQ(names.size(), 79);
  for (const auto& file : names) {
    const auto name = file.chopped(4);
    EXPECT_GT(solidPixels(Symbols::pixmap(name, 48, Qt::red, 1), Qt::red), 20) << name.toStdString();
  }
}

TEST(SymbolsTest, TheScaleOfTheScreenMakesItFinerNotLarger) {
  const auto pixmap = Symbols::pixmap(QStringLiteral("star"), 16, Qt::black, 1.5);
  EXPECT_EQ(pixmap.size(), QSize(24, 24));
  EXPECT_EQ(pixmap.deviceIndependentSize(), QSizeF(16, 16));
}

TEST(SymbolsTest, TheSameIsDrawnOnce) {
  const auto first = Symbols::pixmap(QStringLiteral("tag"), 16, Qt::blue, 1);
  EXPECT_EQ(Symbols::pixmap(QStringLiteral("tag"), 16, Qt::blue, 1).cacheKey(), first.cacheKey());
  EXPECT_NE(Symbols::pixmap(QStringLiteral("tag"), 16, Qt::red, 1).cacheKey(), first.cacheKey());
}

TEST(SymbolsTest, AnUnknownNameIsLoggedAndShowsNothing) {
  const Testing::LogRecorder log;
  EXPECT_TRUE(Symbols::pixmap(QStringLiteral("no.such"), 16, Qt::black, 1).isNull());
  EXPECT_TRUE(Symbols::pixmap(QStringLiteral("../Symbols/star"), 16, Qt::black, 1).isNull());
  ASSERT_EQ(log.lines().size(), 2U);
  EXPECT_EQ(log.lines().front(), "There is no symbol \"no.such\"");
}

TEST(SymbolsTest, AnIconTakesTheTokenOfItsMode) {
  const auto icon = Symbols::icon(QStringLiteral("lock.fill"), {.normal = Token::Danger});
  const auto drawn = [&](QIcon::Mode mode) { return icon.pixmap(QSize(32, 32), 1, mode); };
  EXPECT_GT(solidPixels(drawn(QIcon::Normal), themeColor(Token::Danger)), 50);
  EXPECT_GT(solidPixels(drawn(QIcon::Selected), themeColor(Token::OnAccent)), 50);
  EXPECT_GT(solidPixels(drawn(QIcon::Disabled), themeColor(Token::Glyph)), 50);
}

}  // namespace

}  // namespace Nimbrel
