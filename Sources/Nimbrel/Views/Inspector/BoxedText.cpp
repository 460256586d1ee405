#include "Views/Inspector/BoxedText.h"

#include "Views/Shared/Painting.h"

#include <QPlainTextDocumentLayout>
#include <QTextDocument>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

/// Lays lines out at a pitch of our own; the plain layout has no notion of one.
class PitchedLayout final : public QPlainTextDocumentLayout {
 public:
  PitchedLayout(QTextDocument* document, int pitch) : QPlainTextDocumentLayout(document), pitch_(pitch) {}

  [[nodiscard]] QRectF blockBoundingRect(const QTextBlock& block) const override {
    if (!block.isValid()) return {};
    auto place = QPlainTextDocumentLayout::blockBoundingRect(block);
    // Each time: after an edit the plain layout has put the lines back without asking.
    spread(*block.layout());
    const auto lines = block.layout()->lineCount();
    if (lines == 0) return place;
    const auto last = block.layout()->lineAt(lines - 1);
    const auto margin = block.next().isValid() ? 0 : document()->documentMargin();
    // The room above the last line's letters is there below them as well.
    const auto slack = std::max(0.0, pitch_ - last.height()) / 2;
    place.setHeight(last.y() + last.height() + slack + margin);
    return place;
  }

 private:
  void spread(QTextLayout& layout) const {
    double top = 0;
    for (int i = 0; i < layout.lineCount(); ++i) {
      auto line = layout.lineAt(i);
      const auto pitch = std::max<double>(pitch_, line.height());
      line.setPosition({line.x(), top + (pitch - line.height()) / 2});
      top += pitch;
    }
  }

  int pitch_;
};

/// Longer than what anybody writes: to look for a place to break it in takes the square of its length.
constexpr qsizetype endlessWord = 2'000;

bool hasEndlessWord(const QTextDocument& text) {
  if (text.characterCount() < endlessWord) return false;
  qsizetype length = 0;
  for (const auto character : text.toRawText()) {
    length = character.isSpace() ? 0 : length + 1;
    if (length == endlessWord) return true;
  }
  return false;
}

}  // namespace

BoxedText::BoxedText(const Look& look, QWidget* parent) : QPlainTextEdit(parent), look_(look) {
  auto* text = new QTextDocument(this);
  text->setDocumentLayout(new PitchedLayout(text, look.linePitch));
  text->setDocumentMargin(look.padding);
  // Before anything else learns of a change, and lays it out.
  connect(text, &QTextDocument::contentsChange, this, [this, text] {
    setWordWrapMode(hasEndlessWord(*text) ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere);
  });
  setDocument(text);
  setFont(textFont(look.style));
  setFrameShape(QFrame::NoFrame);
  setTabChangesFocus(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // The box is painted under the text, where its corners are round.
  viewport()->setAutoFillBackground(false);
}

int BoxedText::contentHeight(int most) const {
  const auto* layout = document()->documentLayout();
  double height = look_.padding;
  for (auto block = document()->firstBlock(); block.isValid() && height < most; block = block.next()) {
    height += layout->blockBoundingRect(block).height();
  }
  return std::min(most, static_cast<int>(std::ceil(height)));
}

bool BoxedText::event(QEvent* event) {
  if (event->type() != QEvent::Paint) return QPlainTextEdit::event(event);
  QPainter painter(this);
  const bool isEdited = hasFocus() && !isReadOnly();
  Painting::fillOutlined(painter, rect(), look_.radius, themeColor(Token::Base),
                         themeColor(isEdited ? Token::Accent : look_.outline));
  return true;
}

void BoxedText::focusInEvent(QFocusEvent* event) {
  QPlainTextEdit::focusInEvent(event);
  update();
}

void BoxedText::focusOutEvent(QFocusEvent* event) {
  QPlainTextEdit::focusOutEvent(event);
  update();
}

}  // namespace Nimbrel
