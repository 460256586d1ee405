#include "Samples/Controls.h"
#include "Samples/Words.h"

#include <QLinearGradient>

#include <array>

namespace Nimbrel::Samples {

namespace {

constexpr qreal titleHeight = 38;

void windowButtons(Canvas& canvas, const QRectF& bar, const QColor& color) {
  const auto y = bar.center().y();
  const auto minimize = bar.right() - 84;
  const auto maximize = bar.right() - 54;
  const auto close = bar.right() - 24;
  canvas.line({minimize - 5, y + 4}, {minimize + 5, y + 4}, color, 1.4);
  canvas.panel({maximize - 5, y - 5, 10, 10}, 1, Qt::NoBrush, color);
  canvas.line({close - 5, y - 5}, {close + 5, y + 5}, color, 1.4);
  canvas.line({close - 5, y + 5}, {close + 5, y - 5}, color, 1.4);
}

void magnifier(Canvas& canvas, QPointF center, const QColor& color) {
  canvas.painter().setBrush(Qt::NoBrush);
  canvas.painter().setPen(QPen(color, 1.5));
  canvas.painter().drawEllipse(center, 4, 4);
  canvas.line(center + QPointF(3, 3), center + QPointF(6, 6), color, 1.5);
}

void arrow(Canvas& canvas, QPointF tip, qreal direction, const QColor& color) {
  canvas.line(tip, tip + QPointF(-6 * direction, -6), color, 1.6);
  canvas.line(tip, tip + QPointF(-6 * direction, 6), color, 1.6);
}

}  // namespace

QRectF window(Canvas& canvas, const QRectF& frame, QStringView title, const Theme& theme) {
  canvas.fill(frame, theme.page);
  const QRectF bar(frame.left(), frame.top(), frame.width(), titleHeight);
  canvas.fill(bar, theme.chrome);
  canvas.horizontal(bar.left(), bar.right(), bar.bottom() - 1, theme.line);
  canvas.textIn(bar.adjusted(110, 0, -110, 0), title, {.size = 13, .color = theme.text, .weight = Weight::bold},
                Qt::AlignCenter);
  windowButtons(canvas, bar, theme.text);
  return frame.adjusted(0, titleHeight, 0, 0);
}

QRectF floatingWindow(Canvas& canvas, const QRectF& frame, QStringView title, const Theme& theme) {
  for (int spread = 12; spread > 0; spread -= 2) {
    canvas.panel(frame.adjusted(-spread, -spread + 6, spread, spread + 6), 8 + spread, QColor(0, 0, 0, 14));
  }
  const auto page = window(canvas, frame, title, theme);
  canvas.panel(frame.adjusted(-1, -1, 1, 1), 1, Qt::NoBrush, QColor(0, 0, 0, 90));
  return page;
}

QRectF desktop(Canvas& canvas, QStringView application, const QDateTime& moment) {
  constexpr qreal panelHeight = 30;
  const auto bounds = canvas.bounds();
  QLinearGradient sky(bounds.topLeft(), bounds.bottomRight());
  sky.setColorAt(0, QColor(0x2d5d7c));
  sky.setColorAt(0.55, QColor(0x6a8fa3));
  sky.setColorAt(1, QColor(0xd9b99b));
  canvas.fill(bounds, sky);
  const QRectF panel(0, 0, bounds.width(), panelHeight);
  canvas.fill(panel, QColor(0x15181d));
  const TextStyle style{.size = 13, .color = QColor(0xf0f2f5)};
  canvas.textIn(panel.adjusted(16, 0, -16, 0), application, {.size = 13, .color = style.color, .weight = Weight::bold});
  canvas.textIn(panel, words(moment, u"ddd d MMM  HH:mm"), style, Qt::AlignCenter);
  canvas.textIn(panel.adjusted(16, 0, -16, 0), u"84 %", style, Qt::AlignRight);
  return bounds.adjusted(0, panelHeight, 0, 0);
}

QRectF tabs(Canvas& canvas, const QRectF& page, std::span<const QStringView> titles, int active, const Theme& theme) {
  constexpr qreal height = 34;
  const QRectF bar(page.left(), page.top(), page.width(), height);
  canvas.fill(bar, theme.side);
  canvas.horizontal(bar.left(), bar.right(), bar.bottom() - 1, theme.line);
  auto x = bar.left();
  int number = 0;
  for (const auto title : titles) {
    const bool chosen = number++ == active;
    const TextStyle style{.size = 12, .color = chosen ? theme.text : theme.muted};
    const QRectF tab(x, bar.top(), canvas.width(title, style) + 44, height);
    if (chosen) {
      canvas.fill(tab, theme.page);
      canvas.fill({tab.left(), tab.top(), tab.width(), 2}, theme.accent);
      const auto cross = QPointF(tab.right() - 14, tab.center().y());
      canvas.line(cross - QPointF(3, 3), cross + QPointF(3, 3), theme.muted, 1.2);
      canvas.line(cross + QPointF(-3, 3), cross + QPointF(3, -3), theme.muted, 1.2);
    }
    canvas.textIn(tab.adjusted(14, 0, -20, 0), title, style);
    canvas.vertical(tab.right() - 1, tab.top(), tab.bottom() - 1, theme.line);
    x = tab.right();
  }
  return page.adjusted(0, height, 0, 0);
}

QRectF browser(Canvas& canvas, const QRectF& page, QStringView title, QStringView address, const Theme& theme) {
  constexpr qreal height = 42;
  const std::array titles{title, QStringView(u"New tab")};
  const auto below = tabs(canvas, page, titles, 0, theme);
  const QRectF bar(below.left(), below.top(), below.width(), height);
  canvas.fill(bar, theme.page);
  arrow(canvas, {bar.left() + 18, bar.center().y()}, -1, theme.text);
  arrow(canvas, {bar.left() + 54, bar.center().y()}, 1, theme.line);
  const auto entry = bar.adjusted(84, 7, -60, -7);
  canvas.panel(entry, 14, theme.side, theme.line);
  canvas.textIn(entry.adjusted(18, 0, -34, 0), address, {.size = 13, .color = theme.text});
  magnifier(canvas, {entry.right() - 18, entry.center().y() - 1}, theme.muted);
  for (int dot = -1; dot <= 1; ++dot) canvas.circle({bar.right() - 28, bar.center().y() + dot * 5}, 1.6, theme.text);
  canvas.horizontal(bar.left(), bar.right(), bar.bottom() - 1, theme.line);
  return below.adjusted(0, height, 0, 0);
}

QRectF statusBar(Canvas& canvas, const QRectF& page, QStringView left, QStringView right, const Theme& theme) {
  constexpr qreal height = 26;
  const QRectF bar(page.left(), page.bottom() - height, page.width(), height);
  canvas.fill(bar, theme.chrome);
  canvas.horizontal(bar.left(), bar.right(), bar.top(), theme.line);
  const TextStyle style{.size = 12, .color = theme.muted};
  canvas.textIn(bar.adjusted(14, 0, -14, 0), left, style);
  canvas.textIn(bar.adjusted(14, 0, -14, 0), right, style, Qt::AlignRight);
  return page.adjusted(0, 0, 0, -height);
}

QRectF sidebar(Canvas& canvas, const QRectF& page, qreal width, std::span<const QStringView> entries, int chosen,
               const Theme& theme) {
  constexpr qreal rowHeight = 28;
  const QRectF column(page.left(), page.top(), width, page.height());
  canvas.fill(column, theme.side);
  canvas.vertical(column.right() - 1, column.top(), column.bottom(), theme.line);
  auto y = column.top() + 10;
  int number = 0;
  for (const auto entry : entries) {
    const QRectF row(column.left() + 8, y, width - 17, rowHeight);
    if (entry.startsWith(u'#')) {
      canvas.textIn(row.adjusted(8, 0, -8, 0), entry.sliced(1),
                    {.size = 11, .color = theme.muted, .weight = Weight::bold});
    } else {
      if (number == chosen) canvas.panel(row, 5, theme.selection);
      canvas.textIn(row.adjusted(12, 0, -8, 0), entry, {.size = 13, .color = theme.text});
    }
    ++number;
    y += rowHeight;
  }
  return page.adjusted(width, 0, 0, 0);
}

}  // namespace Nimbrel::Samples
