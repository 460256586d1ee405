#pragma once

#include "Analysis/Cleanup.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Sheets/ShotSheet.h"

#include <QPushButton>

#include <vector>

namespace Nimbrel {

class DuplicateList;
class Store;

/// The sheet that shows all groups of shots that look the same, of each of which the user keeps one.
class DuplicatesView final : public ShotSheet {
  Q_OBJECT

 public:
  /// All must outlive it.
  DuplicatesView(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent);

 private:
  void refresh();
  void showGroups();
  void trashTheRest();

  Store& store_;
  std::vector<ShotList> groups_;
  DuplicateKeepers keepers_;
  DuplicateList* list_;
  QPushButton* trash_;
};

}  // namespace Nimbrel
