#include "Views/Sheets/ShotTable.h"

#include "Store/Store.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/RoundedFrame.h"
#include "Views/Shared/TextStyles.h"

#include <QHeaderView>
#include <QItemSelection>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int nameMinimum = 160;
constexpr int measuredRows = 100;  ///< the texts of a column are of much the same length

std::vector<ShotColumn> kindsOf(const std::vector<ShotTable::Column>& columns) {
  std::vector<ShotColumn> kinds;
  kinds.reserve(columns.size());
  for (const auto& column : columns) kinds.push_back(column.column);
  return kinds;
}

}  // namespace

ShotTable::ShotTable(const Store& store, const std::vector<Column>& columns, Selection selection, QWidget* parent)
    : QTableView(parent), columns_(columns), rows_(new ShotTableModel(store, kindsOf(columns), this)) {
  setObjectName(QStringLiteral("shotTable"));
  setModel(rows_);
  setUp(selection);
  new RoundedFrame(this);
  connect(&store, &Store::unlockedSensitiveIDsChanged, rows_, &ShotTableModel::refresh);
  connect(&store.settings(), &Settings::changed, rows_, &ShotTableModel::refresh);
}

void ShotTable::setUp(Selection selection) {
  // Of which nothing is seen: it keeps room for the rule around the table.
  setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
  // Under the scroll bar as well.
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  setShowGrid(false);
  setWordWrap(false);
  setTextElideMode(Qt::ElideMiddle);
  setTabKeyNavigation(false);
  setCornerButtonEnabled(false);
  setEditTriggers(NoEditTriggers);
  setSelectionBehavior(SelectRows);
  setSelectionMode(selection == Selection::Rows ? ExtendedSelection : NoSelection);
  setHorizontalScrollMode(ScrollPerPixel);
  setVerticalScrollMode(ScrollPerPixel);
  verticalHeader()->hide();
  verticalHeader()->setMinimumSectionSize(1);
  verticalHeader()->setDefaultSectionSize(scaled(Measures::tableRowHeight));
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setSectionsClickable(false);
}

void ShotTable::setRows(std::vector<ShotTableRow> rows) {
  if (rows == rows_->rows()) return;
  const auto chosen = selectedShots();
  const auto place = verticalScrollBar()->value();
  const auto current = currentIndex().row();
  {
    const QSignalBlocker untilSelectedAgain(this);
    rows_->setRows(std::move(rows));
    select(chosen);
    if (const auto last = rows_->rowCount() - 1; current >= 0 && last >= 0) {
      selectionModel()->setCurrentIndex(rows_->index(std::min(current, last), 0), QItemSelectionModel::NoUpdate);
    }
  }
  fitColumns();
  updateGeometries();
  verticalScrollBar()->setValue(place);
  Q_EMIT selectedShotsChanged();
}

ShotList ShotTable::shots() const {
  ShotList shots;
  for (const auto& row : rows_->rows()) shots.push_back(row.shot);
  return shots;
}

ShotList ShotTable::selectedShots() const {
  std::vector<bool> isSelected(rows_->rows().size());
  for (const auto& range : selectionModel()->selection()) {
    std::fill(isSelected.begin() + range.top(), isSelected.begin() + range.bottom() + 1, true);
  }
  ShotList shots;
  for (std::size_t row = 0; row < isSelected.size(); ++row) {
    if (isSelected[row]) shots.push_back(rows_->rows()[row].shot);
  }
  return shots;
}

void ShotTable::select(const ShotList& shots) {
  // The id of a row that is gone may come again with another shot.
  std::set<std::pair<ShotID, Timestamp>> chosen;
  for (const auto& shot : shots) chosen.emplace(shot->id, shot->added);
  const auto isChosen = [&](int row) {
    const auto& shot = *rows_->rows()[static_cast<std::size_t>(row)].shot;
    return chosen.contains({shot.id, shot.added});
  };
  QItemSelection selection;
  const int count = rows_->rowCount();
  for (int first = 0; first < count; ++first) {
    if (!isChosen(first)) continue;
    int last = first;
    while (last + 1 < count && isChosen(last + 1)) ++last;
    selection.append(QItemSelectionRange(rows_->index(first, 0), rows_->index(last, rows_->columnCount() - 1)));
    first = last;
  }
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void ShotTable::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  fitColumns();
}

void ShotTable::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QTableView::selectionChanged(selected, deselected);
  Q_EMIT selectedShotsChanged();
}

void ShotTable::fitColumns() {
  int rest = viewport()->width();
  for (int column = 1; column < rows_->columnCount(); ++column) {
    const auto width = widthOf(column);
    setColumnWidth(column, width);
    rest -= width;
  }
  setColumnWidth(0, std::max(rest, scaled(nameMinimum)));
}

int ShotTable::widthOf(int column) const {
  const QFontMetrics metrics(font());
  int text = QFontMetrics(textFont(TextStyle::CaptionTitle))
                 .horizontalAdvance(rows_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
  for (int row = 0; row < std::min(rows_->rowCount(), measuredRows); ++row) {
    text =
        std::max(text, metrics.horizontalAdvance(rows_->data(rows_->index(row, column), Qt::DisplayRole).toString()));
  }
  return std::max(columns_[static_cast<std::size_t>(column)].width, text + 2 * Measures::rowPadding + Measures::step2);
}

}  // namespace Nimbrel
