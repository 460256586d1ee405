#include "Samples/Controls.h"
#include "Samples/Pictures/Pictures.h"
#include "Samples/Words.h"

#include <array>
#include <span>

using namespace Qt::StringLiterals;

namespace Nimbrel::Samples {

namespace {

struct Message {
  /// Empty for what the user wrote.
  QStringView sender;
  QStringView text;
  int minutesBefore = 0;
};

constexpr int textSize = 14;
constexpr qreal lineHeight = 20;

QString initials(QStringView name) {
  QString letters;
  for (const auto word : name.split(u' ')) letters += word.front();
  return letters;
}

QColor groundOf(QStringView name) {
  constexpr std::array<QRgb, 4> grounds{0x3a7d6b, 0x8a5aa8, 0xb0662c, 0x3d6ea8};
  return QColor(grounds[name.size() % grounds.size()]);
}

/// Returns the foot of the message.
qreal drawMessage(Canvas& canvas, const QRectF& page, qreal top, const Message& message, const QDateTime& now,
                  const Theme& theme) {
  constexpr qreal padding = 12;
  const bool own = message.sender.isEmpty();
  const TextStyle style{.size = textSize, .color = own ? theme.onAccent : theme.text};
  const auto limit = page.width() * 0.62;
  const auto width = canvas.paragraphWidth(limit, message.text, style) + 2 * padding;
  const auto height = canvas.paragraphHeight(limit, message.text, style, lineHeight) + 16;
  const auto left = own ? page.right() - 20 - width : page.left() + 62;
  const auto clock = words(now.addSecs(-60LL * message.minutesBefore), u"h:mm AP");
  const auto heading = own ? clock : message.sender.toString() + u"   "_s + clock;
  canvas.textIn({left, top, own ? width : 400, 18}, heading, {.size = 11, .color = theme.muted},
                own ? Qt::AlignRight : Qt::AlignLeft);
  const QRectF bubble(left, top + 20, width, height);
  canvas.panel(bubble, 12, own ? theme.accent : theme.chrome);
  canvas.paragraph({left + padding, bubble.top() + 8, limit, height}, message.text, style, lineHeight);
  if (!own)
    avatar(canvas, {page.left() + 34, bubble.top() + 18}, 17, initials(message.sender), groundOf(message.sender));
  return bubble.bottom() + 12;
}

void drawConversation(Canvas& canvas, const QRectF& page, QStringView with, QStringView state,
                      std::span<const Message> messages, const QDateTime& now, const Theme& theme) {
  constexpr qreal headHeight = 52;
  constexpr qreal footHeight = 58;
  canvas.textIn({page.left() + 20, page.top() + 6, page.width(), 22}, with,
                {.size = 15, .color = theme.text, .weight = Weight::bold});
  canvas.textIn({page.left() + 20, page.top() + 27, page.width(), 18}, state, {.size = 12, .color = theme.muted});
  canvas.horizontal(page.left(), page.right(), page.top() + headHeight, theme.line);
  auto y = page.top() + headHeight + 14;
  for (const auto& message : messages) y = drawMessage(canvas, page, y, message, now, theme);
  canvas.textIn({page.right() - 220, y - 8, 200, 18}, u"Delivered", {.size = 11, .color = theme.muted}, Qt::AlignRight);

  const QRectF foot(page.left(), page.bottom() - footHeight, page.width(), footHeight);
  canvas.horizontal(foot.left(), foot.right(), foot.top(), theme.line);
  const auto entry = foot.adjusted(20, 12, -110, -12);
  canvas.panel(entry, 17, theme.field, theme.line);
  canvas.textIn(entry.adjusted(16, 0, -16, 0), u"Write a message", {.size = 14, .color = theme.muted});
  button(canvas, {foot.right() - 96, foot.top() + 12, 76, 34}, u"Send", ButtonKind::primary, theme);
}

}  // namespace

void drawChat(Canvas& canvas, const Occasion& occasion) {
  constexpr std::array<Message, 7> messages{
      {{u"Jonas Peake", u"Morning! Did the samples from Brindlewick Paper arrive?", 41},
       {u"", u"Yes, two boxes yesterday. The cream stock is lovely, the grey one is too thin for the cover.", 38},
       {u"Jonas Peake", u"Good to know. They can do 300 sheets of the cream by the 14th for $486.00.", 33},
       {u"", u"Then let's take it. Can you reply to them today? Their number is (503) 555-0142.", 29},
       {u"Jonas Peake",
        u"Will do. Delivery goes to 18 Alder Lane, Suite 4, and I asked for a call before they come up.", 22},
       {u"Jonas Peake", u"Lunch on Thursday at 12:30? The place by the old mill has a table.", 6},
       {u"", u"Thursday works. See you there!", 2}}};
  const auto& theme = lightTheme();
  const auto page = window(canvas, canvas.bounds(), u"Pigeonpost", theme);
  constexpr std::array<QStringView, 8> people{u"#DIRECT", u"Jonas Peake", u"Priya Nandan", u"Tomas Reyl",
                                              u"#ROOMS",  u"studio",      u"printing",     u"lunch"};
  const auto talk = sidebar(canvas, page, 170, people, 1, theme);
  drawConversation(canvas, talk, u"Jonas Peake", u"Active now", messages, occasion.taken, theme);
}

void drawGroupChat(Canvas& canvas, const Occasion& occasion) {
  constexpr std::array<Message, 6> messages{
      {{u"Priya Nandan", u"The release candidate is on the staging machine. Please try the import before noon.", 58},
       {u"Leo Marsh", u"Import of 12,000 rows took 41 seconds here. Last week it was 95.", 44},
       {u"", u"Same here, 39 seconds. Memory stays below 400 MB.", 40},
       {u"Ines Calder",
        u"One thing: the message after a cancelled import still says \"Import failed\". NIM-142 covers it.", 27},
       {u"Priya Nandan", u"Good catch. I will change the wording and ship at 15:00 if nobody objects.", 15},
       {u"", u"No objections from me. Thanks all.", 9}}};
  const auto& theme = darkTheme();
  const auto page = window(canvas, canvas.bounds(), u"Pigeonpost - release-room", theme);
  drawConversation(canvas, page, u"# release-room", u"14 members, Leo Marsh is typing", messages, occasion.taken,
                   theme);
}

}  // namespace Nimbrel::Samples
