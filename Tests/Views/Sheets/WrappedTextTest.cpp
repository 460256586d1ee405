#include "Views/Sheets/WrappedText.h"

#include <gtest/gtest.h>

namespace Nimbrel {

namespace {

const auto words = QStringLiteral("Files go to the Trash, so you can put them back whenever you want to.");

TEST(WrappedTextTest, EachLineHasTheHeightOfItsStyle) {
  WrappedText text(words, TextStyle::Body, Token::Secondary);
  EXPECT_EQ(text.heightForWidth(2000), lineHeight(TextStyle::Body));
  const auto two = QFontMetrics(text.font()).horizontalAdvance(words) * 2 / 3;
  EXPECT_EQ(text.heightForWidth(two), 2 * lineHeight(TextStyle::Body));
}

TEST(WrappedTextTest, ItsMarginsAddToItsHeightAndNarrowItsLines) {
  WrappedText text(words, TextStyle::Caption, Token::Secondary);
  const auto wide = QFontMetrics(text.font()).horizontalAdvance(words) + 4;
  text.setContentsMargins(10, 3, 10, 4);
  EXPECT_EQ(text.heightForWidth(wide + 20), lineHeight(TextStyle::Caption) + 7);
  EXPECT_EQ(text.heightForWidth(wide), 2 * lineHeight(TextStyle::Caption) + 7);
}

}  // namespace

}  // namespace Nimbrel
