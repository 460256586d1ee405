#pragma once

#include "Views/Shared/Theme.h"

#include <QColor>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QRectF>
#include <QString>

/// The line symbols, drawn from their vectors in any colour, by the names of Resources/Symbols without the suffix. Main
/// thread. A name that is none is logged and shows nothing.
namespace Nimbrel::Symbols {

/// A square picture of `size` device-independent pixels for a screen of that scale; kept for the next time. Null when
/// the name is unknown or the size is not positive.
[[nodiscard]] QPixmap pixmap(const QString& name, double size, const QColor& color, double scale);

/// Draws a symbol into the middle of a place, at the scale of the painter's device.
void paint(QPainter& painter, const QRectF& place, const QString& name, double size, const QColor& color);

/// The tokens of an icon in its modes.
struct IconTokens {
  Token normal = Token::Secondary;
  Token selected = Token::OnAccent;
  Token disabled = Token::Glyph;
};

/// An icon that paints the symbol in the token of its mode, in the theme of the moment, at any size and scale.
[[nodiscard]] QIcon icon(const QString& name, IconTokens tokens = {});

}  // namespace Nimbrel::Symbols
