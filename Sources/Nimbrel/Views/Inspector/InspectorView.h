#pragma once

#include "Model/Models.h"
#include "Store/Store.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Inspector/InspectorDrafts.h"
#include "Views/Shared/AppIcons.h"

#include <QScrollArea>
#include <QWidget>

#include <functional>

namespace Nimbrel {

class InspectorForm;
class InspectorPicture;

/// The column beside the gallery that shows one shot: its picture, what is known of it, and all that can be done with
/// it; of a protected one nothing but that it is locked. It follows the Store by itself, as long as the shot is there.
///
/// What the user has written and not handed in is dropped when another shot takes its place, except that a note is
/// saved when the view disappears: when it is hidden, with its window or alone, or deleted while it is seen. Main
/// thread.
class InspectorView final : public QWidget {
  Q_OBJECT

 public:
  /// Everything is borrowed and must outlive the view; the caches are those of the gallery.
  InspectorView(Store& store, AppIcons& icons, ThumbCache& thumbs, GalleryPreviewCache& previews,
                QWidget* parent = nullptr);
  ~InspectorView() override;

  /// Shows a shot, never null.
  void setShot(const ShotPtr& shot);
  /// Null until there was one.
  [[nodiscard]] const ShotPtr& shot() const { return shot_; }

  /// Whether somebody answers editRequested() and pinRequested(). Until then their buttons are disabled.
  void setCanEdit(bool canEdit);
  void setCanPin(bool canPin);

 Q_SIGNALS:
  // Told once the shot may be handed out.

  void editRequested(const ShotPtr& shot);
  void pinRequested(const ShotPtr& shot);
  /// The button is where it was asked for.
  void shareRequested(const ShotPtr& shot, QWidget* button);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void followStore();
  /// Brings what is seen in line with shot, lock and drafts.
  void refresh();
  void showForm();
  void showLocked();
  void replaceContent(QWidget* content);
  InspectorForm* newForm();
  void openShot();
  /// Runs something of this view with the shot, once it may be handed out and if the view is still there then.
  void handOut(std::function<void(const ShotPtr& shot)> action);
  void saveNote();

  Store& store_;
  AppIcons& icons_;
  InspectorDrafts drafts_;
  ShotPtr shot_;
  bool isSeen_ = false;
  bool canEdit_ = false;
  bool canPin_ = false;
  InspectorPicture* picture_;
  QScrollArea* scroll_;
  InspectorForm* form_ = nullptr;  ///< null while the shot is protected
};

}  // namespace Nimbrel
