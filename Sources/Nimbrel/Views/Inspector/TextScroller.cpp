#include "Views/Inspector/TextScroller.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"

#include <QMimeData>

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int lineSpacing = 4;
constexpr int textPadding = 10;
constexpr double matchRadius = 2;

}  // namespace

TextScroller::TextScroller(QWidget* parent)
    : BoxedText({.style = TextStyle::Callout,
                 .linePitch = lineHeight(TextStyle::Callout) + lineSpacing,
                 .padding = textPadding,
                 .radius = Measures::toolRadius,
                 .outline = Token::Separator},
                parent) {
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  document()->setUndoRedoEnabled(false);
  setAccessibleName(tr("Recognized Text"));
  setText({});
}

void TextScroller::setText(const QString& text) {
  text_ = text;
  matches_.clear();
  pieces_ = piecesOf(text);
  setPlainText(pieces_.shown);
  pieces_.shown.clear();
  fit();
}

void TextScroller::setMatches(QList<QTextLayout::FormatRange> matches) {
  matches_ = std::move(matches);
  viewport()->update();
}

void TextScroller::fit() { setFixedHeight(contentHeight(mostHeight)); }

void TextScroller::resizeEvent(QResizeEvent* event) {
  BoxedText::resizeEvent(event);
  if (event->size().width() != event->oldSize().width()) fit();
}

qsizetype TextScroller::placeOf(int position) const {
  const auto block = document()->findBlock(position);
  if (!block.isValid()) return text_.size();
  return pieces_.starts[block.blockNumber()] + position - block.position();
}

QMimeData* TextScroller::createMimeDataFromSelection() const {
  const auto start = placeOf(textCursor().selectionStart());
  const auto end = placeOf(textCursor().selectionEnd());
  auto* mime = new QMimeData;
  mime->setText(text_.mid(start, end - start));
  return mime;
}

void TextScroller::paintEvent(QPaintEvent* event) {
  if (!matches_.isEmpty()) {
    QPainter painter(viewport());
    for (auto block = firstVisibleBlock(); block.isValid(); block = block.next()) {
      const auto place = blockBoundingGeometry(block).translated(contentOffset());
      if (place.top() > viewport()->height()) break;
      paintMatches(painter, block, place.topLeft());
    }
  }
  BoxedText::paintEvent(event);
}

void TextScroller::paintMatches(QPainter& painter, const QTextBlock& block, QPointF corner) const {
  const auto start = pieces_.starts[block.blockNumber()];
  const auto end = start + block.length() - 1;
  const auto endOf = [](const QTextLayout::FormatRange& match) { return qsizetype{match.start} + match.length; };
  auto match = std::ranges::upper_bound(matches_, start, {}, endOf);
  for (; match != matches_.end() && match->start < end; ++match) {
    const auto from = static_cast<int>(std::max<qsizetype>(match->start, start) - start);
    const auto to = static_cast<int>(std::min(endOf(*match), end) - start);
    for (int i = block.layout()->lineForTextPosition(from).lineNumber(); i < block.layout()->lineCount(); ++i) {
      const auto line = block.layout()->lineAt(i);
      if (line.textStart() >= to) break;
      const auto one = line.cursorToX(std::max(from, line.textStart()));
      const auto other = line.cursorToX(std::min(to, line.textStart() + line.textLength()));
      const QRectF place(corner.x() + std::min(one, other), corner.y() + line.y(), std::abs(other - one),
                         line.height());
      Painting::fillRounded(painter, place, matchRadius, match->format.background().color());
    }
  }
}

}  // namespace Nimbrel
