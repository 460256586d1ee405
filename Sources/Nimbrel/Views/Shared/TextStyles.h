#pragma once

#include "Views/Shared/Theme.h"

#include <QFont>
#include <QLabel>

namespace Nimbrel {

/// The type scale. Figures are those of the interface font, which are tabular in nearly all of them: Qt 6.4 has no way
/// to ask a font for another set.
enum class TextStyle {
  LargeTitle,    ///< size of the lock shield only
  Title2,        ///< dialog headings, empty states
  Title3,        ///< header line, editor title
  Title3Field,   ///< quick find text
  Headline,      ///< day titles, shot title in the gallery, panel headings
  Body,          ///< rows, buttons, fields, tables
  Callout,       ///< hints, small buttons, recognised text
  Subheadline,   ///< source in the panel rows
  Caption,       ///< names, badges
  CaptionTitle,  ///< section titles, table headers
  Caption2,      ///< meta rows, snippets
};

/// The desktop's interface font, from which all others are derived: the application's own until another is set, which
/// is done before the first window. A size of 10 points makes body 13 pixels high.
[[nodiscard]] QFont interfaceFont();
void setInterfaceFont(const QFont& font);

/// How much larger the desktop wants text than by default; 1 at 10 points.
[[nodiscard]] double textScale();

/// A measure of something that holds text, grown with it and never shrunk.
[[nodiscard]] int scaled(int measure);

/// The font of a style.
[[nodiscard]] QFont textFont(TextStyle style);
/// The height of its lines in device-independent pixels, grown with the text.
[[nodiscard]] int lineHeight(TextStyle style);

/// Gives a label a style and the colour of a token, also when the theme changes, and plain text for good.
void setTextLook(QLabel& label, TextStyle style, Token token = Token::Text);

}  // namespace Nimbrel
