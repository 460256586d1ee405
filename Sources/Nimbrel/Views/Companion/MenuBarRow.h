#pragma once

#include "Store/Store.h"
#include "Views/Gallery/GalleryActions.h"
#include "Views/Gallery/VisibleThumbs.h"
#include "Views/Inspector/SymbolView.h"
#include "Views/Shared/ElidedLabel.h"

#include <QAbstractButton>

namespace Nimbrel {

/// A shot in the panel of the menu bar: its picture, where it comes from, its name and its time. A click or Return
/// opens it; it can be dragged out, and has a menu. A protected shot gives nothing away.
class MenuBarRow final : public QAbstractButton {
  Q_OBJECT

 public:
  /// The room for its picture.
  static constexpr QSize thumbSize{118, 74};

  /// All are borrowed and must outlive the row.
  MenuBarRow(Store& store, GalleryActions& actions, const VisibleThumbs& thumbs, QWidget* parent);

  /// To be called again when anything may have changed that it shows.
  void setShot(const ShotPtr& shot);
  /// Null before the first one.
  [[nodiscard]] const ShotPtr& shot() const { return shot_; }
  [[nodiscard]] bool isObscured() const { return isProtected_; }
  /// Its picture has arrived.
  void updateThumb();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  class Thumb;

  void arrange();
  void showWords();
  void drag();

  Store& store_;
  GalleryActions& actions_;
  const VisibleThumbs& thumbs_;
  ShotPtr shot_;
  bool isProtected_ = false;
  QPoint pressed_;
  Thumb* thumb_;
  ElidedLabel* source_;
  ElidedLabel* name_;
  ElidedLabel* time_;
  SymbolView* warning_;
};

}  // namespace Nimbrel
