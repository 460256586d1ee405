#include "Views/Window/SidebarDelegate.h"

#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Window/SidebarModel.h"

#include <QLocale>
#include <QStyle>

namespace Nimbrel {

namespace {

constexpr int padding = Measures::step8;
constexpr int iconGap = Measures::step8;
constexpr int countGap = Measures::step6;
constexpr int titleDrop = Measures::step6;  ///< a title stands nearer to its rows than to those above it

/// A place given as if the script ran from left to right.
QRect mirrored(const QStyleOptionViewItem& option, const QRect& place) {
  return QStyle::visualRect(option.direction, option.rect, place);
}

void paintText(const QStyleOptionViewItem& option, QPainter& painter, const QRect& place, const QString& text,
               Qt::Alignment side) {
  const auto visible = mirrored(option, place);
  const auto shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, visible.width());
  painter.drawText(visible, QStyle::visualAlignment(option.direction, side | Qt::AlignVCenter) | Qt::TextSingleLine,
                   shown);
}

void paintBackground(const QStyleOptionViewItem& option, QPainter& painter) {
  const bool isActive = option.widget != nullptr && option.widget->isActiveWindow();
  if (option.state.testFlag(QStyle::State_Selected)) {
    Painting::fillRounded(painter, option.rect, Measures::controlRadius,
                          themeColor(isActive ? Token::AccentSoft : Token::Quaternary));
  } else if (option.state.testFlag(QStyle::State_MouseOver)) {
    Painting::fillRounded(painter, option.rect, Measures::controlRadius, themeColor(Token::SidebarHover));
  }
  if (option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_KeyboardFocusChange)) {
    Painting::strokeRounded(painter, option.rect, Measures::controlRadius, Measures::focusRingWidth,
                            themeColor(Token::Accent));
  }
}

/// Returns where the title begins.
int paintIcon(const QStyleOptionViewItem& option, QPainter& painter, const SidebarRow& row, const QIcon& icon) {
  const auto size = scaled(Measures::textSymbol);
  const auto left = option.rect.left() + padding;
  const QRect slot(left, option.rect.top(), size, option.rect.height());
  if (!icon.isNull()) {
    icon.paint(&painter, mirrored(option, slot));
  } else {
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    Symbols::paint(painter, mirrored(option, slot), QString::fromStdString(row.symbol), scaled(Measures::sidebarSymbol),
                   themeColor(isSelected ? Token::Accent : Token::Secondary));
  }
  return left + size + iconGap;
}

/// Returns where the room for the title ends.
int paintCount(const QStyleOptionViewItem& option, QPainter& painter, std::size_t count) {
  const auto right = option.rect.left() + option.rect.width() - padding;
  if (count == 0) return right;
  const auto text = QLocale().toString(static_cast<qulonglong>(count));
  painter.setFont(textFont(TextStyle::Caption));
  painter.setPen(themeColor(Token::Secondary));
  const auto width = painter.fontMetrics().horizontalAdvance(text);
  paintText(option, painter, {right - width, option.rect.top(), width, option.rect.height()}, text, Qt::AlignRight);
  return right - width - countGap;
}

}  // namespace

void SidebarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto* model = qobject_cast<const SidebarModel*>(index.model());
  if (model == nullptr) return;
  painter->save();
  const auto text = index.data(Qt::DisplayRole).toString();
  if (const auto* row = model->rowAt(index)) {
    paintBackground(option, *painter);
    const auto left = paintIcon(option, *painter, *row, model->iconAt(index));
    const auto right = paintCount(option, *painter, row->count);
    auto font = textFont(TextStyle::Body);
    if (option.state.testFlag(QStyle::State_Selected)) font.setWeight(QFont::Medium);
    painter->setFont(font);
    painter->setPen(themeColor(Token::Text));
    paintText(option, *painter, {left, option.rect.top(), right - left, option.rect.height()}, text, Qt::AlignLeft);
  } else {
    painter->setFont(textFont(TextStyle::CaptionTitle));
    painter->setPen(themeColor(Token::Secondary));
    paintText(option, *painter, option.rect.adjusted(padding, titleDrop, -padding, 0), text, Qt::AlignLeft);
  }
  painter->restore();
}

QSize SidebarDelegate::sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const {
  // The list is as wide as its column, whatever stands in it. Titles are as high as rows.
  static_assert(Measures::sidebarRowHeight == Measures::sectionTitleHeight);
  return {1, scaled(Measures::sidebarRowHeight)};
}

}  // namespace Nimbrel
