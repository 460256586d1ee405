#include "Views/Window/Columns.h"

#include "Views/Shared/Measures.h"

#include <QStyle>

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr int lineWidth = 1;

}  // namespace

Columns::Columns(QWidget* sidebar, QWidget* content, QWidget* details, QWidget* parent)
    : QWidget(parent),
      sidebar_(sidebar),
      content_(content),
      details_(details),
      sidebarDivider_(new ColumnDivider(ColumnDivider::Column::BeforeIt,
                                        {Measures::sidebarMinimum, Measures::sidebarMaximum}, this)),
      detailsDivider_(new ColumnDivider(ColumnDivider::Column::BehindIt,
                                        {Measures::detailsMinimum, Measures::detailsMaximum}, this)) {
  setObjectName(QStringLiteral("columns"));
  sidebarDivider_->setObjectName(QStringLiteral("sidebarDivider"));
  detailsDivider_->setObjectName(QStringLiteral("inspectorDivider"));
  for (auto* column : {sidebar, content, details}) column->setParent(this);
  for (auto* divider : {sidebarDivider_, detailsDivider_}) divider->raise();
  sidebarDivider_->setColumnWidth(Measures::sidebarWidth);
  detailsDivider_->setColumnWidth(Measures::detailsWidth);
  connect(sidebarDivider_, &ColumnDivider::columnWidthChanged, this, [this](int width) {
    place();
    Q_EMIT sidebarWidthChanged(width);
  });
  connect(detailsDivider_, &ColumnDivider::columnWidthChanged, this, [this](int width) {
    place();
    Q_EMIT detailsWidthChanged(width);
  });
}

void Columns::setSidebarShown(bool shown) {
  showsSidebar_ = shown;
  place();
}

void Columns::setDetailsShown(bool shown) {
  showsDetails_ = shown;
  place();
}

void Columns::setSidebarWidth(int width) {
  sidebarDivider_->setColumnWidth(width);
  place();
}

void Columns::setDetailsWidth(int width) {
  detailsDivider_->setColumnWidth(width);
  place();
}

void Columns::resizeEvent(QResizeEvent* /*event*/) { place(); }

void Columns::place() {
  const auto put = [this](QWidget* widget, int left, int width) {
    widget->setGeometry(QStyle::visualRect(layoutDirection(), rect(), QRect(left, 0, width, height())));
  };
  const auto putDivider = [&](ColumnDivider* divider, int line) {
    put(divider, line - Measures::dividerHitWidth / 2, Measures::dividerHitWidth);
  };
  int left = 0;
  int right = width();
  if (showsSidebar_) {
    put(sidebar_, 0, sidebarWidth());
    putDivider(sidebarDivider_, sidebarWidth());
    left = sidebarWidth() + lineWidth;
  }
  if (showsDetails_) {
    // Where all columns are at their widest the window may have no room for them; the content keeps its own.
    const auto room = right - left - Measures::contentMinimum - lineWidth;
    const auto detailsWidth = std::clamp(room, Measures::detailsMinimum, detailsDivider_->columnWidth());
    right -= detailsWidth;
    put(details_, right, detailsWidth);
    right -= lineWidth;
    putDivider(detailsDivider_, right);
  }
  put(content_, left, std::max(0, right - left));
  for (QWidget* widget : {sidebar_, static_cast<QWidget*>(sidebarDivider_)}) widget->setVisible(showsSidebar_);
  for (QWidget* widget : {details_, static_cast<QWidget*>(detailsDivider_)}) widget->setVisible(showsDetails_);
  content_->show();
}

}  // namespace Nimbrel
