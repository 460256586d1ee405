#include "Samples/Pictures/Terminal.h"

#include "Samples/Controls.h"

#include <cmath>

namespace Nimbrel::Samples {

namespace {

constexpr qreal lineHeight = 19;
constexpr qreal margin = 14;

QColor ink(QChar letter) {
  const auto& theme = darkTheme();
  switch (letter.unicode()) {
    case u'm':
      return theme.muted;
    case u'g':
      return theme.success;
    case u'r':
      return theme.danger;
    case u'y':
      return theme.warning;
    case u'b':
      return theme.accent;
    default:
      return theme.text;
  }
}

/// Returns where the line ends.
qreal drawLine(Canvas& canvas, QPointF baseline, QStringView line) {
  auto x = baseline.x();
  QColor color = ink(u't');
  for (auto rest = line; !rest.isEmpty();) {
    if (rest.front() == u'^' && rest.size() > 1) {
      color = ink(rest[1]);
      rest = rest.sliced(2);
    }
    const auto next = rest.indexOf(u'^');
    const auto run = next < 0 ? rest : rest.first(next);
    x = canvas.text(x, baseline.y(), run, {.size = 13, .color = color, .face = Face::mono});
    rest = rest.sliced(run.size());
  }
  return x;
}

}  // namespace

void drawTerminal(Canvas& canvas, QStringView title, const QStringList& lines) {
  auto theme = darkTheme();
  theme.page = QColor(0x14171c);
  const auto page = window(canvas, canvas.bounds(), title, theme);
  QPointF baseline(page.left() + margin, page.top() + margin + 10);
  qreal end = baseline.x();
  for (const auto& line : lines) {
    end = drawLine(canvas, baseline, line);
    baseline.ry() += lineHeight;
  }
  canvas.fill({std::round(end), baseline.y() - lineHeight - 12, 8, 16}, theme.text);
}

}  // namespace Nimbrel::Samples
