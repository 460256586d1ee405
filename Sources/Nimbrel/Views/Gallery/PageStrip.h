#pragma once

#include "Views/Gallery/GalleryContext.h"
#include "Views/Gallery/GalleryPreview.h"
#include "Views/Gallery/StripScroller.h"
#include "Views/Shared/ElidedLabel.h"

#include <QWidget>

#include <array>
#include <optional>

namespace Nimbrel {

/// One shot in large, with its name and date below.
class GalleryPage final : public QWidget {
  Q_OBJECT

 public:
  explicit GalleryPage(QWidget* parent);

  void setShot(const ShotPtr& shot, const Store& store, const QImage& image);
  [[nodiscard]] const std::optional<ShotPtr>& shot() const { return shot_; }
  [[nodiscard]] GalleryPreview& preview() const { return *preview_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  std::optional<ShotPtr> shot_;
  GalleryPreview* preview_;
  ElidedLabel* title_;
  ElidedLabel* date_;
};

/// The pages of all shots side by side, each as wide as the strip; only those that are seen exist.
class PageStrip final : public QWidget {
  Q_OBJECT

 public:
  PageStrip(const GalleryContext& context, QWidget* parent);
  ~PageStrip() override;

  /// The shots are others; follow it with a jump to one of them.
  void setShots(const SharedShots& shots) { shots_ = shots; }
  void jumpTo(std::size_t page) { scroller_->jump(page); }
  void goTo(std::size_t page) { scroller_->go(page); }
  [[nodiscard]] std::size_t target() const { return scroller_->target(); }

 Q_SIGNALS:
  /// The user has turned to that page.
  void turnedTo(std::size_t page);
  void opened(const Nimbrel::ShotPtr& shot);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  void arrange();
  [[nodiscard]] QImage imageOf(const Shot& shot, const GalleryPage& page);
  void showPage(std::size_t page);

  GalleryContext context_;
  SharedShots shots_;
  StripScroller* scroller_;
  /// Of neighbouring pages each has one of its own.
  std::array<GalleryPage*, 3> pages_{};
};

}  // namespace Nimbrel
