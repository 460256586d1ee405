#pragma once

#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"

#include <QDialog>
#include <QObject>
#include <QPointer>

#include <functional>

namespace Nimbrel {

class Store;

/// Opens the sheets over a window that the store says are up, and tells it when they have closed.
class SheetPresenter final : public QObject {
  Q_OBJECT

 public:
  /// All must outlive it; it belongs to the window.
  SheetPresenter(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget& window);

 private:
  using Make = std::function<QDialog*()>;
  /// One kind of sheet, by what the store publishes of it.
  struct Kind {
    bool (Store::*isShown)() const;
    void (Store::*setShown)(bool);
    void (Store::*changed)();
    Make make;
  };
  void follow(const Kind& kind);

  Store& store_;
};

}  // namespace Nimbrel
