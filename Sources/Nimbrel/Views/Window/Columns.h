#pragma once

#include "Views/Window/ColumnDivider.h"

#include <QWidget>

namespace Nimbrel {

/// The sidebar, the main content and the details side by side, with dividers between them. Only the content grows with
/// the window. Widths are device-independent pixels.
class Columns final : public QWidget {
  Q_OBJECT

 public:
  /// Takes the three widgets over.
  Columns(QWidget* sidebar, QWidget* content, QWidget* details, QWidget* parent = nullptr);

  void setSidebarShown(bool shown);
  void setDetailsShown(bool shown);
  void setSidebarWidth(int width);
  void setDetailsWidth(int width);
  [[nodiscard]] int sidebarWidth() const { return sidebarDivider_->columnWidth(); }

 Q_SIGNALS:
  /// The user drags a divider. The columns have these widths by then.
  void sidebarWidthChanged(int width);
  void detailsWidthChanged(int width);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void place();

  QWidget* sidebar_;
  QWidget* content_;
  QWidget* details_;
  ColumnDivider* sidebarDivider_;
  ColumnDivider* detailsDivider_;
  bool showsSidebar_ = true;
  bool showsDetails_ = true;
};

}  // namespace Nimbrel
