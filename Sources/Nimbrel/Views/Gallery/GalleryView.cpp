#include "Views/Gallery/GalleryView.h"

#include "Views/Gallery/GalleryEmpty.h"
#include "Views/Gallery/GalleryPager.h"
#include "Views/Gallery/GridView.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/Theme.h"

#include <QPaintEvent>
#include <QPainter>

#include <utility>

namespace Nimbrel {

GalleryView::GalleryView(const Parts& parts, QWidget* parent, const ThumbLoader::Decoder& decoder)
    : QWidget(parent),
      store_(parts.store),
      loader_(parts.thumbs, parts.previews, decoder),
      shots_(parts.store),
      actions_(parts.store),
      context_{.store = parts.store,
               .icons = parts.icons,
               .thumbs = parts.thumbs,
               .previews = parts.previews,
               .loader = loader_,
               .shots = shots_,
               .actions = actions_},
      column_(new QVBoxLayout(this)) {
  setObjectName(QStringLiteral("gallery"));
  setMinimumWidth(Measures::contentMinimum);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  column_->setContentsMargins(0, 0, 0, 0);
  column_->setSpacing(0);
  connect(&shots_, &GalleryShots::changed, this, &GalleryView::choose);
  connect(&store_.settings(), &Settings::changed, this, [this](const QString& key) {
    if (key == store_.settings().galleryLayout.key()) choose();
  });
  connect(&Theme::shared(), &Theme::changed, this, [this] { update(); });
  choose();
}

GalleryView::~GalleryView() {
  // It works with our members.
  delete content_;
}

GalleryView::Shown GalleryView::wanted() {
  if (shots_.ordered().empty()) return Shown::Empty;
  return store_.settings().galleryLayout() == GalleryLayout::grid ? Shown::Grid : Shown::Pager;
}

QWidget* GalleryView::made(Shown shown) {
  switch (shown) {
    case Shown::Grid:
      return new GridView(context_);
    case Shown::Pager:
      return new GalleryPager(context_);
    case Shown::Empty:
    case Shown::Nothing:
      break;
  }
  return new GalleryEmpty(store_);
}

void GalleryView::choose() {
  const auto shown = wanted();
  if (shown == shown_) {
    if (auto* empty = qobject_cast<GalleryEmpty*>(content_)) empty->refresh();
    return;
  }
  const bool hadFocus = content_ != nullptr && content_->hasFocus();
  delete content_;
  shown_ = shown;
  content_ = made(shown);
  setFocusProxy(content_);
  column_->addWidget(content_);
  // At once, so that no frame shows the place empty.
  if (isVisible()) content_->show();
  column_->activate();
  if (hadFocus) content_->setFocus();
}

void GalleryView::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.fillRect(event->rect(), themeColor(Token::Base));
}

}  // namespace Nimbrel
