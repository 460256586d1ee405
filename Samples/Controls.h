#pragma once

#include "Samples/Canvas.h"
#include "Samples/Theme.h"

#include <QDateTime>

#include <span>

/// What windows are made of. Each function draws one thing into a box; those that frame something return the room left
/// for it.
namespace Nimbrel::Samples {

/// A title bar over a page, as a window looks when it alone is in the picture.
[[nodiscard]] QRectF window(Canvas& canvas, const QRectF& frame, QStringView title, const Theme& theme);

/// Such a window with a shadow, lying on something else.
[[nodiscard]] QRectF floatingWindow(Canvas& canvas, const QRectF& frame, QStringView title, const Theme& theme);

/// A background with the panel of a desktop at its top, showing the moment; the room below the panel.
[[nodiscard]] QRectF desktop(Canvas& canvas, QStringView application, const QDateTime& moment);

/// A row of tabs, the first `active` one.
[[nodiscard]] QRectF tabs(Canvas& canvas, const QRectF& page, std::span<const QStringView> titles, int active,
                          const Theme& theme);

/// The tabs and the address of a browser.
[[nodiscard]] QRectF browser(Canvas& canvas, const QRectF& page, QStringView title, QStringView address,
                             const Theme& theme);

/// A line of facts at the foot of a window.
[[nodiscard]] QRectF statusBar(Canvas& canvas, const QRectF& page, QStringView left, QStringView right,
                               const Theme& theme);

/// A column at the left of a window with one chosen entry; entries that begin with "#" are headings.
[[nodiscard]] QRectF sidebar(Canvas& canvas, const QRectF& page, qreal width, std::span<const QStringView> entries,
                             int chosen, const Theme& theme);

enum class ButtonKind { plain, primary, danger };
void button(Canvas& canvas, const QRectF& box, QStringView label, ButtonKind kind, const Theme& theme);

/// A label with an entry field below it.
void field(Canvas& canvas, const QRectF& box, QStringView label, QStringView value, const Theme& theme,
           Face face = Face::sans);

enum class Choice { off, on };
void checkBox(Canvas& canvas, QPointF place, QStringView label, Choice choice, const Theme& theme);
void toggle(Canvas& canvas, QPointF place, Choice choice, const Theme& theme);

/// A short word on a coloured ground; returns where it ends.
qreal pill(Canvas& canvas, QPointF place, QStringView label, const QColor& ground, const QColor& ink);

/// A person's initials in a circle.
void avatar(Canvas& canvas, QPointF center, qreal radius, QStringView initials, const QColor& ground);

void scrollBar(Canvas& canvas, const QRectF& track, qreal from, qreal to, const Theme& theme);

}  // namespace Nimbrel::Samples
