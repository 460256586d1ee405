#include "Views/Shelf/TwoLineLabel.h"

#include "Views/Shared/TextStyles.h"

#include <QPainter>
#include <QStringList>
#include <QStyle>
#include <QTextLayout>
#include <QTextOption>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int mostLines = 2;

QFont mediumBody() {
  auto font = textFont(TextStyle::Body);
  font.setWeight(QFont::Medium);
  return font;
}

}  // namespace

TwoLineLabel::TwoLineLabel(QWidget* parent) : QLabel(parent) {
  setTextLook(*this, TextStyle::Body, Token::Text);
  setFont(mediumBody());
  auto policy = QSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void TwoLineLabel::setFullText(const QString& text) {
  fullText_ = text;
  setAccessibleName(text);
  setToolTip(text.toHtmlEscaped());
  updateGeometry();
  update();
}

int TwoLineLabel::mostHeight() { return mostLines * lineHeight(TextStyle::Body); }

QStringList TwoLineLabel::linesIn(int width) const {
  QTextLayout layout(fullText_, font());
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  layout.setTextOption(option);
  layout.beginLayout();
  auto first = layout.createLine();
  if (first.isValid()) first.setLineWidth(width);
  const auto broken = first.isValid() ? static_cast<qsizetype>(first.textLength()) : fullText_.size();
  layout.endLayout();
  if (broken >= fullText_.size()) return {fullText_};
  return {fullText_.left(broken).trimmed(), fontMetrics().elidedText(fullText_.mid(broken), Qt::ElideMiddle, width)};
}

int TwoLineLabel::heightForWidth(int width) const {
  return static_cast<int>(linesIn(width).size()) * lineHeight(TextStyle::Body);
}

QSize TwoLineLabel::sizeHint() const { return {fontMetrics().horizontalAdvance(fullText_) + 1, mostHeight()}; }

QSize TwoLineLabel::minimumSizeHint() const { return {0, lineHeight(TextStyle::Body)}; }

void TwoLineLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setPen(palette().color(foregroundRole()));
  const auto alignment = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
  auto place = contentsRect();
  place.setHeight(lineHeight(TextStyle::Body));
  for (const auto& line : linesIn(place.width())) {
    painter.drawText(place, alignment | Qt::TextSingleLine, line);
    place.translate(0, place.height());
  }
}

}  // namespace Nimbrel
