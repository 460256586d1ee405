#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"
#include "Samples/Words.h"

#include <array>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

struct Letter {
  QStringView sender;
  QStringView subject;
  QStringView beginning;
  int daysBefore;
};

constexpr std::array<Letter, 8> letters{
    {{u"Ines Calder", u"Workshop on bookbinding", u"Dear Mara, thank you for agreeing to lead the workshop", 0},
     {u"Pelloway Transit", u"Your season ticket", u"Your ticket for zones 2 and 3 is valid from Monday on", 0},
     {u"Tomas Reyl", u"Re: Proofs of the spring catalog", u"Pages 12 to 19 look right now. On page 14 the caption", 1},
     {u"Oakmere Coffee", u"New roast this week", u"A washed lot from a small farm, with notes of plum", 2},
     {u"Leo Marsh", u"Keys for the storage room", u"I left them with the front desk, in an envelope with", 3},
     {u"Priya Nandan", u"Notes from Tuesday", u"Three things to decide before the catalog goes out", 4},
     {u"Dunmere Library", u"Two books are due soon", u"Please return or renew them by Friday evening", 5},
     {u"Jonas Peake", u"Paper samples", u"The cream one in 300 g is what we should take for it", 6}}};

constexpr QStringView letter =
    u"Dear Mara,\n"
    u"\n"
    u"thank you for agreeing to lead the workshop. We have eleven people so far and room for fourteen. It takes place "
    u"in "
    u"the reading room of Dunmere Library, 5 Harbor Square, and begins at 2:30 PM.\n"
    u"\n"
    u"Could you send me a list of the tools that each table needs? The library has cutting mats and steel rulers, but "
    u"no "
    u"bone folders and no awls. Our budget for material is $180, receipts go to me.\n"
    u"\n"
    u"If anything comes up on the day, call the front desk at (503) 555-0163 or me at (503) 555-0188.\n"
    u"\n"
    u"Kind regards\n"
    u"Ines Calder\n"
    u"Dunmere Library Friends";

void drawList(Canvas& canvas, const QRectF& column, const QDateTime& now, const Theme& theme) {
  QRectF row(column.left(), column.top(), column.width() - 1, 74);
  for (const auto& entry : letters) {
    if (row.top() > column.bottom()) break;
    const auto sent = now.addDays(-entry.daysBefore);
    if (&entry == &letters.front()) canvas.fill(row, theme.selection);
    const auto inside = row.adjusted(16, 0, -14, 0);
    const QRectF line(inside.left(), inside.top() + 7, inside.width(), 20);
    canvas.textIn(line.adjusted(0, 0, -60, 0), entry.sender, {.size = 13, .color = theme.text, .weight = Weight::bold});
    canvas.textIn(line, entry.daysBefore == 0 ? u"Today"_s : words(sent, u"MMM d"), {.size = 11, .color = theme.muted},
                  Qt::AlignRight);
    canvas.textIn(line.translated(0, 20), entry.subject, {.size = 13, .color = theme.text});
    canvas.textIn(line.translated(0, 39), entry.beginning, {.size = 12, .color = theme.muted});
    canvas.horizontal(row.left(), row.right(), row.bottom() - 1, theme.line);
    row.translate(0, 74);
  }
  canvas.vertical(column.right() - 1, column.top(), column.bottom(), theme.line);
}

void drawLetter(Canvas& canvas, const QRectF& page, const QDateTime& now, const Theme& theme) {
  const auto inside = page.adjusted(28, 20, -28, -16);
  canvas.textIn({inside.left(), inside.top(), inside.width(), 28}, u"Workshop on bookbinding",
                {.size = 18, .color = theme.text, .weight = Weight::bold});
  avatar(canvas, {inside.left() + 20, inside.top() + 58}, 20, u"IC", QColor(0x8a5aa8));
  const QRectF line(inside.left() + 54, inside.top() + 38, inside.width() - 54, 20);
  canvas.textIn(line, u"Ines Calder <ines.calder@example.org>", {.size = 13, .color = theme.text});
  canvas.textIn(line.translated(0, 20),
                u"to Mara Ellwood, "_s + words(now.addSecs(-4LL * 3600), u"MMMM d, yyyy 'at' h:mm AP"),
                {.size = 12, .color = theme.muted});
  canvas.horizontal(inside.left(), inside.right(), inside.top() + 92, theme.line);
  const auto text = inside.adjusted(0, 108, 0, 0);
  canvas.paragraph(text, letter, {.size = 14, .color = theme.text}, 22);
  const auto y = inside.bottom() - 32;
  button(canvas, {inside.left(), y, 90, 32}, u"Reply", ButtonKind::primary, theme);
  button(canvas, {inside.left() + 102, y, 90, 32}, u"Forward", ButtonKind::plain, theme);
  button(canvas, {inside.left() + 204, y, 90, 32}, u"Archive", ButtonKind::plain, theme);
}

}  // namespace

void drawMail(Canvas& canvas, const Occasion& occasion) {
  constexpr std::array<QStringView, 8> folders{u"#MARA",   u"Inbox  4", u"Drafts  1", u"Sent",
                                               u"Archive", u"#LABELS",  u"Studio",    u"Household"};
  constexpr qreal listWidth = 290;
  const auto& theme = lightTheme();
  const auto page = window(canvas, canvas.bounds(), u"Inbox - Lanternmail", theme);
  const auto rest = sidebar(canvas, page, 140, folders, 1, theme);
  drawList(canvas, {rest.left(), rest.top(), listWidth, rest.height()}, occasion.taken, theme);
  drawLetter(canvas, rest.adjusted(listWidth, 0, 0, 0), occasion.taken, theme);
}

}  // namespace Nimbrel::Samples
