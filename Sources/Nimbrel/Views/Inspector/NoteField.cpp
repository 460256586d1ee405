#include "Views/Inspector/NoteField.h"

#include "Views/Shared/Measures.h"

#include <QKeyEvent>
#include <QSignalBlocker>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int fewestLines = 2;
constexpr int mostLines = 6;
constexpr int padding = 5;
constexpr int sidePadding = 4;  ///< beside the padding

int heightOf(int lines) { return lines * lineHeight(TextStyle::Body) + 2 * padding; }

}  // namespace

NoteField::NoteField(QWidget* parent)
    : BoxedText({.style = TextStyle::Body,
                 .linePitch = lineHeight(TextStyle::Body),
                 .padding = padding,
                 .radius = Measures::controlRadius,
                 .outline = Token::Border},
                parent) {
  setViewportMargins(sidePadding, 0, sidePadding, 0);
  connect(this, &QPlainTextEdit::textChanged, this, [this] {
    given_.clear();
    fit();
    Q_EMIT noteEdited();
  });
  fit();
}

void NoteField::setNote(const QString& note) {
  const bool isGiven = !note.isEmpty() && note == given_;
  if (isGiven || note == this->note()) return;
  given_ = note;
  {
    const QSignalBlocker quiet(this);
    setPlainText(note);
  }
  fit();
}

QString NoteField::note() const {
  // The plain text of a document has blanks where there were no-break spaces.
  return document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

void NoteField::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!isReturn) return BoxedText::keyPressEvent(event);
  event->accept();
  if (event->modifiers() & (Qt::ShiftModifier | Qt::AltModifier)) {
    textCursor().insertBlock();
    ensureCursorVisible();
  } else {
    Q_EMIT submitted();
  }
}

void NoteField::resizeEvent(QResizeEvent* event) {
  BoxedText::resizeEvent(event);
  if (event->size().width() != event->oldSize().width()) fit();
}

void NoteField::fit() { setFixedHeight(std::max(heightOf(fewestLines), contentHeight(heightOf(mostLines)))); }

}  // namespace Nimbrel
