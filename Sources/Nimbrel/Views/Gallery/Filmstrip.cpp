#include "Views/Gallery/Filmstrip.h"

#include <QMouseEvent>
#include <QPaintEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int stripHeight = 112;
constexpr int topPadding = 10;
constexpr int spacing = 10;

int stride() { return CellPainter::filmstripCellSize().width() + spacing; }

}  // namespace

Filmstrip::Filmstrip(const GalleryContext& context, QWidget* parent)
    : QWidget(parent),
      context_(context),
      thumbs_(context.thumbs, context.loader, this),
      scroller_(new StripScroller(*this)) {
  installCellAccessibility();
  setObjectName(QStringLiteral("gallery.filmstrip"));
  setAccessibleName(tr("Filmstrip"));
  setFixedHeight(std::max(stripHeight, CellPainter::filmstripCellSize().height() + 2 * topPadding));
  setAttribute(Qt::WA_OpaquePaintEvent);
  connect(scroller_, &StripScroller::moved, this, &Filmstrip::settle);
  connect(&thumbs_, &VisibleThumbs::arrived, this, [this] { update(); });
  connect(&context_.store, &Store::selectionChanged, this, [this] { update(); });
  connect(&Theme::shared(), &Theme::changed, this, [this] { update(); });
}

Filmstrip::~Filmstrip() { context_.loader.showThumbs({}); }

void Filmstrip::setShots(const SharedShots& shots) {
  shots_ = shots;
  tellCellsChanged(*this);
}

void Filmstrip::settle() {
  thumbs_.setRoom(CellPainter::filmstripPictureRoom(), devicePixelRatioF());
  std::vector<ThumbLoader::Place> places;
  for (const auto cell : cellsIn(rect())) {
    places.push_back({.path = shots_[cell]->path, .isObscured = context_.store.isProtected(*shots_[cell])});
  }
  thumbs_.show(places);
  update();
}

QRect Filmstrip::cellPlace(std::size_t cell) const {
  const auto size = CellPainter::filmstripCellSize();
  const auto along = (static_cast<double>(cell) - scroller_->position()) * stride();
  const auto middle = (width() - size.width()) / 2.0;
  return {QPoint(static_cast<int>(std::lround(layoutDirection() == Qt::RightToLeft ? middle - along : middle + along)),
                 topPadding),
          size};
}

std::vector<std::size_t> Filmstrip::cellsIn(const QRect& place) const {
  // As many as have room on one side of the middle, on both sides.
  const auto reach = width() / 2.0 / stride() + 1;
  const auto count = static_cast<double>(shots_.size());
  const auto from = static_cast<std::size_t>(std::clamp(std::floor(scroller_->position() - reach), 0.0, count));
  const auto to = static_cast<std::size_t>(std::clamp(std::ceil(scroller_->position() + reach) + 1, 0.0, count));
  std::vector<std::size_t> cells;
  for (auto cell = from; cell < to; ++cell) {
    if (cellPlace(cell).intersects(place)) cells.push_back(cell);
  }
  return cells;
}

std::optional<std::size_t> Filmstrip::cellAt(QPoint place) const {
  const auto cells = cellsIn({place, QSize(1, 1)});
  return cells.empty() ? std::nullopt : std::optional(cells.front());
}

QString Filmstrip::cellName(std::size_t cell) const {
  return spokenName(cellContent(context_.store, *shots_[cell], context_.icons));
}

bool Filmstrip::isCellSelected(std::size_t cell) const { return context_.store.selection().contains(shots_[cell]->id); }

void Filmstrip::chooseCell(std::size_t cell) { context_.store.setSelection({shots_[cell]->id}); }

void Filmstrip::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), themeColor(Token::Bar));
  const CellPainter cells(painter, layoutDirection());
  for (const auto cell : cellsIn(event->rect())) {
    const auto& shot = *shots_[cell];
    const bool isProtected = context_.store.isProtected(shot);
    const CellPainter::Look look{.isSelected = isCellSelected(cell),
                                 .picture = isProtected ? nullptr : thumbs_.picture(shot.path),
                                 .snippet = {}};
    cells.paintFilmstripCell(cellPlace(cell), shortTitle(context_.store, shot), isProtected, look);
  }
}

void Filmstrip::resizeEvent(QResizeEvent* /*event*/) { settle(); }

void Filmstrip::wheelEvent(QWheelEvent* event) {
  event->accept();
  const auto cell = scroller_->turned(*event, shots_.size());
  if (cell == target() || cell >= shots_.size()) return;
  goTo(cell);
  Q_EMIT turnedTo(cell);
}

void Filmstrip::mousePressEvent(QMouseEvent* event) {
  const auto cell = event->button() == Qt::LeftButton ? cellAt(event->position().toPoint()) : std::nullopt;
  pressed_ = cell ? std::optional(shots_[*cell]) : std::nullopt;
}

void Filmstrip::mouseReleaseEvent(QMouseEvent* event) {
  const auto shot = std::exchange(pressed_, std::nullopt);
  const auto cell = cellAt(event->position().toPoint());
  clicked_.reset();
  if (!shot || !cell || shots_[*cell]->id != (*shot)->id) return;
  clicked_ = shot;
  chooseCell(*cell);
}

void Filmstrip::mouseDoubleClickEvent(QMouseEvent* event) {
  // The first of the two clicks has selected, and may have moved the strip under the pointer: that shot is meant.
  pressed_.reset();
  const auto shot = std::exchange(clicked_, std::nullopt);
  if (shot && event->button() == Qt::LeftButton) Q_EMIT opened(*shot);
}

}  // namespace Nimbrel
