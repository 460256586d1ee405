#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"
#include "Samples/Words.h"

#include <array>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

struct Appointment {
  /// The place in the grid, so that what belongs to a weekday stays on it in every month.
  int week;
  int weekday;
  QStringView time;
  QStringView title;
  QRgb color;
};

constexpr QRgb studio = 0x2f6bd8;
constexpr QRgb home = 0x2b8a4b;
constexpr QRgb travel = 0xa8590c;

constexpr std::array<Appointment, 17> appointments{{{0, 4, u"11:15", u"Dentist", home},
                                                    {0, 5, u"14:00", u"Proofs due", studio},
                                                    {1, 1, u"9:00", u"Team meeting", studio},
                                                    {1, 2, u"18:30", u"Choir", home},
                                                    {1, 4, u"12:30", u"Lunch with Jonas", studio},
                                                    {2, 1, u"9:00", u"Team meeting", studio},
                                                    {2, 3, u"7:42", u"Train to Dunmere", travel},
                                                    {2, 4, u"10:00", u"Paper fair", travel},
                                                    {2, 6, u"15:00", u"Swimming", home},
                                                    {3, 1, u"9:00", u"Team meeting", studio},
                                                    {3, 2, u"18:30", u"Choir", home},
                                                    {3, 3, u"16:20", u"Parents' evening", home},
                                                    {3, 5, u"13:00", u"Invoice run", studio},
                                                    {4, 1, u"9:00", u"Team meeting", studio},
                                                    {4, 2, u"8:00", u"Boiler check", home},
                                                    {4, 3, u"14:30", u"Workshop", studio},
                                                    {4, 5, u"19:15", u"Lantern night", home}}};

/// A month as the grid of weeks that shows it.
struct Month {
  QDate first;
  QDate today;

  [[nodiscard]] QDate day(int week, int weekday) const { return first.addDays(7 * week + weekday - first.dayOfWeek()); }
};

void drawAppointment(Canvas& canvas, const QRectF& line, const Appointment& appointment, const Theme& theme) {
  canvas.panel(line, 4, theme.selection);
  canvas.fill({line.left(), line.top(), 4, line.height()}, QColor(appointment.color));
  canvas.textIn({line.left() + 11, line.top() + 2, line.width() - 14, 17}, appointment.time,
                {.size = 11, .color = theme.muted});
  canvas.textIn({line.left() + 11, line.top() + 18, line.width() - 14, 18}, appointment.title,
                {.size = 12, .color = theme.text});
}

void drawDay(Canvas& canvas, const QRectF& cell, const Month& month, QDate day, const Theme& theme) {
  const bool inside = day.month() == month.first.month();
  canvas.fill(cell, inside ? theme.page : theme.side);
  const QRectF number(cell.left() + 8, cell.top() + 6, 26, 22);
  const bool isToday = day == month.today;
  if (isToday) canvas.circle(number.center(), 13, theme.accent);
  const auto ink = inside ? theme.text : theme.muted;
  canvas.textIn(number, QString::number(day.day()), {.size = 13, .color = isToday ? theme.onAccent : ink},
                Qt::AlignCenter);
  canvas.horizontal(cell.left(), cell.right(), cell.bottom() - 1, theme.line);
  canvas.vertical(cell.right() - 1, cell.top(), cell.bottom(), theme.line);
  if (!inside) return;
  for (const auto& appointment : appointments) {
    if (month.day(appointment.week, appointment.weekday) != day) continue;
    drawAppointment(canvas, {cell.left() + 6, cell.top() + 34, cell.width() - 12, 38}, appointment, theme);
  }
}

void drawHead(Canvas& canvas, const QRectF& head, const Month& month, const Theme& theme) {
  canvas.textIn(head, words(month.first, u"MMMM yyyy"), {.size = 20, .color = theme.text, .weight = Weight::bold});
  button(canvas, {head.right() - 80, head.top() + 13, 80, 30}, u"Today", ButtonKind::plain, theme);
  button(canvas, {head.right() - 172, head.top() + 13, 80, 30}, u"Month", ButtonKind::primary, theme);
  button(canvas, {head.right() - 264, head.top() + 13, 80, 30}, u"Week", ButtonKind::plain, theme);
}

}  // namespace

void drawCalendar(Canvas& canvas, const Occasion& occasion) {
  constexpr int weeks = 6;
  constexpr int days = 7;
  constexpr qreal headHeight = 56;
  constexpr qreal nameHeight = 26;
  const auto& theme = lightTheme();
  const auto page = window(canvas, canvas.bounds(), u"Calendar", theme);
  const auto today = occasion.taken.date();
  const Month month{QDate(today.year(), today.month(), 1), today};
  drawHead(canvas, {page.left() + 20, page.top(), page.width() - 40, headHeight}, month, theme);
  const auto grid = page.adjusted(0, headHeight + nameHeight, 0, 0);
  const auto width = grid.width() / days;
  const auto height = grid.height() / weeks;
  for (int weekday = 1; weekday <= days; ++weekday) {
    const auto left = grid.left() + (weekday - 1) * width;
    canvas.textIn({left, grid.top() - nameHeight, width, nameHeight}, words(month.day(0, weekday), u"ddd"),
                  {.size = 12, .color = theme.muted, .weight = Weight::bold}, Qt::AlignCenter);
    for (int week = 0; week < weeks; ++week) {
      drawDay(canvas, {left, grid.top() + week * height, width, height}, month, month.day(week, weekday), theme);
    }
  }
  canvas.horizontal(grid.left(), grid.right(), grid.top() - 1, theme.line);
}

}  // namespace Nimbrel::Samples
