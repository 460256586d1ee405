#include "Views/Gallery/PageStrip.h"

#include "Foundation/Formats.h"
#include "Views/Gallery/CellContent.h"
#include "Views/Shared/ShotWords.h"

#include <algorithm>
#include <cmath>

namespace Nimbrel {

namespace {

constexpr int sidePadding = 24;
constexpr int topPadding = 20;
constexpr int bottomPadding = 14;
constexpr int spacing = 10;

}  // namespace

GalleryPage::GalleryPage(QWidget* parent)
    : QWidget(parent),
      preview_(new GalleryPreview(this)),
      title_(new ElidedLabel(TextStyle::Headline, Token::Text, Qt::ElideMiddle, this)),
      date_(new ElidedLabel(TextStyle::Caption, Token::Secondary, Qt::ElideRight, this)) {
  preview_->setObjectName(QStringLiteral("gallery.preview"));
  title_->setObjectName(QStringLiteral("gallery.title"));
  date_->setObjectName(QStringLiteral("gallery.date"));
  for (auto* label : {title_, date_}) label->setAlignment(Qt::AlignCenter);
}

void GalleryPage::setShot(const ShotPtr& shot, const Store& store, const QImage& image) {
  shot_ = shot;
  if (store.isProtected(*shot)) {
    preview_->setObscured();
  } else {
    preview_->setImage(image);
  }
  title_->setFullText(shownName(store, *shot));
  date_->setFullText(QString::fromStdString(Formats::mediumDateShortTime(shot->date)));
  setAccessibleName(title_->fullText() + QStringLiteral(", ") + date_->fullText());
  preview_->setAccessibleName(title_->fullText());
  setVisible(true);
}

void GalleryPage::resizeEvent(QResizeEvent* /*event*/) {
  const auto line = [this](int bottom, const QWidget& label) {
    const auto height = label.sizeHint().height();
    return QRect(sidePadding, bottom - height, width() - 2 * sidePadding, height);
  };
  const auto date = line(height() - bottomPadding, *date_);
  const auto title = line(date.top() - spacing, *title_);
  const QRect room(sidePadding, topPadding, title.width(), title.top() - spacing - topPadding);
  constexpr int shadow = GalleryPreview::shadowReach;
  date_->setGeometry(date);
  title_->setGeometry(title);
  preview_->setGeometry(room.adjusted(-shadow, -shadow, shadow, shadow));
  preview_->lower();
}

PageStrip::PageStrip(const GalleryContext& context, QWidget* parent)
    : QWidget(parent), context_(context), scroller_(new StripScroller(*this)) {
  setObjectName(QStringLiteral("gallery.pages"));
  for (auto*& page : pages_) {
    page = new GalleryPage(this);
    page->hide();
    connect(&page->preview(), &GalleryPreview::opened, this, [this, page] {
      if (page->shot()) Q_EMIT opened(*page->shot());
    });
  }
  connect(scroller_, &StripScroller::moved, this, &PageStrip::arrange);
  connect(&context_.loader, &ThumbLoader::previewLoaded, this, [this](const std::string& path, const QImage& image) {
    for (auto* page : pages_) {
      if (!page->isHidden() && page->shot() && (*page->shot())->path == path && !page->preview().isObscured()) {
        page->preview().setImage(image);
      }
    }
  });
}

PageStrip::~PageStrip() { context_.loader.showPreviews({}); }

QImage PageStrip::imageOf(const Shot& shot, const GalleryPage& page) {
  if (context_.store.isProtected(shot)) return {};
  // One that is too large to be kept is nowhere else.
  const auto& shown = page.shot();
  const bool isShown = !page.isHidden() && shown && (*shown)->path == shot.path;
  return isShown && !page.preview().image().isNull() ? page.preview().image() : context_.previews.image(shot.path);
}

void PageStrip::showPage(std::size_t page) {
  auto* view = pages_[page % pages_.size()];
  const auto& shot = shots_[page];
  const bool isSame = !view->isHidden() && view->shot() == shot;
  const bool isObscured = context_.store.isProtected(*shot);
  if (!isSame || view->preview().isObscured() != isObscured) {
    view->setShot(shot, context_.store, imageOf(*shot, *view));
  }
  const auto along = (static_cast<double>(page) - scroller_->position()) * width();
  const auto left = static_cast<int>(std::lround(layoutDirection() == Qt::RightToLeft ? -along : along));
  view->setGeometry(left, 0, width(), height());
}

void PageStrip::arrange() {
  std::vector<ThumbLoader::Place> places;
  const auto add = [&](std::size_t page) {
    places.push_back({.path = shots_[page]->path, .isObscured = context_.store.isProtected(*shots_[page])});
  };
  const auto last = static_cast<double>(shots_.size()) - 1;
  const auto from = std::clamp(std::floor(scroller_->position()), 0.0, std::max(last, 0.0));
  const auto to = std::clamp(std::ceil(scroller_->position()), 0.0, std::max(last, 0.0));
  std::vector<const GalleryPage*> seen;
  // The one that is being turned to comes first.
  if (target() < shots_.size()) add(target());
  for (auto page = from; page <= to && last >= 0; ++page) {
    const auto number = static_cast<std::size_t>(page);
    showPage(number);
    seen.push_back(pages_[number % pages_.size()]);
    if (number != target()) add(number);
  }
  for (auto* page : pages_) {
    if (std::ranges::find(seen, page) == seen.end()) page->hide();
  }
  context_.loader.showPreviews(places);
}

void PageStrip::resizeEvent(QResizeEvent* /*event*/) { arrange(); }

void PageStrip::wheelEvent(QWheelEvent* event) {
  event->accept();
  const auto page = scroller_->turned(*event, shots_.size());
  if (page == target() || page >= shots_.size()) return;
  goTo(page);
  Q_EMIT turnedTo(page);
}

}  // namespace Nimbrel
