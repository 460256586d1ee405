#include "Views/Shared/Theme.h"

#include <gtest/gtest.h>

#include <QSignalSpy>

#include <initializer_list>
#include <utility>

namespace Nimbrel {

namespace {

QColor colorOf(const ThemeColors& colors, Token token) { return colors[static_cast<std::size_t>(token)]; }

constexpr Appearance light{.scheme = Appearance::Scheme::Light, .accent = {}, .hasHighContrast = false};
constexpr Appearance dark{.scheme = Appearance::Scheme::Dark, .accent = {}, .hasHighContrast = false};

Appearance withAccent(Appearance appearance, const QColor& accent) {
  appearance.accent = accent;
  return appearance;
}

/// Tells what a test wants.
class FakeDesktopAppearance final : public DesktopAppearance {
 public:
  [[nodiscard]] Appearance current() const override { return appearance; }
  void observe(Callback onChange) override { onChange_ = std::move(onChange); }
  void become(const Appearance& next) {
    appearance = next;
    onChange_(next);
  }

  Appearance appearance;

 private:
  Callback onChange_;
};

TEST(ThemeColorsTest, TextCanBeReadOnWhatItStandsOn) {
  for (const auto& appearance : {light, dark}) {
    const auto colors = themeColors(appearance);
    for (const auto text : {Token::Text, Token::Secondary, Token::Tertiary}) {
      for (const auto surface :
           {Token::Sidebar, Token::Window, Token::Base, Token::Bar, Token::Group, Token::Popover}) {
        EXPECT_GE(contrastRatio(colorOf(colors, text), colorOf(colors, surface)), 4.5)
            << static_cast<int>(text) << " on " << static_cast<int>(surface);
      }
    }
    for (const auto fill : {Token::AccentFill, Token::AccentFillHover, Token::AccentFillPressed}) {
      EXPECT_GE(contrastRatio(colorOf(colors, Token::OnAccent), colorOf(colors, fill)), 4.5);
    }
  }
}

TEST(ThemeColorsTest, ContrastGoesFromOneToTwentyOne) {
  EXPECT_NEAR(contrastRatio(Qt::white, Qt::black), 21, 1e-6);
  EXPECT_NEAR(contrastRatio(Qt::red, Qt::red), 1, 1e-6);
}

TEST(ThemeColorsTest, AReadableAccentReplacesOursAndIsMixed) {
  const QColor purple(0x81, 0x3D, 0x9C);
  const auto colors = themeColors(withAccent(light, purple));
  EXPECT_EQ(colorOf(colors, Token::Accent), purple);
  EXPECT_EQ(colorOf(colors, Token::AccentFill), purple);
  EXPECT_EQ(colorOf(colors, Token::AccentRow), QColor(0xEB, 0xE0, 0xEF)) << "16 % over base";
  EXPECT_EQ(colorOf(colors, Token::AccentSoft), QColor(0xD9, 0xCE, 0xE2)) << "18 % over sidebar";
  EXPECT_EQ(colorOf(colors, Token::FocusHalo), QColor(0xC6, 0xA8, 0xD2)) << "45 % over base";
  EXPECT_NEAR(colorOf(colors, Token::FoundText).alphaF(), 0.25, 0.01);
  EXPECT_EQ(colorOf(colors, Token::FoundText).rgb(), purple.rgb());
}

TEST(ThemeColorsTest, AnAccentTooPaleToReadIsLeftAside) {
  EXPECT_EQ(themeColors(withAccent(light, QColor(0xF5, 0xC2, 0x11))), themeColors(light));
}

TEST(ThemeColorsTest, OnDarkSurfacesEachAccentTokenIsJudgedByItself) {
  const QColor purple(0x81, 0x3D, 0x9C);
  const auto colors = themeColors(withAccent(dark, purple));
  EXPECT_EQ(colorOf(colors, Token::AccentFill), purple);
  EXPECT_EQ(colorOf(colors, Token::Accent), colorOf(themeColors(dark), Token::Accent)) << "purple on black";
}

TEST(ThemeColorsTest, HighContrastRaisesRulesAndOutlines) {
  auto appearance = dark;
  appearance.hasHighContrast = true;
  const auto colors = themeColors(appearance);
  EXPECT_EQ(colorOf(colors, Token::Separator), colorOf(colors, Token::Secondary));
  EXPECT_EQ(colorOf(colors, Token::Border), colorOf(colors, Token::Secondary));
}

TEST(ThemeTest, FollowsTheDesktopAndTellsOfChangesAlone) {
  FakeDesktopAppearance desktop;
  desktop.appearance = dark;
  Theme theme;
  const QSignalSpy changes(&theme, &Theme::changed);
  theme.follow(desktop);
  EXPECT_TRUE(theme.isDark());
  EXPECT_EQ(theme.color(Token::Window), QColor(0x1F, 0x22, 0x26));
  EXPECT_EQ(changes.count(), 1);
  desktop.become(dark);
  EXPECT_EQ(changes.count(), 1);
  desktop.become(light);
  EXPECT_FALSE(theme.isDark());
  EXPECT_EQ(theme.color(Token::Window), QColor(0xF6, 0xF7, 0xF9));
  EXPECT_EQ(changes.count(), 2);
}

TEST(ThemeTest, TheDesktopsPaletteCountsWhereItTellsNothing) {
  Theme theme;
  EXPECT_FALSE(theme.isDark());
  theme.setFallbackScheme(Appearance::Scheme::Dark);
  EXPECT_TRUE(theme.isDark());
  EXPECT_EQ(theme.color(Token::Base), QColor(0x24, 0x27, 0x2C));
  theme.setAppearance(light);
  EXPECT_FALSE(theme.isDark());
}

}  // namespace

}  // namespace Nimbrel
