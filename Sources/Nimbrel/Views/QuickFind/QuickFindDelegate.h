#pragma once

#include "Views/Gallery/VisibleThumbs.h"

#include <QSize>
#include <QStyledItemDelegate>

namespace Nimbrel {

/// Paints the rows of QuickFindResults.
class QuickFindDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// Of a thumbnail.
  static constexpr QSize thumbSize{72, 48};

  /// The thumbs are borrowed.
  QuickFindDelegate(const VisibleThumbs& thumbs, QObject* parent);

  /// The height of all rows.
  [[nodiscard]] static int rowHeight();

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const VisibleThumbs& thumbs_;
};

}  // namespace Nimbrel
