#pragma once

#include "Store/Store.h"
#include "Views/Gallery/GalleryActions.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QWidget>

#include <functional>
#include <optional>

namespace Nimbrel {

class ElidedLabel;
class ShelfThumb;
class TwoLineLabel;

/// What stands on the shelf: a thumbnail, where the shot went, and what one usually wants to do next. It follows its
/// shot as that is in the catalogue, and is empty while it is not there. Main thread.
class CaptureShelfView final : public QWidget {
  Q_OBJECT

 public:
  /// All are borrowed and must outlive the view.
  CaptureShelfView(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent = nullptr);

  void setShot(const ShotPtr& shot);

 Q_SIGNALS:
  void dismissRequested();
  /// The shot may be handed out.
  void shareRequested(const Nimbrel::ShotPtr& shot);

 private:
  using Action = std::function<void(const ShotPtr& shot)>;

  QHBoxLayout* makeHeader();
  QHBoxLayout* makeInfo(ThumbCache& thumbs, GalleryPreviewCache& previews);
  QHBoxLayout* makeButtonRow();
  QPushButton* addButton(QHBoxLayout& row, const QString& symbol, const QString& title, const QString& name,
                         const Action& action);
  void addButtons(QHBoxLayout& upper, QHBoxLayout& lower);
  /// The row of the shot; absent when it is gone.
  [[nodiscard]] std::optional<ShotPtr> current() const;
  void refresh();

  Store& store_;
  GalleryActions actions_;
  ShotPtr shot_;  ///< as it was when it came; null until one has come
  QWidget* content_;
  ShelfThumb* thumb_ = nullptr;
  TwoLineLabel* title_ = nullptr;
  ElidedLabel* place_ = nullptr;
  QPushButton* copyImage_ = nullptr;
  QPushButton* copyText_ = nullptr;
  QPushButton* edit_ = nullptr;
  QPushButton* file_ = nullptr;
  QPushButton* share_ = nullptr;
};

}  // namespace Nimbrel
