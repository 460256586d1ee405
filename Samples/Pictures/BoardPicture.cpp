#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"

#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

struct Issue {
  QStringView key;
  QStringView summary;
  QStringView label;
  QRgb labelColor;
  QStringView priority;
  QStringView assignee;
};

struct Column {
  QStringView title;
  std::span<const Issue> issues;
};

constexpr QRgb bug = 0xb5443a;
constexpr QRgb feature = 0x2f6bd8;
constexpr QRgb chore = 0x5f6b7a;

constexpr std::array<Issue, 5> open{
    {{u"NIM-157", u"Keep the scroll position when the sidebar is folded away", u"Feature", feature, u"Low", u"LM"},
     {u"NIM-155", u"Dates in the export use the wrong time zone", u"Bug", bug, u"High", u"PN"},
     {u"NIM-151", u"Offer a list of recently used folders", u"Feature", feature, u"Medium", u"IC"},
     {u"NIM-149", u"Update the third-party notices", u"Chore", chore, u"Low", u"TR"},
     {u"NIM-148", u"Tooltips are cut off at the right edge of the screen", u"Bug", bug, u"Medium", u"LM"}}};

constexpr std::array<Issue, 4> active{
    {{u"NIM-142", u"A cancelled import is reported as failed", u"Bug", bug, u"High", u"PN"},
     {u"NIM-139", u"Search finds words with and without accents", u"Feature", feature, u"High", u"ME"},
     {u"NIM-136", u"Reduce memory while large folders are read", u"Feature", feature, u"Medium", u"LM"},
     {u"NIM-133", u"Measure start time on slow disks", u"Chore", chore, u"Low", u"TR"}}};

constexpr std::array<Issue, 3> review{
    {{u"NIM-144", u"Keyboard focus is lost after renaming", u"Bug", bug, u"High", u"ME"},
     {u"NIM-138", u"Show the file size next to its dimensions", u"Feature", feature, u"Low", u"IC"},
     {u"NIM-131", u"Ask before more than twenty items are deleted", u"Feature", feature, u"Medium", u"PN"}}};

constexpr std::array<Issue, 4> done{
    {{u"NIM-141", u"Crash when the last tab is closed twice", u"Bug", bug, u"High", u"LM"},
     {u"NIM-135", u"Remember the window size for each screen", u"Feature", feature, u"Low", u"ME"},
     {u"NIM-130", u"Translate the help pages into Dutch", u"Chore", chore, u"Low", u"IC"},
     {u"NIM-128", u"Progress bar jumps back to zero", u"Bug", bug, u"Medium", u"TR"}}};

constexpr std::array<Column, 4> columns{
    {{u"To do", open}, {u"In progress", active}, {u"In review", review}, {u"Done", done}}};

constexpr qreal cardHeight = 114;

void drawIssue(Canvas& canvas, const QRectF& card, const Issue& issue, const Theme& theme) {
  canvas.panel(card, 6, theme.page, theme.line);
  const auto inside = card.adjusted(14, 10, -14, -10);
  canvas.textIn({inside.left(), inside.top(), 120, 18}, issue.key,
                {.size = 12, .color = theme.accent, .weight = Weight::bold});
  canvas.textIn({inside.left(), inside.top(), inside.width(), 18}, issue.priority, {.size = 12, .color = theme.muted},
                Qt::AlignRight);
  canvas.paragraph({inside.left(), inside.top() + 22, inside.width(), 40}, issue.summary,
                   {.size = 13, .color = theme.text}, 19);
  pill(canvas, {inside.left(), inside.bottom() - 20}, issue.label, QColor(issue.labelColor), Qt::white);
  avatar(canvas, {inside.right() - 12, inside.bottom() - 10}, 12, issue.assignee, QColor(0x6d7f4a));
}

void drawColumn(Canvas& canvas, const QRectF& box, const Column& column, const Theme& theme) {
  canvas.panel(box, 8, theme.side);
  canvas.textIn({box.left() + 14, box.top() + 8, box.width() - 28, 24}, column.title,
                {.size = 13, .color = theme.text, .weight = Weight::bold});
  canvas.textIn({box.left() + 14, box.top() + 8, box.width() - 28, 24}, QString::number(column.issues.size()),
                {.size = 13, .color = theme.muted}, Qt::AlignRight);
  QRectF card(box.left() + 10, box.top() + 40, box.width() - 20, cardHeight);
  for (const auto& issue : column.issues) {
    drawIssue(canvas, card, issue, theme);
    card.translate(0, cardHeight + 8);
  }
}

}  // namespace

void drawIssueBoard(Canvas& canvas, const Occasion& occasion) {
  const auto& theme = lightTheme();
  const auto screen = desktop(canvas, u"Browser", occasion.taken);
  const auto frame = window(canvas, screen, u"Sprint 14 - Trackstead", theme);
  const auto page = browser(canvas, frame, u"Sprint 14", u"trackstead.example.com/projects/NIM/board", theme);
  constexpr std::array<QStringView, 9> entries{u"#PROJECT",       u"Board",         u"Backlog",
                                               u"Issues",         u"Releases",      u"#FILTERS",
                                               u"Assigned to me", u"High priority", u"Status changed"};
  const auto body = sidebar(canvas, page, 200, entries, 1, theme);
  canvas.textIn({body.left() + 24, body.top() + 16, 500, 30}, u"Sprint 14: import and search",
                {.size = 20, .color = theme.text, .weight = Weight::bold});
  canvas.textIn({body.left() + 24, body.top() + 46, 500, 20}, u"5 days left, 16 issues, 31 of 54 points done",
                {.size = 13, .color = theme.muted});
  button(canvas, {body.right() - 144, body.top() + 22, 120, 32}, u"Create issue", ButtonKind::primary, theme);
  const auto width = (body.width() - 48 - 3 * 14) / 4;
  QRectF box(body.left() + 24, body.top() + 80, width, body.height() - 100);
  for (const auto& column : columns) {
    drawColumn(canvas, box, column, theme);
    box.translate(width + 14, 0);
  }
}

}  // namespace Nimbrel::Samples
