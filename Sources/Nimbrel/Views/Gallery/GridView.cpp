#include "Views/Gallery/GridView.h"

#include "Views/Gallery/GallerySelection.h"
#include "Views/Gallery/ScrollAnchor.h"
#include "Views/Shared/ElidedLabel.h"
#include "Views/Shared/Theme.h"

#include <QResizeEvent>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int linePixels = 40;  ///< of which a notch of the wheel turns three
constexpr int mostAttempts = 3;

GridMetrics metricsFor(double thumbSize) {
  return {.thumbSize = thumbSize,
          .sectionTitleHeight = lineHeight(TextStyle::Headline),
          .titleHeight = lineHeight(TextStyle::Caption),
          .metaHeight = lineHeight(TextStyle::Caption2),
          .snippetHeight = lineHeight(TextStyle::Caption2)};
}

/// Where the anchor is in another list; most changes leave it where it was.
std::optional<GridAnchor> anchorIn(const ShotList& after, const GridAnchor& anchor, const ShotList& before) {
  if (anchor.cell < after.size() && after[anchor.cell]->id == before[anchor.cell]->id) return anchor;
  return carriedOver(anchor, before, after);
}

}  // namespace

GridView::GridView(const GalleryContext& context, QWidget* parent)
    : QAbstractScrollArea(parent), context_(context), thumbs_(context.thumbs, context.loader, this) {
  installCellAccessibility();
  setObjectName(QStringLiteral("gallery.grid"));
  setAccessibleName(tr("Shots"));
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  addScrollBar();
  listen();
  arrange();
  refresh(GalleryShots::Cause::Choice);
}

GridView::~GridView() { context_.loader.showThumbs({}); }

// The cells have the whole width; the bar lies over the margin beside them.
void GridView::addScrollBar() {
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  bar_ = new QScrollBar(Qt::Vertical, this);
  bar_->setObjectName(QStringLiteral("gallery.scrollBar"));
  bar_->setAccessibleName(tr("Scroll"));
  auto* model = verticalScrollBar();
  model->setSingleStep(linePixels);
  bar_->setSingleStep(linePixels);
  connect(model, &QScrollBar::rangeChanged, bar_, [this, model](int minimum, int maximum) {
    bar_->setPageStep(model->pageStep());
    bar_->setRange(minimum, maximum);
    bar_->setVisible(maximum > minimum);
  });
  connect(model, &QScrollBar::valueChanged, bar_, &QScrollBar::setValue);
  connect(bar_, &QScrollBar::valueChanged, model, &QScrollBar::setValue);
}

void GridView::listen() {
  connect(&context_.shots, &GalleryShots::changed, this, &GridView::refresh);
  connect(&thumbs_, &VisibleThumbs::arrived, this, [this](const std::string& path) {
    for (const auto cell : layout_.cellsIn(screen())) {
      if (shots_[cell]->path == path) viewport()->update(cellPlace(cell));
    }
  });
  connect(&context_.store, &Store::selectionChanged, viewport(), [this] {
    viewport()->update();
    if (const auto cell = selectedCell(); cell && hasFocus()) tellCellFocused(*this, *cell);
  });
  connect(&context_.store.settings(), &Settings::changed, this, [this](const QString& key) {
    if (key == context_.store.settings().thumbSize.key()) arrange();
  });
  connect(&Theme::shared(), &Theme::changed, viewport(), [this] { viewport()->update(); });
}

void GridView::refresh(GalleryShots::Cause cause) {
  const auto anchor = layout_.anchorAt(position());
  const auto before = std::exchange(shots_, context_.shots.ordered());
  std::vector<GridSection> sections;
  titles_.clear();
  for (const auto& section : context_.shots.sections()) {
    titles_.push_back(oneLine(QString::fromStdString(section.title)));
    sections.push_back({.cells = section.count, .hasTitle = !section.title.empty()});
  }
  layout_.setSections(sections);
  isAsked_.assign(shots_.size(), false);
  snippets_.clear();
  // Who is at the top wants to see what comes in there.
  const bool isKept = cause == GalleryShots::Cause::Reload && position() > 0 && anchor;
  const auto carried = isKept ? anchorIn(shots_.list(), *anchor, before.list()) : std::nullopt;
  placeAt(carried ? layout_.position(*carried) : 0);
  tellCellsChanged(*this);
}

void GridView::arrange() {
  const auto anchor = layout_.anchorAt(position());
  const bool isAtTop = position() == 0;
  layout_.setDirection(layoutDirection());
  layout_.setMetrics(metricsFor(context_.store.settings().thumbSize()));
  layout_.setWidth(viewport()->width());
  placeAt(anchor && !isAtTop ? layout_.position(*anchor) : 0);
}

void GridView::placeAt(int position) {
  {
    isArranging_ = true;
    auto* model = verticalScrollBar();
    model->setPageStep(viewport()->height());
    model->setRange(0, std::max(0, layout_.height() - viewport()->height()));
    model->setValue(position);
    isArranging_ = false;
  }
  viewport()->update();
  settle();
}

void GridView::settle() {
  while (askForSnippets()) {
  }
  // The window may have come to a screen of another scale.
  thumbs_.setRoom(CellPainter::pictureRoom(layout_.boxSize()), devicePixelRatioF());
  std::vector<ThumbLoader::Place> places;
  for (const auto cell : layout_.cellsIn(screen())) {
    places.push_back({.path = shots_[cell]->path, .isObscured = context_.store.isProtected(*shots_[cell])});
  }
  thumbs_.show(places);
}

bool GridView::askForSnippets() {
  if (!context_.store.matchedIDs()) return false;
  const auto cells = layout_.cellsIn(screen());
  std::erase_if(snippets_, [&](const auto& entry) { return !std::ranges::binary_search(cells, entry.first); });
  std::optional<GridAnchor> anchor;
  std::vector<std::size_t> grown;
  for (const auto cell : cells) {
    if (isAsked_[cell] && !anchor) anchor = {.cell = cell, .offset = position() - layout_.cell(cell).top()};
    const bool isNew = !isAsked_[cell];
    isAsked_[cell] = true;
    if (snippets_.contains(cell) || context_.store.isProtected(*shots_[cell])) continue;
    const auto snippet = context_.store.snippet(*shots_[cell]);
    if (!snippet) continue;
    snippets_.emplace(cell, highlighted(*snippet));
    if (isNew) grown.push_back(cell);
  }
  if (grown.empty() || !layout_.addSnippets(grown)) return false;
  isArranging_ = true;
  verticalScrollBar()->setRange(0, std::max(0, layout_.height() - viewport()->height()));
  // What was there before stays where it is; what came in above it grows upwards.
  if (anchor) verticalScrollBar()->setValue(layout_.position(*anchor));
  isArranging_ = false;
  viewport()->update();
  return true;
}

void GridView::scrollContentsBy(int /*dx*/, int dy) {
  if (isArranging_) return;
  if (std::abs(dy) < viewport()->height()) {
    viewport()->scroll(0, dy);
  } else {
    viewport()->update();
  }
  settle();
}

void GridView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  const auto width = viewport()->width();
  const auto barWidth = bar_->sizeHint().width();
  const bool isMirrored = layoutDirection() == Qt::RightToLeft;
  bar_->setGeometry(isMirrored ? 0 : width - barWidth, 0, barWidth, viewport()->height());
  // The size of the thumbnails alone does not change the number, which is that of the last change of the width.
  if (event->oldSize().width() != event->size().width()) {
    const auto thumbSize = context_.store.settings().thumbSize();
    context_.store.setGridColumns(GridLayout::columnsIn(width, thumbSize));
  }
  arrange();
}

void GridView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  const auto type = event->type();
  if (type == QEvent::LayoutDirectionChange || type == QEvent::FontChange) arrange();
}

QRect GridView::screen() const { return {0, position(), viewport()->width(), viewport()->height()}; }

std::optional<std::size_t> GridView::cellOf(ShotID id) const {
  const auto found = std::ranges::find(shots(), id, [](const ShotPtr& shot) { return shot->id; });
  if (found == shots().end()) return std::nullopt;
  return static_cast<std::size_t>(found - shots().begin());
}

std::optional<std::size_t> GridView::selectedCell() const {
  const auto id = GallerySelection::scrollTarget(context_.store.selection());
  return id ? cellOf(*id) : std::nullopt;
}

void GridView::reveal(std::size_t cell) {
  const auto margin = scaled(linePixels);
  // Rows that come onto the screen may turn out to be higher, and push the cell away once more.
  for (int attempt = 0; attempt < mostAttempts; ++attempt) {
    const auto place = layout_.cell(cell).adjusted(0, -margin, 0, margin);
    const auto before = position();
    if (place.top() < before) {
      verticalScrollBar()->setValue(place.top());
    } else if (place.bottom() > before + viewport()->height()) {
      verticalScrollBar()->setValue(place.bottom() - viewport()->height());
    }
    if (position() == before) return;
  }
}

QString GridView::cellName(std::size_t cell) const {
  return spokenName(cellContent(context_.store, *shots_[cell], context_.icons));
}

QRect GridView::cellPlace(std::size_t cell) const { return layout_.cell(cell).translated(0, -position()); }

std::optional<std::size_t> GridView::cellAt(QPoint place) const {
  return layout_.cellAt(place + QPoint(0, position()));
}

bool GridView::isCellSelected(std::size_t cell) const { return context_.store.selection().contains(shots_[cell]->id); }

void GridView::chooseCell(std::size_t cell) { click(cell, Qt::NoModifier); }

void GridView::paintCell(const CellPainter& painter, std::size_t cell) const {
  const auto& shot = *shots_[cell];
  const auto content = cellContent(context_.store, shot, context_.icons);
  const auto snippet = snippets_.find(cell);
  CellPainter::Look look{.isSelected = isCellSelected(cell),
                         .picture = content.isProtected ? nullptr : thumbs_.picture(shot.path),
                         .snippet = {}};
  if (snippet != snippets_.end()) look.snippet = snippet->second;
  painter.paintCell(layout_.cell(cell), layout_.boxSize(), content, look);
}

void GridView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), themeColor(Token::Base));
  painter.translate(0, -position());
  const auto area = event->rect().translated(0, position());
  const CellPainter cells(painter, layoutDirection());
  for (const auto section : layout_.titlesIn(area)) cells.paintSectionTitle(layout_.title(section), titles_[section]);
  for (const auto cell : layout_.cellsIn(area)) paintCell(cells, cell);
}

}  // namespace Nimbrel
