#pragma once

#include "Analysis/Cleanup.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Gallery/ThumbLoader.h"

#include <QScrollArea>

#include <map>
#include <vector>

namespace Nimbrel {

class DuplicateStrip;
class Store;

/// The groups of duplicates below each other. Has strips for those that are seen alone.
class DuplicateList final : public QScrollArea {
  Q_OBJECT

 public:
  /// All are borrowed; thumbnails come from the cache and go into it.
  DuplicateList(const Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent = nullptr);

  void setGroups(std::vector<ShotList> groups, const DuplicateKeepers& keepers);

 Q_SIGNALS:
  /// The shot is to stay of the group that begins with `first`.
  void chosen(ShotID first, ShotID keeper);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void layOut();
  void removeUnseen(int first, int last);
  void makeStrip(int index);
  void fill(int index);
  void place(int index);
  void refresh();
  void load();

  const Store& store_;
  ThumbCache& thumbs_;
  ThumbLoader loader_;
  std::vector<ShotList> groups_;
  DuplicateKeepers keepers_;
  QWidget* column_;
  std::map<int, DuplicateStrip*> strips_;  ///< by the place of their group
};

}  // namespace Nimbrel
