#include "Views/Sheets/DuplicatesView.h"

#include "Analysis/Perceptual.h"
#include "Foundation/Formats.h"
#include "Store/Store.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Sheets/DuplicateList.h"

namespace Nimbrel {

namespace {

constexpr int sheetWidth = 700;
constexpr int listHeight = 426;

}  // namespace

DuplicatesView::DuplicatesView(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent)
    : ShotSheet(tr("Near-Duplicates"), sheetWidth, parent),
      store_(store),
      list_(new DuplicateList(store, thumbs, previews)) {
  setObjectName(QStringLiteral("duplicatesSheet"));
  addWords(tr("Shots that look the same. Click a thumbnail to choose which one to keep."));
  content()->addSpacing(Measures::sectionGap);
  addPlace(list_,
           new Placeholder(QStringLiteral("square.on.square.dashed"), tr("No Duplicates"),
                           tr("Nothing in the library looks repeated.")),
           listHeight);
  addCancelButton(tr("Cancel"))->setObjectName(QStringLiteral("duplicates.cancel"));
  trash_ = addDefaultButton(tr("Trash the Rest"));
  trash_->setObjectName(QStringLiteral("duplicates.confirm"));
  connect(trash_, &QPushButton::clicked, this, &DuplicatesView::trashTheRest);
  connect(list_, &DuplicateList::chosen, this, [this](ShotID first, ShotID keeper) {
    keepers_[first] = keeper;
    showGroups();
  });
  connect(&store_, &Store::shotsChanged, this, &DuplicatesView::refresh);
  refresh();
}

void DuplicatesView::refresh() {
  groups_ = Perceptual::groups(store_.shots(), Perceptual::nearDuplicateTolerance);
  showGroups();
}

void DuplicatesView::showGroups() {
  const auto doomed = doomedDuplicates(groups_, keepers_);
  list_->setGroups(groups_, keepers_);
  showPlaceholder(groups_.empty());
  setFooterText(doomed.empty()
                    ? tr("Nothing selected")
                    : tr("%1 to trash · %2")
                          .arg(QString::number(doomed.size()), shownText(Formats::byteCount(totalBytes(doomed)))));
  trash_->setEnabled(!doomed.empty());
}

void DuplicatesView::trashTheRest() {
  store_.trash(doomedDuplicates(groups_, keepers_));
  accept();
}

}  // namespace Nimbrel
