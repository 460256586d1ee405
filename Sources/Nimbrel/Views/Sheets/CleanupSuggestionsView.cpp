#include "Views/Sheets/CleanupSuggestionsView.h"

#include "Analysis/Cleanup.h"
#include "Store/Store.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Sheets/ShotTable.h"

namespace Nimbrel {

namespace {

constexpr int sheetWidth = 760;
constexpr int tableHeight = 348;
constexpr int suggestionWidth = 174;
constexpr int takenWidth = 190;
constexpr int sizeWidth = 80;

}  // namespace

CleanupSuggestionsView::CleanupSuggestionsView(Store& store, QWidget* parent)
    : ShotSheet(tr("Cleanup Suggestions"), sheetWidth, parent),
      store_(store),
      table_(new ShotTable(store,
                           {{.column = ShotColumn::Name},
                            {.column = ShotColumn::Suggestion, .width = suggestionWidth},
                            {.column = ShotColumn::Taken, .width = takenWidth},
                            {.column = ShotColumn::Size, .width = sizeWidth}},
                           ShotTable::Selection::Rows)) {
  setObjectName(QStringLiteral("cleanupSheet"));
  addWords(
      tr("Review near duplicates, old Inbox items, and small captures with no recognized text. Favorites are excluded "
         "and selected files go to the Trash."));
  content()->addSpacing(Measures::sectionGap);
  addPlace(table_, new Placeholder(QStringLiteral("checkmark.circle"), tr("Everything Looks Tidy"), {}), tableHeight);
  addCancelButton(tr("Cancel"))->setObjectName(QStringLiteral("cleanup.cancel"));
  cleanUp_ = addDefaultButton(tr("Move Selected to Trash"));
  cleanUp_->setObjectName(QStringLiteral("cleanup.confirm"));
  connect(cleanUp_, &QPushButton::clicked, this, &CleanupSuggestionsView::cleanUp);
  connect(table_, &ShotTable::selectedShotsChanged, this, &CleanupSuggestionsView::showSelection);
  connect(&store_, &Store::shotsChanged, this, &CleanupSuggestionsView::refresh);
  refresh();
  table_->selectAll();
  showSelection();
}

void CleanupSuggestionsView::refresh() {
  std::vector<ShotTableRow> rows;
  for (const auto& candidate : cleanupCandidates(store_.shots(), store_.now())) {
    rows.push_back({.shot = candidate.shot, .suggestion = shownText(candidate.reason)});
  }
  showPlaceholder(rows.empty());
  table_->setRows(std::move(rows));
}

void CleanupSuggestionsView::showSelection() {
  const auto count = table_->selectedShots().size();
  setFooterText(tr("%1 selected").arg(count));
  cleanUp_->setEnabled(count > 0);
}

void CleanupSuggestionsView::cleanUp() {
  store_.trash(table_->selectedShots());
  accept();
}

}  // namespace Nimbrel
