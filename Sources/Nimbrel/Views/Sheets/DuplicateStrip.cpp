#include "Views/Sheets/DuplicateStrip.h"

#include "Foundation/Formats.h"
#include "Store/Store.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Shared/TextStyles.h"
#include "Views/Sheets/DuplicateButton.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int captionTop = Measures::step12;
constexpr int captionGap = Measures::step8;
constexpr int pitch = DuplicateButton::thumbWidth + Measures::step12;
constexpr int ringRoom = Measures::step4;  ///< for the mark of the focus
constexpr int barRoom = Measures::step12;  ///< for the scroll bar

/// Where shots begin, and the caption, behind the rule around the list.
constexpr int inset = Measures::step16 + 1;

int buttonHeight() { return DuplicateButton::thumbHeight + Measures::step6 + lineHeight(TextStyle::Caption); }

int areaTop() { return captionTop + lineHeight(TextStyle::CaptionTitle) + captionGap - ringRoom; }

/// As much as is seen of it, so that a wheel moves the list and not the row under it.
int rowHeight() { return DuplicateStrip::stripHeight() - 1 - areaTop() - barRoom; }

}  // namespace

DuplicateStrip::DuplicateStrip(const Store& store, const ThumbCache& thumbs, QWidget* parent)
    : QWidget(parent),
      store_(store),
      thumbs_(thumbs),
      caption_(new QLabel(this)),
      area_(new QScrollArea(this)),
      row_(new QWidget) {
  setObjectName(QStringLiteral("duplicateStrip"));
  setTextLook(*caption_, TextStyle::CaptionTitle, Token::Secondary);
  // The list has the surface of a field, whose labels would be of the colour of what is entered.
  caption_->setForegroundRole(QPalette::WindowText);
  caption_->setObjectName(QStringLiteral("duplicateCaption"));
  area_->setFrameShape(QFrame::NoFrame);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  area_->setFocusPolicy(Qt::NoFocus);
  area_->setWidget(row_);
  area_->viewport()->setAutoFillBackground(false);
  row_->setAutoFillBackground(false);
  // The room that is seen is known once the area has laid itself out, which is after the strip.
  area_->viewport()->installEventFilter(this);
  connect(area_->horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] {
    layOut();
    Q_EMIT placesChanged();
  });
}

int DuplicateStrip::stripHeight() {
  return captionTop + lineHeight(TextStyle::CaptionTitle) + captionGap + buttonHeight() + barRoom;
}

void DuplicateStrip::setGroup(const ShotList& group, const ShotPtr& keeper) {
  group_ = group;
  keeper_ = keeper;
  const auto day = Formats::relativeDay(group.front()->date, store_.now());
  caption_->setText(tr("%1 similar · %2").arg(QString::number(group.size()), shownText(day)));
  setAccessibleName(caption_->text());
  const auto count = static_cast<int>(group.size());
  row_->resize(2 * inset + count * pitch - Measures::step12, rowHeight());
  std::erase_if(buttons_, [&](const auto& entry) {
    if (entry.first >= count) entry.second->deleteLater();
    return entry.first >= count;
  });
  for (const auto& [index, button] : buttons_) {
    button->setGeometry(placeOf(index));
    button->setShot(group_[static_cast<std::size_t>(index)], {});
    showState(*button);
  }
  layOut();
}

void DuplicateStrip::refresh() {
  for (const auto& [index, button] : buttons_) showState(*button);
}

std::vector<ThumbLoader::Place> DuplicateStrip::places() const {
  std::vector<ThumbLoader::Place> places;
  places.reserve(buttons_.size());
  for (const auto& [index, button] : buttons_) {
    places.push_back({.path = button->shot()->path, .isObscured = button->isLocked()});
  }
  return places;
}

void DuplicateStrip::showThumb(const std::string& path, const QImage& image) {
  for (const auto& [index, button] : buttons_) {
    if (button->shot()->path == path) button->setThumb(image);
  }
}

void DuplicateStrip::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  caption_->setGeometry(inset, captionTop, width() - 2 * inset, lineHeight(TextStyle::CaptionTitle));
  area_->setGeometry(0, areaTop(), width(), height() - areaTop());
}

void DuplicateStrip::layOut() {
  if (group_.empty()) return;
  // The bar begins at the beginning of the script, and so do the shots.
  const auto from = area_->horizontalScrollBar()->value() - inset;
  const auto count = static_cast<int>(group_.size());
  const auto first = std::clamp(from / pitch, 0, count - 1);
  const auto last = std::clamp((from + area_->viewport()->width()) / pitch, first, count - 1);
  removeUnseen(first, last);
  for (int index = first; index <= last; ++index) {
    if (!buttons_.contains(index)) makeButton(index);
  }
}

void DuplicateStrip::removeUnseen(int first, int last) {
  std::erase_if(buttons_, [&](const auto& entry) {
    const auto& [index, button] = entry;
    if ((index >= first && index <= last) || button->hasFocus()) return false;
    button->hide();
    button->deleteLater();
    return true;
  });
}

DuplicateButton* DuplicateStrip::makeButton(int index) {
  auto* button = new DuplicateButton(row_);
  buttons_[index] = button;
  button->setShot(group_[static_cast<std::size_t>(index)], {});
  button->installEventFilter(this);
  connect(button, &QAbstractButton::clicked, this, [this, button] { Q_EMIT chosen(button->shot()); });
  button->setGeometry(placeOf(index));
  showState(*button);
  button->show();
  return button;
}

QRect DuplicateStrip::placeOf(int index) const {
  const QRect place(inset + index * pitch, ringRoom, DuplicateButton::thumbWidth, buttonHeight());
  return QStyle::visualRect(layoutDirection(), row_->rect(), place);
}

void DuplicateStrip::showState(DuplicateButton& button) {
  const auto shot = button.shot();
  button.setShot(shot, shownName(store_, *shot));
  button.setKeeper(shot == keeper_);
  button.setLocked(store_.isProtected(*shot));
  if (!button.hasThumb()) button.setThumb(thumbs_.image(shot->path));
}

bool DuplicateStrip::eventFilter(QObject* object, QEvent* event) {
  if (object == area_->viewport() && event->type() == QEvent::Resize) {
    layOut();
    Q_EMIT placesChanged();
  }
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(object, event);
  const auto found = std::ranges::find_if(buttons_, [&](const auto& entry) { return entry.second == object; });
  if (found == buttons_.end()) return false;
  const auto key = static_cast<QKeyEvent*>(event)->key();
  const bool isForward = key == (layoutDirection() == Qt::RightToLeft ? Qt::Key_Left : Qt::Key_Right);
  if (key != Qt::Key_Left && key != Qt::Key_Right) return false;
  focusShot(std::clamp(found->first + (isForward ? 1 : -1), 0, static_cast<int>(group_.size()) - 1));
  return true;
}

void DuplicateStrip::focusShot(int index) {
  auto* button = buttons_.contains(index) ? buttons_[index] : makeButton(index);
  button->setFocus(Qt::TabFocusReason);
  area_->ensureWidgetVisible(button, inset, 0);
}

}  // namespace Nimbrel
