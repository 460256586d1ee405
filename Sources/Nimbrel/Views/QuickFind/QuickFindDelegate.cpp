#include "Views/QuickFind/QuickFindDelegate.h"

#include "Views/Gallery/ThumbBox.h"
#include "Views/QuickFind/QuickFindResults.h"
#include "Views/Shared/FloatingPanel.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Shared/Theme.h"

#include <QAbstractItemView>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int sidePadding = 14;
constexpr int verticalPadding = 7;
constexpr int gap = 10;
constexpr int lineGap = Measures::step2;

int textHeight() { return lineHeight(TextStyle::Body) + lineGap + lineHeight(TextStyle::Caption); }

/// A place given as if the script ran from left to right.
QRect mirrored(const QStyleOptionViewItem& option, const QRect& place) {
  return QStyle::visualRect(option.direction, option.rect, place);
}

/// As far as it lies within the panel, whose corners are round.
void paintHighlight(const QStyleOptionViewItem& option, QPainter& painter) {
  QPainterPath place;
  place.addRect(option.rect);
  const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
  if (const auto* panel = view != nullptr ? qobject_cast<const FloatingPanel*>(view->window()) : nullptr) {
    const auto corner = view->viewport()->mapTo(panel, QPoint());
    place = place.intersected(panel->interior().translated(-corner));
  }
  painter.setRenderHint(QPainter::Antialiasing);
  painter.fillPath(place, themeColor(Token::HighlightedRow));
}

void paintLine(const QStyleOptionViewItem& option, QPainter& painter, const QRect& place, const QString& text) {
  const auto visible = mirrored(option, place);
  painter.drawText(visible, QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter),
                   painter.fontMetrics().elidedText(text, Qt::ElideRight, visible.width()));
}

void paintTexts(const QStyleOptionViewItem& option, QPainter& painter, const QRect& place, const QuickFindRow& row) {
  auto line = place;
  line.setTop(place.center().y() + 1 - textHeight() / 2);
  line.setHeight(lineHeight(TextStyle::Body));
  painter.setFont(textFont(TextStyle::Body));
  painter.setPen(themeColor(Token::Text));
  paintLine(option, painter, line, row.title);
  line.moveTop(line.top() + line.height() + lineGap);
  line.setHeight(lineHeight(TextStyle::Caption));
  painter.setFont(textFont(TextStyle::Caption));
  painter.setPen(themeColor(Token::Secondary));
  paintLine(option, painter, line, row.subtitle);
}

}  // namespace

QuickFindDelegate::QuickFindDelegate(const VisibleThumbs& thumbs, QObject* parent)
    : QStyledItemDelegate(parent), thumbs_(thumbs) {}

int QuickFindDelegate::rowHeight() { return std::max(thumbSize.height(), textHeight()) + 2 * verticalPadding; }

QSize QuickFindDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
  // The list is as wide as the panel, whatever stands in it.
  return {1, rowHeight()};
}

void QuickFindDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto* results = qobject_cast<const QuickFindResults*>(index.model());
  if (results == nullptr) return;
  const auto row = results->rowAt(index.row());
  const auto& path = results->shots().at(static_cast<std::size_t>(index.row()))->path;
  painter->save();
  if (index.row() == results->highlighted()) paintHighlight(option, *painter);

  auto rest = option.rect.adjusted(sidePadding, 0, -sidePadding, 0);
  QRect thumb(rest.topLeft(), thumbSize);
  thumb.moveTop(rest.top() + (rest.height() - thumb.height()) / 2);
  ThumbBox::paint(*painter, mirrored(option, thumb), Measures::thumbnailRadius, row.isProtected,
                  row.isProtected ? nullptr : thumbs_.picture(path));
  rest.setLeft(rest.left() + thumb.width() + gap);
  if (row.isSensitive) {
    const auto size = scaled(Measures::textSymbol);
    const QRect shield(rest.left() + rest.width() - size, rest.top(), size, rest.height());
    Symbols::paint(*painter, mirrored(option, shield), QStringLiteral("exclamationmark.shield"), size,
                   themeColor(Token::Secondary));
    rest.setWidth(rest.width() - size - gap);
  }
  paintTexts(option, *painter, rest, row);
  painter->restore();
}

}  // namespace Nimbrel
