#include "Views/Gallery/CellPainter.h"

#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"

#include <QFontMetrics>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr int partSpacing = 5;
constexpr int metaSpacing = 4;
constexpr int snippetPadding = 1;
constexpr int picturePadding = 3;
constexpr int lockSymbol = 20;
constexpr int missingSymbol = 30;
constexpr int starDisc = 20;
constexpr int starPadding = 5;
constexpr int titlePadding = 6;
constexpr QSize filmstripBox(104, 68);
constexpr int filmstripPadding = 2;
constexpr int filmstripSpacing = 4;
constexpr int filmstripLock = 17;
constexpr double filmstripStroke = 3;
constexpr qsizetype longestSnippet = 400;  ///< wider than any cell

QString ellipsis() { return QStringLiteral("…"); }

struct StyledText {
  QString text;
  QList<QTextLayout::FormatRange> formats;
};

StyledText styled(std::span<const SnippetRun> runs) {
  QTextCharFormat emphasised;
  emphasised.setFontWeight(QFont::DemiBold);
  emphasised.setForeground(themeColor(Token::Text));
  StyledText result;
  for (const auto& run : runs) {
    const auto text = oneLine(QString::fromStdString(run.text));
    if (run.isEmphasised) {
      result.formats.append({static_cast<int>(result.text.size()), static_cast<int>(text.size()), emphasised});
    }
    result.text += text;
    if (result.text.size() > longestSnippet) break;
  }
  return result;
}

/// How many letters of a layout's text have room on one line; -1 when there is none at all.
int fitting(QTextLayout& layout, double width) {
  layout.beginLayout();
  auto line = layout.createLine();
  if (line.isValid()) line.setLineWidth(width);
  layout.endLayout();
  return line.isValid() ? line.textLength() : -1;
}

}  // namespace

CellPainter::CellPainter(QPainter& painter, Qt::LayoutDirection direction) : painter_(painter), direction_(direction) {
  painter_.setLayoutDirection(direction);
}

QSize CellPainter::pictureRoom(QSize box) { return box - QSize(2 * picturePadding, 2 * picturePadding); }

QSize CellPainter::filmstripPictureRoom() { return filmstripBox - QSize(2 * filmstripPadding, 2 * filmstripPadding); }

QSize CellPainter::filmstripCellSize() {
  return {filmstripBox.width(), filmstripBox.height() + filmstripSpacing + lineHeight(TextStyle::Caption2)};
}

QRect CellPainter::mirrored(const QRect& place, const QRect& within) const {
  return QStyle::visualRect(direction_, within, place);
}

void CellPainter::paintLock(QPainter& painter, const QRectF& place, int size) {
  Symbols::paint(painter, place, QStringLiteral("lock.fill"), size, themeColor(Token::Secondary));
}

void CellPainter::paintMissing(QPainter& painter, const QRectF& place) {
  Symbols::paint(painter, place, QStringLiteral("photo"), missingSymbol, themeColor(Token::Tertiary));
}

void CellPainter::paintCell(const QRect& place, QSize box, const CellContent& content, const Look& look) const {
  const QRect boxPlace(place.topLeft(), box);
  paintBox({.place = boxPlace,
            .radius = Measures::controlRadius,
            .selectedStroke = Measures::selectionStroke,
            .lockSize = lockSymbol},
           content.isProtected, look);
  if (content.isFavorite) paintStar(boxPlace);

  QRect line(place.left(), boxPlace.bottom() + 1 + partSpacing, place.width(), lineHeight(TextStyle::Caption));
  paintText(line, content.title, TextStyle::Caption, Token::Text, Qt::ElideMiddle);
  line.moveTop(line.bottom() + 1 + partSpacing);
  line.setHeight(lineHeight(TextStyle::Caption2));
  paintMeta(line, content);
  if (content.isProtected || look.snippet.empty()) return;
  line.moveTop(line.bottom() + 1 + partSpacing + snippetPadding);
  paintSnippet(line, look.snippet);
}

void CellPainter::paintFilmstripCell(const QRect& place, const QString& title, bool isProtected,
                                     const Look& look) const {
  const QRect boxPlace(place.topLeft(), filmstripBox);
  paintBox({.place = boxPlace,
            .radius = Measures::filmstripRadius,
            .selectedStroke = filmstripStroke,
            .lockSize = filmstripLock},
           isProtected, look);
  const QRect line(place.left(), boxPlace.bottom() + 1 + filmstripSpacing, place.width(),
                   lineHeight(TextStyle::Caption2));
  paintText(line, title, TextStyle::Caption2, Token::Text, Qt::ElideRight, Qt::AlignHCenter);
}

void CellPainter::paintSectionTitle(const QRect& place, const QString& title) const {
  painter_.fillRect(place, themeColor(Token::Bar));
  paintText(place.adjusted(Measures::step16, titlePadding, -Measures::step16, -titlePadding), title,
            TextStyle::Headline, Token::Text, Qt::ElideRight);
}

void CellPainter::paintBox(const Box& box, bool isProtected, const Look& look) const {
  Painting::fillRounded(painter_, box.place, box.radius, themeColor(Token::Quaternary));
  if (isProtected) {
    paintLock(painter_, box.place, scaled(box.lockSize));
  } else if (look.picture != nullptr) {
    const auto scale = Painting::scaleOf(painter_);
    const auto size = look.picture->deviceIndependentSize();
    const auto onGrid = [scale](double value) { return std::round(value * scale) / scale; };
    painter_.drawPixmap(QPointF(onGrid(box.place.x() + (box.place.width() - size.width()) / 2),
                                onGrid(box.place.y() + (box.place.height() - size.height()) / 2)),
                        *look.picture);
  } else {
    paintMissing(painter_, box.place);
  }
  if (look.isSelected) {
    Painting::strokeRounded(painter_, box.place, box.radius, box.selectedStroke, themeColor(Token::Accent));
  } else {
    // One pixel of the screen, whatever its scale.
    Painting::strokeRounded(painter_, box.place, box.radius, 1 / Painting::scaleOf(painter_),
                            themeColor(Token::Separator));
  }
}

void CellPainter::paintStar(const QRect& box) const {
  const QRect disc =
      mirrored({box.right() + 1 - starPadding - starDisc, box.top() + starPadding, starDisc, starDisc}, box);
  Painting::fillOutlined(painter_, disc, starDisc / 2.0, themeColor(Token::Popover), themeColor(Token::Separator));
  Symbols::paint(painter_, disc, QStringLiteral("star.fill"), Measures::metaSymbol, themeColor(Token::Star));
}

void CellPainter::paintText(const QRect& place, const QString& text, TextStyle style, Token token,
                            Qt::TextElideMode mode, Qt::Alignment alignment) const {
  const auto font = textFont(style);
  painter_.setFont(font);
  painter_.setPen(themeColor(token));
  painter_.drawText(place, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                    QFontMetrics(font).elidedText(text, mode, place.width()));
}

void CellPainter::paintMeta(const QRect& place, const CellContent& content) const {
  const auto size = scaled(Measures::metaSymbol);
  const QRect icon(place.left(), place.top() + (place.height() - size) / 2, size, size);
  if (content.icon.isNull()) {
    Symbols::paint(painter_, mirrored(icon, place), content.symbol, size, themeColor(Token::Secondary));
  } else {
    content.icon.paint(&painter_, mirrored(icon, place));
  }
  const QFontMetrics metrics(textFont(TextStyle::Caption2));
  const auto inbox = content.isInInbox ? QStringLiteral("· Inbox") : QString();
  const auto inboxWidth = inbox.isEmpty() ? 0 : metrics.horizontalAdvance(inbox) + metaSpacing;
  QRect rest = place.adjusted(size + metaSpacing, 0, 0, 0);
  const auto sourceWidth = std::clamp(rest.width() - inboxWidth, 0, metrics.horizontalAdvance(content.source) + 1);
  rest.setWidth(sourceWidth);
  paintText(mirrored(rest, place), content.source, TextStyle::Caption2, Token::Secondary, Qt::ElideRight);
  if (inbox.isEmpty()) return;
  const QRect end(rest.right() + metaSpacing, place.top(), inboxWidth, place.height());
  paintText(mirrored(end, place), inbox, TextStyle::Caption2, Token::Secondary, Qt::ElideNone);
}

void CellPainter::paintSnippet(const QRect& place, std::span<const SnippetRun> runs) const {
  auto [text, formats] = styled(runs);
  const auto font = textFont(TextStyle::Caption2);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAnywhere);
  option.setTextDirection(direction_);
  QTextLayout layout(text, font);
  layout.setTextOption(option);
  layout.setFormats(formats);
  const auto all = fitting(layout, place.width());
  if (all >= 0 && all < text.size()) {
    const auto some = fitting(layout, place.width() - QFontMetrics(font).horizontalAdvance(ellipsis()));
    layout.setText(text.left(std::max(some, 0)) + ellipsis());
    layout.setFormats(formats);
    // Wider than its own width, so that the sign itself is never put on a line of its own.
    fitting(layout, place.width() + Measures::step12);
  }
  painter_.save();
  painter_.setClipRect(place, Qt::IntersectClip);
  painter_.setPen(themeColor(Token::Secondary));
  const auto height = layout.lineCount() > 0 ? layout.lineAt(0).height() : 0;
  const auto left = direction_ == Qt::RightToLeft && layout.lineCount() > 0
                        ? place.right() + 1 - layout.lineAt(0).width()
                        : place.left();
  layout.draw(&painter_, QPointF(left, place.top() + (place.height() - height) / 2));
  painter_.restore();
}

}  // namespace Nimbrel
