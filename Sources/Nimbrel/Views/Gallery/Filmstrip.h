#pragma once

#include "Views/Gallery/CellAccessibility.h"
#include "Views/Gallery/CellPainter.h"
#include "Views/Gallery/GalleryContext.h"
#include "Views/Gallery/StripScroller.h"
#include "Views/Gallery/VisibleThumbs.h"

#include <QWidget>

#include <vector>

namespace Nimbrel {

/// All shots as small cells in a row, the one in front in the middle; only those on the screen cost anything.
class Filmstrip final : public QWidget, public CellHost {
  Q_OBJECT

 public:
  Filmstrip(const GalleryContext& context, QWidget* parent);
  ~Filmstrip() override;

  /// The shots are others; follow it with a jump to one of them.
  void setShots(const SharedShots& shots);
  void jumpTo(std::size_t cell) { scroller_->jump(cell); }
  void goTo(std::size_t cell) { scroller_->go(cell); }
  [[nodiscard]] std::size_t target() const { return scroller_->target(); }

  // CellHost
  [[nodiscard]] std::size_t cellCount() const override { return shots_.size(); }
  [[nodiscard]] QString cellName(std::size_t cell) const override;
  [[nodiscard]] QRect cellPlace(std::size_t cell) const override;
  [[nodiscard]] std::optional<std::size_t> cellAt(QPoint place) const override;
  [[nodiscard]] bool isCellSelected(std::size_t cell) const override;
  void chooseCell(std::size_t cell) override;

 Q_SIGNALS:
  /// The user has turned the strip until that cell is in the middle.
  void turnedTo(std::size_t cell);
  void opened(const Nimbrel::ShotPtr& shot);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void settle();
  /// The cells that meet a stretch of the strip, in their order.
  [[nodiscard]] std::vector<std::size_t> cellsIn(const QRect& place) const;

  GalleryContext context_;
  VisibleThumbs thumbs_;
  SharedShots shots_;
  StripScroller* scroller_;
  std::optional<ShotPtr> pressed_;
  std::optional<ShotPtr> clicked_;  ///< by the last click
};

}  // namespace Nimbrel
