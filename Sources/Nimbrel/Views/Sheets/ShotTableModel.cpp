#include "Views/Sheets/ShotTableModel.h"

#include "Foundation/Formats.h"
#include "Store/Store.h"
#include "Views/Shared/ShotWords.h"
#include "Views/Shared/Theme.h"

#include <QBrush>

#include <cstddef>
#include <utility>

namespace Nimbrel {

namespace {

int alignmentOf(ShotColumn column) {
  const auto side = column == ShotColumn::Size ? Qt::AlignRight : Qt::AlignLeft;
  return static_cast<int>(side) | static_cast<int>(Qt::AlignVCenter);
}

}  // namespace

ShotTableModel::ShotTableModel(const Store& store, std::vector<ShotColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), store_(store), columns_(std::move(columns)) {}

void ShotTableModel::setRows(std::vector<ShotTableRow> rows) {
  beginResetModel();
  rows_ = std::move(rows);
  endResetModel();
}

void ShotTableModel::refresh() {
  if (!rows_.empty()) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

int ShotTableModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ShotTableModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ShotTableModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto column = columns_[static_cast<std::size_t>(index.column())];
  switch (role) {
    case Qt::DisplayRole:
      return textOf(rows_[static_cast<std::size_t>(index.row())], column);
    case Qt::TextAlignmentRole:
      return alignmentOf(column);
    case Qt::ForegroundRole:
      return QBrush(themeColor(column == ShotColumn::Name ? Token::Text : Token::Secondary));
    default:
      return {};
  }
}

QVariant ShotTableModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  const auto column = columns_[static_cast<std::size_t>(section)];
  if (role == Qt::TextAlignmentRole) return alignmentOf(column);
  if (role != Qt::DisplayRole) return {};
  switch (column) {
    case ShotColumn::Name:
      return tr("Name");
    case ShotColumn::Suggestion:
      return tr("Suggestion");
    case ShotColumn::Taken:
      return tr("Taken");
    case ShotColumn::Size:
      return tr("Size");
  }
  return {};
}

QString ShotTableModel::textOf(const ShotTableRow& row, ShotColumn column) const {
  switch (column) {
    case ShotColumn::Name:
      return shownName(store_, *row.shot);
    case ShotColumn::Suggestion:
      return row.suggestion;
    case ShotColumn::Taken:
      return shownText(Formats::mediumDateShortTime(row.shot->date));
    case ShotColumn::Size:
      return shownText(Formats::byteCount(row.shot->bytes));
  }
  return {};
}

}  // namespace Nimbrel
