#pragma once

#include "Store/Store.h"
#include "Views/Companion/MenuBarRow.h"
#include "Views/Gallery/GalleryActions.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Gallery/ThumbLoader.h"
#include "Views/Gallery/VisibleThumbs.h"
#include "Views/Shared/ElidedLabel.h"

#include <QLabel>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QWidget>

#include <vector>

namespace Nimbrel {

/// The newest shots in the panel of the menu bar, under their heading. While it is not seen it does nothing.
class RecentList final : public QWidget {
  Q_OBJECT

 public:
  /// All are borrowed and must outlive it.
  RecentList(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent = nullptr);

  /// What it would list now.
  [[nodiscard]] ShotList recent() const;
  /// Of the part that scrolls; 0 while there are no shots.
  [[nodiscard]] int listHeight() const { return scroller_->isHidden() ? 0 : listHeight_; }
  /// For when there are some.
  void setListHeight(int height);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void addHeading(QVBoxLayout& column);
  void addRows(QVBoxLayout& column);
  void refresh();
  void loadThumbs(const ShotList& shots);

  Store& store_;
  GalleryActions actions_;
  ThumbLoader loader_;
  VisibleThumbs thumbs_;
  QLabel* count_;
  QLabel* placeholder_;
  QScrollArea* scroller_;
  QVBoxLayout* rowColumn_ = nullptr;
  int listHeight_ = 0;
  std::vector<MenuBarRow*> rows_;  ///< as many as were ever needed, those without a shot hidden
};

}  // namespace Nimbrel
