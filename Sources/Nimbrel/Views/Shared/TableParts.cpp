#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/StyleParts.h"
#include "Views/Shared/TextStyles.h"

#include <QStyle>

namespace Nimbrel::StyleParts {

void paintHeaderSection(const QStyleOption& option, QPainter& painter) {
  painter.fillRect(option.rect, themeColor(Token::Bar));
  const auto width = Painting::hairlineWidth(Painting::scaleOf(painter));
  const QRectF place(option.rect);
  Painting::horizontalRule(painter, QRectF(place.left(), place.bottom() - width, place.width(), width),
                           themeColor(Token::Separator));
}

void paintHeaderLabel(const QStyleOptionHeader& option, QPainter& painter) {
  painter.setFont(textFont(TextStyle::CaptionTitle));
  painter.setPen(themeColor(Token::Secondary));
  const auto place = option.rect.adjusted(Measures::rowPadding, 0, -Measures::rowPadding, 0);
  const auto side = option.textAlignment.testFlag(Qt::AlignRight) ? Qt::AlignRight : Qt::AlignLeft;
  const auto text = painter.fontMetrics().elidedText(option.text, Qt::ElideRight, place.width());
  painter.drawText(place, QStyle::visualAlignment(option.direction, side | Qt::AlignVCenter), text);
}

void paintItemBackground(const QStyleOptionViewItem& option, QPainter& painter) {
  if (has(option, QStyle::State_Selected)) {
    // Views take the flag of activity off where another widget of the window has the focus.
    const bool isActive = option.widget ? option.widget->isActiveWindow() : has(option, QStyle::State_Active);
    painter.fillRect(option.rect, themeColor(isActive ? Token::AccentRow : Token::Quaternary));
  }
  if (option.index.row() <= 0) return;
  const bool isFirst = option.viewItemPosition == QStyleOptionViewItem::Beginning ||
                       option.viewItemPosition == QStyleOptionViewItem::OnlyOne || option.index.column() == 0;
  const auto inset = isFirst ? Measures::rowPadding : 0;
  const auto rule = QStyle::visualRect(option.direction, option.rect, option.rect.adjusted(inset, 0, 0, 0));
  Painting::horizontalRule(painter, rule, themeColor(Token::Separator));
}

}  // namespace Nimbrel::StyleParts
