#pragma once

#include "Views/Sheets/ShotTableModel.h"

#include <QTableView>

#include <vector>

namespace Nimbrel {

/// A bordered table of shots with round corners. Protected shots go by "Sensitive screenshot". Rows may be exchanged
/// while it is shown: the place and what is selected stay.
class ShotTable final : public QTableView {
  Q_OBJECT

 public:
  struct Column {
    ShotColumn column;
    int width = 0;  ///< device-independent pixels, for what is not longer; the name fills the rest
  };
  enum class Selection { None, Rows };

  /// The store must outlive it; it follows what the store protects.
  ShotTable(const Store& store, const std::vector<Column>& columns, Selection selection, QWidget* parent = nullptr);

  /// Those that are selected stay so, as far as they are among the new ones.
  void setRows(std::vector<ShotTableRow> rows);
  /// All of them, in their order.
  [[nodiscard]] ShotList shots() const;
  /// In the order of the rows.
  [[nodiscard]] ShotList selectedShots() const;

 Q_SIGNALS:
  void selectedShotsChanged();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

 private:
  void setUp(Selection selection);
  void fitColumns();
  [[nodiscard]] int widthOf(int column) const;
  void select(const ShotList& shots);

  std::vector<Column> columns_;
  ShotTableModel* rows_;
};

}  // namespace Nimbrel
