#include "Samples/Controls.h"

namespace Nimbrel::Samples {

void button(Canvas& canvas, const QRectF& box, QStringView label, ButtonKind kind, const Theme& theme) {
  const bool plain = kind == ButtonKind::plain;
  const auto ground = plain ? theme.field : (kind == ButtonKind::primary ? theme.accent : theme.danger);
  canvas.panel(box, 5, ground, plain ? theme.line : ground);
  const TextStyle style{.size = 13, .color = plain ? theme.text : theme.onAccent};
  canvas.textIn(box.adjusted(6, 0, -6, 0), label, style, Qt::AlignCenter);
}

void field(Canvas& canvas, const QRectF& box, QStringView label, QStringView value, const Theme& theme, Face face) {
  constexpr qreal labelHeight = 20;
  canvas.textIn({box.left(), box.top(), box.width(), labelHeight}, label, {.size = 12, .color = theme.muted});
  const auto entry = box.adjusted(0, labelHeight, 0, 0);
  canvas.panel(entry, 4, theme.field, theme.line);
  canvas.textIn(entry.adjusted(10, 0, -10, 0), value, {.size = 14, .color = theme.text, .face = face});
}

void checkBox(Canvas& canvas, QPointF place, QStringView label, Choice choice, const Theme& theme) {
  const QRectF box(place, QSizeF(16, 16));
  if (choice == Choice::on) {
    canvas.panel(box, 3, theme.accent);
    canvas.line(place + QPointF(4, 8), place + QPointF(7, 11), theme.onAccent, 2);
    canvas.line(place + QPointF(7, 11), place + QPointF(12, 5), theme.onAccent, 2);
  } else {
    canvas.panel(box, 3, theme.field, theme.muted);
  }
  canvas.textIn({place.x() + 24, place.y() - 4, 600, 24}, label, {.size = 13, .color = theme.text});
}

void toggle(Canvas& canvas, QPointF place, Choice choice, const Theme& theme) {
  const QRectF track(place, QSizeF(36, 20));
  const bool on = choice == Choice::on;
  canvas.panel(track, 10, on ? theme.accent : theme.line);
  canvas.circle({on ? track.right() - 10 : track.left() + 10, track.center().y()}, 8, Qt::white);
}

qreal pill(Canvas& canvas, QPointF place, QStringView label, const QColor& ground, const QColor& ink) {
  const TextStyle style{.size = 11, .color = ink};
  const QRectF box(place, QSizeF(canvas.width(label, style) + 16, 20));
  canvas.panel(box, 10, ground);
  canvas.textIn(box, label, style, Qt::AlignCenter);
  return box.right();
}

void avatar(Canvas& canvas, QPointF center, qreal radius, QStringView initials, const QColor& ground) {
  canvas.circle(center, radius, ground);
  const QRectF box(center - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
  canvas.textIn(box, initials, {.size = 12, .color = Qt::white, .weight = Weight::bold}, Qt::AlignCenter);
}

void scrollBar(Canvas& canvas, const QRectF& track, qreal from, qreal to, const Theme& theme) {
  const QRectF handle(track.left() + 3, track.top() + track.height() * from, track.width() - 6,
                      track.height() * (to - from));
  canvas.panel(handle, 3, theme.line);
}

}  // namespace Nimbrel::Samples
