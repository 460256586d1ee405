#include "Views/Shared/Theme.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace Nimbrel {

namespace {

constexpr double readableContrast = 4.5;
constexpr double softShare = 0.18;
constexpr double rowShare = 0.16;
constexpr double haloShare = 0.45;
constexpr double foundShare = 0.25;
constexpr double highlightedShare = 0.22;
// How much darker the fill is under the pointer and under a finger.
constexpr double hoverShare = 0.1;
constexpr double pressedShare = 0.22;

struct Row {
  Token token;
  QRgb light;
  QRgb dark;
};

constexpr std::array table = {
    Row{Token::Sidebar, 0xFFECEEF1, 0xFF191B1F},
    Row{Token::Window, 0xFFF6F7F9, 0xFF1F2226},
    Row{Token::Base, 0xFFFFFFFF, 0xFF24272C},
    Row{Token::Bar, 0xFFF5F6F8, 0xFF212429},
    Row{Token::Group, 0xFFFFFFFF, 0xFF292D32},
    Row{Token::Quaternary, 0xFFEDEFF2, 0xFF31353B},
    Row{Token::Track, 0xFFE3E6EB, 0xFF3A3F46},
    Row{Token::Separator, 0xFFDFE2E7, 0xFF363A41},
    Row{Token::Border, 0xFFC9CED6, 0xFF4A5059},
    Row{Token::Control, 0xFFFFFFFF, 0xFF31353B},
    Row{Token::ControlHover, 0xFFF3F5F8, 0xFF393E45},
    Row{Token::ControlPressed, 0xFFE6E9EE, 0xFF2A2E33},
    Row{Token::Text, 0xFF1B1E23, 0xFFECEEF1},
    Row{Token::Secondary, 0xFF59616B, 0xFFA9B0BA},
    Row{Token::Tertiary, 0xFF656D77, 0xFF969EA8},
    Row{Token::Glyph, 0xFF858D97, 0xFF7B838D},
    Row{Token::Accent, 0xFF2F66D8, 0xFF7FA9FF},
    Row{Token::AccentFill, 0xFF2F66D8, 0xFF3A6BE0},
    Row{Token::AccentFillHover, 0xFF275AC4, 0xFF3D6EE2},
    Row{Token::AccentFillPressed, 0xFF1F4CAB, 0xFF3059BC},
    Row{Token::OnAccent, 0xFFFFFFFF, 0xFFFFFFFF},
    Row{Token::AccentSoft, 0xFFD3DFF7, 0xFF2C3A57},
    Row{Token::AccentRow, 0xFFDDE7FB, 0xFF2A395A},
    Row{Token::FocusHalo, 0xFF9DB9F0, 0xFF4C6AA8},
    Row{Token::Danger, 0xFFB93030, 0xFFFF8A80},
    Row{Token::Star, 0xFFBA7F00, 0xFFF2C14E},
    Row{Token::Popover, 0xFFFFFFFF, 0xFF2B2F35},
    Row{Token::PopoverBorder, 0xFFCDD2D9, 0xFF454A52},
    Row{Token::FoundText, 0, 0},  // mixed below
    Row{Token::HighlightedRow, 0, 0},
    Row{Token::SidebarHover, 0x1F788291, 0x1F788291},
    Row{Token::InkRed, 0xFFE62929, 0xFFE62929},
    Row{Token::InkYellow, 0xFFFFCC1A, 0xFFFFCC1A},
    Row{Token::InkBlue, 0xFF1A7AF2, 0xFF1A7AF2},
    Row{Token::InkWhite, 0xFFFFFFFF, 0xFFFFFFFF},
    Row{Token::InkBlack, 0xFF000000, 0xFF000000},
};
static_assert(table.size() == tokenCount);
static_assert(std::ranges::is_sorted(table, {}, &Row::token));

QColor& at(ThemeColors& colors, Token token) { return colors[static_cast<std::size_t>(token)]; }

QColor mixed(const QColor& surface, const QColor& over, double share) {
  const auto mix = [share](int from, int to) { return static_cast<int>(std::lround(from + (to - from) * share)); };
  return {mix(surface.red(), over.red()), mix(surface.green(), over.green()), mix(surface.blue(), over.blue())};
}

QColor translucent(QColor color, double share) {
  color.setAlphaF(static_cast<float>(share));
  return color;
}

/// Relative luminance by WCAG 2.1.
double luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// The stroke is read on every surface that links stand on, the fill under white text. On dark surfaces no colour can
/// do both, so that each takes the desktop's accent by itself.
void takeAccent(ThemeColors& colors, const QColor& accent) {
  const auto surfaces = {Token::Window, Token::Base, Token::Group, Token::Popover};
  const bool isStroke = std::ranges::all_of(
      surfaces, [&](Token surface) { return contrastRatio(accent, at(colors, surface)) >= readableContrast; });
  const bool isFill = contrastRatio(accent, at(colors, Token::OnAccent)) >= readableContrast;
  if (isStroke) at(colors, Token::Accent) = accent;
  if (isFill) {
    at(colors, Token::AccentFill) = accent;
    at(colors, Token::AccentFillHover) = mixed(accent, Qt::black, hoverShare);
    at(colors, Token::AccentFillPressed) = mixed(accent, Qt::black, pressedShare);
  }
  if (!isStroke && !isFill) return;
  at(colors, Token::AccentSoft) = mixed(at(colors, Token::Sidebar), accent, softShare);
  at(colors, Token::AccentRow) = mixed(at(colors, Token::Base), accent, rowShare);
  at(colors, Token::FocusHalo) = mixed(at(colors, Token::Base), accent, haloShare);
}

}  // namespace

double contrastRatio(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

ThemeColors themeColors(const Appearance& appearance) {
  const bool isDark = appearance.scheme == Appearance::Scheme::Dark;
  ThemeColors colors;
  std::ranges::transform(table, colors.begin(),
                         [&](const Row& row) { return QColor::fromRgba(isDark ? row.dark : row.light); });
  if (appearance.accent) takeAccent(colors, *appearance.accent);
  at(colors, Token::FoundText) = translucent(at(colors, Token::Accent), foundShare);
  at(colors, Token::HighlightedRow) = translucent(at(colors, Token::Accent), highlightedShare);
  if (appearance.hasHighContrast) {
    for (const auto token : {Token::Separator, Token::Border, Token::PopoverBorder}) {
      at(colors, token) = at(colors, Token::Secondary);
    }
  }
  return colors;
}

Theme& Theme::shared() {
  static Theme theme;
  return theme;
}

Theme::Theme() : colors_(themeColors({})) {}

void Theme::follow(DesktopAppearance& desktop) {
  setAppearance(desktop.current());
  desktop.observe([this](const Appearance& appearance) { setAppearance(appearance); });
}

void Theme::setAppearance(const Appearance& appearance) {
  appearance_ = appearance;
  update();
}

void Theme::setFallbackScheme(Appearance::Scheme scheme) {
  fallback_ = scheme;
  update();
}

bool Theme::isDark() const { return appearance_.scheme.value_or(fallback_) == Appearance::Scheme::Dark; }

void Theme::update() {
  auto appearance = appearance_;
  appearance.scheme = appearance.scheme.value_or(fallback_);
  const auto colors = themeColors(appearance);
  if (colors == colors_) return;
  colors_ = colors;
  Q_EMIT changed();
}

QColor themeColor(Token token) { return Theme::shared().color(token); }

}  // namespace Nimbrel
