#pragma once

#include "Platform/DesktopAppearance.h"

#include <QColor>
#include <QObject>

#include <array>
#include <cstddef>

namespace Nimbrel {

/// What a colour is for. Windows name colours by these alone.
enum class Token {
  Sidebar,     ///< sidebar and the toolbar part above it
  Window,      ///< toolbar, header line, details, forms, dialogs
  Base,        ///< gallery, tables, text fields
  Bar,         ///< day titles, filmstrip, table headers
  Group,       ///< boxes of grouped forms
  Quaternary,  ///< picture backings, chips, find bar, hover
  Track,       ///< slider track, off toggle, scroll bar, editor canvas
  Separator,   ///< rules and boxes
  Border,      ///< outlines of controls
  Control,     ///< plain buttons and pickers
  ControlHover,
  ControlPressed,
  Text,
  Secondary,
  Tertiary,    ///< also prompts
  Glyph,       ///< symbols that carry no text: clear, remove, empty states, disabled
  Accent,      ///< strokes, links, symbols, slider fill, focus ring
  AccentFill,  ///< default button, on toggle, menu highlight
  AccentFillHover,
  AccentFillPressed,
  OnAccent,    ///< text on the three above, the knob of toggles and sliders
  AccentSoft,  ///< selected sidebar row
  AccentRow,   ///< selected table row
  FocusHalo,   ///< around a focused field
  Danger,      ///< destructive text
  Star,        ///< favourites
  Popover,     ///< menus, popovers, panel, shelf, quick find
  PopoverBorder,
  FoundText,       ///< behind matches in recognised text; translucent
  HighlightedRow,  ///< the highlighted row of quick find; translucent
  SidebarHover,    ///< a sidebar row under the pointer; translucent
  InkRed,
  InkYellow,
  InkBlue,
  InkWhite,
  InkBlack,
};
inline constexpr std::size_t tokenCount = static_cast<std::size_t>(Token::InkBlack) + 1;

/// All colours of one appearance, by token.
using ThemeColors = std::array<QColor, tokenCount>;

/// The colours for a scheme, with the accent of the desktop where it can be read and raised contrast where that is
/// asked for. An absent scheme is light. Any thread.
[[nodiscard]] ThemeColors themeColors(const Appearance& appearance);

/// The contrast of two opaque colours, from 1 to 21, by WCAG 2.1 ("contrast ratio").
[[nodiscard]] double contrastRatio(const QColor& one, const QColor& other);

/// The colours of all windows, which follow the desktop while Nimbrel runs. Main thread.
class Theme final : public QObject {
  Q_OBJECT

 public:
  /// The one of this process; light until it follows something.
  [[nodiscard]] static Theme& shared();

  Theme();

  /// From now on what the desktop tells. Borrowed: it must outlive this object, or another be followed before it goes.
  void follow(DesktopAppearance& desktop);
  /// Takes an appearance as if the desktop had told it.
  void setAppearance(const Appearance& appearance);
  /// What counts where the desktop tells no scheme: whether its own palette is a dark one.
  void setFallbackScheme(Appearance::Scheme scheme);

  [[nodiscard]] QColor color(Token token) const { return colors_[static_cast<std::size_t>(token)]; }
  [[nodiscard]] bool isDark() const;

 Q_SIGNALS:
  /// At least one colour is another.
  void changed();

 private:
  void update();

  Appearance appearance_;
  Appearance::Scheme fallback_ = Appearance::Scheme::Light;
  ThemeColors colors_;
};

/// The colour of a token in the theme of this process.
[[nodiscard]] QColor themeColor(Token token);

}  // namespace Nimbrel
