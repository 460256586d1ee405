#pragma once

#include "Store/Store.h"

#include <QAbstractListModel>
#include <QString>

#include <cstddef>
#include <optional>
#include <string>

namespace Nimbrel {

/// What a row of quick find says. Of a protected shot it gives nothing away.
struct QuickFindRow {
  QString title;
  QString subtitle;
  bool isProtected = false;
  bool isSensitive = false;  ///< looks sensitive, whether it may be seen or not

  bool operator==(const QuickFindRow&) const = default;
};

/// The shots that the text of quick find finds, and which of them is highlighted. Main thread only.
class QuickFindResults final : public QAbstractListModel {
  Q_OBJECT

 public:
  static constexpr std::size_t most = 40;

  /// The store must outlive it.
  explicit QuickFindResults(const Store& store, QObject* parent = nullptr);

  /// Searches before it returns, and highlights the first row. Blanks alone find nothing.
  void setText(const QString& text);
  [[nodiscard]] const QString& text() const { return text_; }
  [[nodiscard]] const ShotList& shots() const { return shots_; }
  [[nodiscard]] QuickFindRow rowAt(int position) const;

  [[nodiscard]] int highlighted() const { return highlighted_; }
  /// A position that is none changes nothing.
  void highlight(int position);
  /// Both stop at the ends of the list.
  void moveDown();
  void moveUp();
  /// The highlighted shot as of the last reload; absent when there is none.
  [[nodiscard]] std::optional<ShotPtr> selected() const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 Q_SIGNALS:
  void highlightedChanged();

 private:
  void search();
  void catchUp();
  void refresh();
  void setHighlighted(int position);

  const Store& store_;
  QString text_;
  ShotList shots_;
  int highlighted_ = 0;
};

}  // namespace Nimbrel
