#include "Views/Gallery/GalleryPager.h"

#include "Views/Gallery/GalleryKeyboardCommands.h"
#include "Views/Gallery/GallerySelection.h"
#include "Views/Gallery/ScrollAnchor.h"
#include "Views/Shared/Hairline.h"

#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace Nimbrel {

GalleryPager::GalleryPager(const GalleryContext& context, QWidget* parent)
    : QWidget(parent),
      context_(context),
      pages_(new PageStrip(context, this)),
      filmstrip_(new Filmstrip(context, this)) {
  setObjectName(QStringLiteral("gallery.pager"));
  setAccessibleName(tr("Gallery"));
  setFocusPolicy(Qt::StrongFocus);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(pages_, 1);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(filmstrip_);

  connect(pages_, &PageStrip::turnedTo, this, [this](std::size_t page) {
    galleryScrollID_ = shots_[page]->id;
    selectGalleryShot(*galleryScrollID_);
  });
  connect(filmstrip_, &Filmstrip::turnedTo, this, [this](std::size_t cell) {
    filmstripScrollID_ = shots_[cell]->id;
    selectGalleryShot(*filmstripScrollID_);
  });
  connect(pages_, &PageStrip::opened, &context_.actions, &GalleryActions::open);
  connect(filmstrip_, &Filmstrip::opened, &context_.actions, &GalleryActions::open);
  connect(&context_.shots, &GalleryShots::changed, this, &GalleryPager::refresh);
  connect(&context_.store, &Store::selectionChanged, this, &GalleryPager::followSelection);
}

void GalleryPager::showEvent(QShowEvent* /*event*/) {
  if (!std::exchange(hasBegun_, true)) begin();
}

void GalleryPager::begin() {
  context_.store.setGridColumns(1);
  shots_ = context_.shots.ordered();
  pages_->setShots(shots_);
  filmstrip_->setShots(shots_);
  const auto start = GallerySelection::start(context_.store.focused(), shots_.list());
  if (!start) return;
  galleryScrollID_ = start;
  filmstripScrollID_ = start;
  const auto index = indexOf(*start).value_or(0);
  pages_->jumpTo(index);
  filmstrip_->jumpTo(index);
  context_.store.setSelection({*start});
}

void GalleryPager::refresh() {
  if (!hasBegun_) return;
  const auto before = std::exchange(shots_, context_.shots.ordered());
  const auto former = pages_->target();
  pages_->setShots(shots_);
  filmstrip_->setShots(shots_);
  auto index = galleryScrollID_ ? indexOf(*galleryScrollID_) : std::nullopt;
  const bool isGone = !index;
  if (isGone && former < before.size()) {
    if (const auto next = carriedOver({.cell = former, .offset = 0}, before.list(), shots_.list())) index = next->cell;
  }
  pages_->jumpTo(index.value_or(0));
  filmstrip_->jumpTo(index.value_or(0));
  if (!isGone || shots_.empty()) return;
  // The shot in front has gone: the one beside it takes its place.
  galleryScrollID_ = shots_[index.value_or(0)]->id;
  filmstripScrollID_ = galleryScrollID_;
  selectGalleryShot(*galleryScrollID_);
}

void GalleryPager::selectGalleryShot(ShotID id) {
  const auto selection = GallerySelection::scrolledTo(id, context_.store.selection(), shots_.list());
  if (selection) context_.store.setSelection(*selection);
}

void GalleryPager::followSelection() {
  const auto target = GallerySelection::scrollTarget(context_.store.selection());
  if (!hasBegun_ || !target) return;
  const auto index = indexOf(*target);
  if (std::exchange(galleryScrollID_, target) != target && index) pages_->goTo(*index);
  if (std::exchange(filmstripScrollID_, target) != target && index) filmstrip_->goTo(*index);
  if (index && hasFocus()) tellCellFocused(*filmstrip_, *index);
}

void GalleryPager::keyPressEvent(QKeyEvent* event) {
  const auto outcome = handleGalleryKey(*event, layoutDirection(), context_.store, context_.actions);
  if (outcome == KeyOutcome::NotOurs) QWidget::keyPressEvent(event);
}

std::optional<std::size_t> GalleryPager::indexOf(ShotID id) const {
  const auto found = std::ranges::find(shots_.list(), id, [](const ShotPtr& shot) { return shot->id; });
  if (found == shots_.list().end()) return std::nullopt;
  return static_cast<std::size_t>(found - shots_.list().begin());
}

}  // namespace Nimbrel
