#pragma once

#include <QPainter>
#include <QPixmap>
#include <QRect>

/// How a shot is shown small, beside what is said of it.
namespace Nimbrel::ThumbBox {

/// Paints a box with round corners and the picture fitted into it, or a symbol where there is none. Of what is obscured
/// a lock is seen and nothing else, whatever picture is given. The picture is borrowed, and null for none.
void paint(QPainter& painter, const QRect& box, double radius, bool isObscured, const QPixmap* picture);

}  // namespace Nimbrel::ThumbBox
