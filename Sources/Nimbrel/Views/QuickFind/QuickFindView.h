#pragma once

#include "Store/Store.h"
#include "Views/Gallery/GalleryActions.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Gallery/ThumbLoader.h"
#include "Views/Gallery/VisibleThumbs.h"
#include "Views/QuickFind/QuickFindResults.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QStackedWidget>
#include <QWidget>

namespace Nimbrel {

/// What stands in the panel of quick find: a field, and the shots with its text in a list under it. The keyboard stays
/// in the field, whose arrow keys move the highlight. Main thread.
class QuickFindView final : public QWidget {
  Q_OBJECT

 public:
  /// All are borrowed and must outlive the view.
  QuickFindView(Store& store, ThumbCache& thumbs, GalleryPreviewCache& previews, QWidget* parent = nullptr);

  /// Empties the field and gives it the keyboard.
  void startAfresh();

 Q_SIGNALS:
  /// The user has what they wanted, or does not want it any more.
  void closeRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  QWidget* makeFieldRow();
  QWidget* makeEmptyBody();
  void setUpList();
  void showResults();
  void showHighlight();
  void showThumbs();
  /// Puts the picture of the highlighted shot on the pasteboard, once it may be handed out, and asks to be closed.
  void copySelected();

  GalleryActions actions_;
  QuickFindResults results_;
  ThumbLoader loader_;
  VisibleThumbs thumbs_;
  QLineEdit* field_ = nullptr;
  QLabel* hint_ = nullptr;
  QStackedWidget* body_;
  QListView* list_;
  QWidget* empty_ = nullptr;
  QLabel* emptyTitle_ = nullptr;
  QLabel* emptyHint_ = nullptr;
};

}  // namespace Nimbrel
