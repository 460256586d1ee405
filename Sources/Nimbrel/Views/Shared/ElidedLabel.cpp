#include "Views/Shared/ElidedLabel.h"

#include <QLocale>

#include <algorithm>

namespace Nimbrel {

namespace {

/// The controls of the bidirectional algorithm (Unicode Standard Annex 9).
bool steersDirection(QChar letter) {
  const auto code = letter.unicode();
  return code == 0x061C || code == 0x200E || code == 0x200F || (code >= 0x202A && code <= 0x202E) ||
         (code >= 0x2066 && code <= 0x2069);
}

}  // namespace

QString oneLine(const QString& text) {
  auto line = text;
  for (auto& letter : line) {
    const auto category = letter.category();
    if (steersDirection(letter)) {
      letter = QChar::ReplacementCharacter;
    } else if (category == QChar::Other_Control || category == QChar::Separator_Line ||
               category == QChar::Separator_Paragraph) {
      letter = QLatin1Char(' ');
    }
  }
  return line;
}

ElidedLabel::ElidedLabel(TextStyle style, Token token, Qt::TextElideMode mode, QWidget* parent)
    : QLabel(parent), mode_(mode), lineHeight_(lineHeight(style)) {
  setTextLook(*this, style, token);
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void ElidedLabel::setFullText(const QString& text) {
  fullText_ = oneLine(text);
  setAccessibleName(fullText_);
  updateGeometry();
  shorten();
}

QSize ElidedLabel::sizeHint() const {
  return {fontMetrics().horizontalAdvance(fullText_) + 1, std::max(lineHeight_, fontMetrics().height())};
}

QSize ElidedLabel::minimumSizeHint() const {
  return {fontMetrics().horizontalAdvance(QChar(0x2026)), sizeHint().height()};
}

void ElidedLabel::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  shorten();
}

void ElidedLabel::shorten() {
  const auto shown = fontMetrics().elidedText(fullText_, mode_, width());
  if (shown != text()) setText(shown);
  setToolTip(shown == fullText_ ? QString() : fullText_.toHtmlEscaped());
}

CountLabel::CountLabel(QWidget* parent) : QLabel(parent) { setTextLook(*this, TextStyle::Caption, Token::Secondary); }

void CountLabel::setCount(qint64 count) { setText(count == 0 ? QString() : QLocale().toString(count)); }

}  // namespace Nimbrel
