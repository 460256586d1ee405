#include "Views/Shared/TextStyles.h"

#include <gtest/gtest.h>

#include <QFontInfo>
#include <QPalette>

namespace Nimbrel {

namespace {

class TextStylesTest : public ::testing::Test {
 protected:
  ~TextStylesTest() override { setInterfaceFont(former_); }

  static void setPoints(double points) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(points);
    setInterfaceFont(font);
  }

 private:
  QFont former_ = interfaceFont();
};

TEST_F(TextStylesTest, TheDefaultSizeMakesBodyThirteenPixelsHigh) {
  setPoints(10);
  EXPECT_DOUBLE_EQ(textFont(TextStyle::Body).pointSizeF(), 9.75);
  EXPECT_DOUBLE_EQ(textFont(TextStyle::Caption2).pointSizeF(), 10.5 * 0.75);
  EXPECT_EQ(textFont(TextStyle::Title2).weight(), QFont::DemiBold);
  EXPECT_EQ(textFont(TextStyle::Subheadline).weight(), QFont::Medium);
  EXPECT_EQ(textFont(TextStyle::Body).family(), QStringLiteral("DejaVu Sans"));
  EXPECT_EQ(lineHeight(TextStyle::Body), 18);
}

TEST_F(TextStylesTest, EverythingGrowsWithTheDesktopsText) {
  setPoints(15);
  EXPECT_DOUBLE_EQ(textScale(), 1.5);
  EXPECT_DOUBLE_EQ(textFont(TextStyle::Body).pointSizeF(), 9.75 * 1.5);
  EXPECT_EQ(lineHeight(TextStyle::Body), 27);
  EXPECT_EQ(scaled(28), 42);
}

TEST_F(TextStylesTest, MeasuresNeverShrink) {
  setPoints(8);
  EXPECT_EQ(scaled(28), 28);
  EXPECT_LT(textFont(TextStyle::Body).pointSizeF(), 9.75);
}

TEST_F(TextStylesTest, AFontInPixelsHasAScaleToo) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setPixelSize(20);
  setInterfaceFont(font);
  EXPECT_DOUBLE_EQ(textScale(), 1.5);
}

TEST_F(TextStylesTest, ALabelFollowsTheThemeAndShowsMarkupAsItStands) {
  QLabel label(QStringLiteral("<b>bold</b>"));
  setTextLook(label, TextStyle::Caption, Token::Secondary);
  EXPECT_EQ(label.textFormat(), Qt::PlainText);
  EXPECT_EQ(label.palette().color(QPalette::WindowText), themeColor(Token::Secondary));
  const auto light = themeColor(Token::Secondary);
  Theme::shared().setAppearance({.scheme = Appearance::Scheme::Dark, .accent = {}, .hasHighContrast = false});
  EXPECT_NE(themeColor(Token::Secondary), light);
  EXPECT_EQ(label.palette().color(QPalette::WindowText), themeColor(Token::Secondary));
  Theme::shared().setAppearance({});
}

}  // namespace

}  // namespace Nimbrel
