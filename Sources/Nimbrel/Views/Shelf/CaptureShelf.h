#pragma once

#include "Store/Store.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Shared/FloatingPanel.h"

#include <QObject>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QTimer>

#include <memory>

namespace Nimbrel {

class CaptureShelfView;

/// Where the shelf stands: at the lower right of a screen, and whole.
[[nodiscard]] QPoint shelfPlace(const QRect& visible, QSize size);

/// The small window that comes up after a new screenshot, whenever the Store tells of one, and offers what one usually
/// wants to do next. It leaves the keyboard where it is, and goes away by itself after a while in which the pointer was
/// not over it. One for each process that has windows. Main thread.
class CaptureShelf final : public QObject {
  Q_OBJECT

 public:
  /// All are borrowed and must outlive it. Its window is made when it is first shown.
  CaptureShelf(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, DesktopWindows windows);
  ~CaptureShelf() override;

  [[nodiscard]] bool isVisible() const;
  /// Null until it was shown. Borrowed.
  [[nodiscard]] FloatingPanel* window() const { return panel_.get(); }

  /// Shows it for the shot, in place of the one it showed before, and begins its time anew.
  void show(const ShotPtr& shot);
  void hide();

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void makePanel();
  void scheduleDismiss();
  void dismiss();
  void setHovering(bool hovering);
  void share(const ShotPtr& shot);

  Store& store_;
  ThumbCache& thumbs_;
  GalleryPreviewCache& previews_;
  DesktopWindows windows_;
  QTimer countdown_;
  bool hovering_ = false;
  std::unique_ptr<FloatingPanel> panel_;
  CaptureShelfView* view_ = nullptr;  ///< the panel's
};

}  // namespace Nimbrel
