#include "Views/Sheets/DuplicateList.h"

#include "Store/Store.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Painting.h"
#include "Views/Shared/RoundedFrame.h"
#include "Views/Sheets/DuplicateStrip.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <utility>

namespace Nimbrel {

namespace {

/// The surface of the strips, with the rules between them.
class Column final : public QWidget {
 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter painter(this);
    painter.fillRect(event->rect(), themeColor(Token::Base));
    const auto pitch = DuplicateStrip::stripHeight();
    for (int y = std::max(1, event->rect().top() / pitch) * pitch; y <= event->rect().bottom(); y += pitch) {
      const QRect rule(Measures::step16 + 1, y, width() - Measures::step16 - 1, 1);
      Painting::horizontalRule(painter, QStyle::visualRect(layoutDirection(), rect(), rule),
                               themeColor(Token::Separator));
    }
  }
};

}  // namespace

DuplicateList::DuplicateList(const Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent)
    : QScrollArea(parent), store_(store), thumbs_(thumbs), loader_(thumbs, previews), column_(new Column) {
  setObjectName(QStringLiteral("duplicateList"));
  setFrameShape(QFrame::NoFrame);
  // Under the scroll bar as well.
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setFocusPolicy(Qt::NoFocus);
  setWidget(column_);
  verticalScrollBar()->setSingleStep(Measures::step24);
  new RoundedFrame(this);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &DuplicateList::layOut);
  connect(&store, &Store::unlockedSensitiveIDsChanged, this, &DuplicateList::refresh);
  connect(&store.settings(), &Settings::changed, this, &DuplicateList::refresh);
  connect(&loader_, &ThumbLoader::thumbLoaded, this, [this](const std::string& path, const QImage& image) {
    for (const auto& [index, strip] : strips_) strip->showThumb(path, image);
  });
}

void DuplicateList::setGroups(std::vector<ShotList> groups, const DuplicateKeepers& keepers) {
  groups_ = std::move(groups);
  keepers_ = keepers;
  const auto count = static_cast<int>(groups_.size());
  column_->resize(viewport()->width(), std::max(count * DuplicateStrip::stripHeight(), viewport()->height()));
  std::erase_if(strips_, [&](const auto& entry) {
    if (entry.first >= count) entry.second->deleteLater();
    return entry.first >= count;
  });
  for (const auto& [index, strip] : strips_) fill(index);
  layOut();
}

void DuplicateList::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  const auto height = static_cast<int>(groups_.size()) * DuplicateStrip::stripHeight();
  column_->resize(viewport()->width(), std::max(height, viewport()->height()));
  for (const auto& [index, strip] : strips_) place(index);
  layOut();
}

void DuplicateList::layOut() {
  if (groups_.empty()) return;
  const auto pitch = DuplicateStrip::stripHeight();
  const auto from = verticalScrollBar()->value();
  const auto count = static_cast<int>(groups_.size());
  const auto first = std::clamp(from / pitch, 0, count - 1);
  // One more, so that the keyboard reaches it and scrolls on.
  const auto last = std::clamp((from + viewport()->height()) / pitch + 1, first, count - 1);
  removeUnseen(first, last);
  for (int index = first; index <= last; ++index) {
    if (!strips_.contains(index)) makeStrip(index);
  }
  load();
}

void DuplicateList::removeUnseen(int first, int last) {
  std::erase_if(strips_, [&](const auto& entry) {
    const auto& [index, strip] = entry;
    if ((index >= first && index <= last) || strip->isAncestorOf(focusWidget())) return false;
    strip->hide();
    strip->deleteLater();
    return true;
  });
}

void DuplicateList::makeStrip(int index) {
  auto* strip = new DuplicateStrip(store_, thumbs_, column_);
  strips_[index] = strip;
  place(index);
  fill(index);
  connect(strip, &DuplicateStrip::placesChanged, this, &DuplicateList::load);
  connect(strip, &DuplicateStrip::chosen, this, [this, strip](const ShotPtr& shot) {
    const auto found = std::ranges::find_if(strips_, [&](const auto& entry) { return entry.second == strip; });
    if (found != strips_.end()) {
      Q_EMIT chosen(groups_[static_cast<std::size_t>(found->first)].front()->id, shot->id);
    }
  });
  strip->show();
}

void DuplicateList::fill(int index) {
  const auto& group = groups_[static_cast<std::size_t>(index)];
  strips_[index]->setGroup(group, keeperOf(group, keepers_));
}

void DuplicateList::place(int index) {
  const auto pitch = DuplicateStrip::stripHeight();
  strips_[index]->setGeometry(0, index * pitch + 1, column_->width(), pitch - 1);
}

void DuplicateList::refresh() {
  for (const auto& [index, strip] : strips_) strip->refresh();
  load();
}

void DuplicateList::load() {
  std::vector<ThumbLoader::Place> places;
  for (const auto& [index, strip] : strips_) {
    const auto more = strip->places();
    places.insert(places.end(), more.begin(), more.end());
  }
  loader_.showThumbs(places);
}

}  // namespace Nimbrel
