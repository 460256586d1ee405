#pragma once

#include "Model/Models.h"

#include <QAbstractTableModel>
#include <QString>

#include <vector>

namespace Nimbrel {

class Store;

/// What a table of shots tells of each.
enum class ShotColumn { Name, Suggestion, Taken, Size };

struct ShotTableRow {
  ShotPtr shot;
  QString suggestion;  ///< why it is listed; for the column of that name

  bool operator==(const ShotTableRow&) const = default;
};

/// The rows of a ShotTable, worked out cell by cell as they are shown.
class ShotTableModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  /// The store is borrowed.
  ShotTableModel(const Store& store, std::vector<ShotColumn> columns, QObject* parent);

  void setRows(std::vector<ShotTableRow> rows);
  [[nodiscard]] const std::vector<ShotTableRow>& rows() const { return rows_; }
  /// The names may have become others, since what is protected has changed.
  void refresh();

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] QString textOf(const ShotTableRow& row, ShotColumn column) const;

  const Store& store_;
  std::vector<ShotColumn> columns_;
  std::vector<ShotTableRow> rows_;
};

}  // namespace Nimbrel
