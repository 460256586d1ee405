#include "Views/Companion/RecentList.h"

#include "Views/Companion/PanelPlacement.h"
#include "Views/Shared/Measures.h"

#include <QHBoxLayout>

namespace Nimbrel {

namespace {

constexpr int headingPadding = 9;
constexpr int rowSpacing = 3;
constexpr int listPadding = 7;

}  // namespace

RecentList::RecentList(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent)
    : QWidget(parent),
      store_(store),
      actions_(store),
      loader_(thumbs, previews),
      thumbs_(thumbs, loader_, nullptr),
      count_(new QLabel),
      placeholder_(new QLabel(tr("No shots yet"))),
      scroller_(new QScrollArea) {
  setObjectName(QStringLiteral("panel.recent"));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  addHeading(*column);
  setTextLook(*placeholder_, TextStyle::Caption, Token::Secondary);
  placeholder_->setObjectName(QStringLiteral("recent.placeholder"));
  placeholder_->setMargin(Measures::rowPadding);
  column->addWidget(placeholder_);
  addRows(*column);
  setListHeight(PanelPlacement::listHeight(std::nullopt));
  const auto refreshIfSeen = [this] {
    if (isVisible()) refresh();
  };
  connect(&store, &Store::shotsChanged, this, refreshIfSeen);
  connect(&store, &Store::derivedChanged, this, refreshIfSeen);
  connect(&store, &Store::unlockedSensitiveIDsChanged, this, refreshIfSeen);
  connect(&store.settings(), &Settings::changed, this, refreshIfSeen);
  connect(&thumbs_, &VisibleThumbs::arrived, this, [this](const std::string& path) {
    for (auto* row : rows_) {
      if (row->shot() && row->shot()->path == path) row->updateThumb();
    }
  });
  refresh();
}

void RecentList::addHeading(QVBoxLayout& column) {
  auto* title = new QLabel(tr("Recent Screenshots"));
  setTextLook(*title, TextStyle::CaptionTitle, Token::Secondary);
  title->setMinimumHeight(lineHeight(TextStyle::CaptionTitle));
  setTextLook(*count_, TextStyle::Caption, Token::Secondary);
  count_->setObjectName(QStringLiteral("recent.count"));
  auto* row = new QHBoxLayout;
  row->setContentsMargins(Measures::rowPadding, headingPadding, Measures::rowPadding, Measures::step6);
  row->addWidget(title);
  row->addStretch();
  row->addWidget(count_);
  column.addLayout(row);
}

void RecentList::addRows(QVBoxLayout& column) {
  auto* content = new QWidget;
  content->setAutoFillBackground(false);
  rowColumn_ = new QVBoxLayout(content);
  rowColumn_->setContentsMargins(listPadding, 0, listPadding, 0);
  rowColumn_->setSpacing(rowSpacing);
  rowColumn_->addStretch();
  scroller_->setObjectName(QStringLiteral("recent.scroller"));
  scroller_->setAccessibleName(tr("Recent Screenshots"));
  scroller_->setFrameShape(QFrame::NoFrame);
  scroller_->setFocusPolicy(Qt::NoFocus);
  scroller_->setWidgetResizable(true);
  scroller_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroller_->setWidget(content);
  // The panel's own surface is seen through it.
  content->setAutoFillBackground(false);
  scroller_->viewport()->setAutoFillBackground(false);
  column.addWidget(scroller_);
}

ShotList RecentList::recent() const { return PanelPlacement::recent(store_.shots()); }

void RecentList::setListHeight(int height) {
  listHeight_ = height;
  scroller_->setFixedHeight(height);
}

void RecentList::refresh() {
  const auto shots = recent();
  while (rows_.size() < shots.size()) {
    auto* row = new MenuBarRow(store_, actions_, thumbs_, scroller_->widget());
    row->setObjectName(QStringLiteral("recent.row%1").arg(rows_.size()));
    rowColumn_->insertWidget(static_cast<int>(rows_.size()), row);
    rows_.push_back(row);
  }
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (i < shots.size()) rows_[i]->setShot(shots[i]);
    rows_[i]->setVisible(i < shots.size());
  }
  count_->setText(tr("Latest %1").arg(shots.size()));
  placeholder_->setVisible(shots.empty());
  scroller_->setVisible(!shots.empty());
  if (isVisible()) loadThumbs(shots);
}

void RecentList::loadThumbs(const ShotList& shots) {
  thumbs_.setRoom(MenuBarRow::thumbSize, devicePixelRatioF());
  std::vector<ThumbLoader::Place> places;
  for (const auto& shot : shots) places.push_back({.path = shot->path, .isObscured = store_.isProtected(*shot)});
  thumbs_.show(places);
}

void RecentList::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  refresh();
}

void RecentList::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  thumbs_.show({});
}

}  // namespace Nimbrel
