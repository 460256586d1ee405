#pragma once

#include "Views/Pins/PinGrip.h"

#include <QImage>
#include <QPixmap>
#include <QRectF>
#include <QWidget>

namespace Nimbrel {

class PinButton;

/// A window without a frame that floats above all others and shows one picture. It is dragged by any point and resized
/// at its edges, there with its ratio kept while Shift is held; the wheel and the keys + and - change its size, the
/// arrow keys its place. Over the picture there are buttons while the pointer is on it or the keyboard in them.
///
/// It never takes the keyboard when it is shown; a click gives it, and Escape asks to close then. It does nothing of
/// what it asks for itself. Main thread.
class PinnedView final : public QWidget {
  Q_OBJECT

 public:
  static constexpr double fadedOpacity = 0.55;
  /// What is above counts as not faded.
  static constexpr double opacityThreshold = 0.75;

  /// Shows a picture, which is not null. The stacking is borrowed and must outlive the view.
  PinnedView(const QImage& picture, WindowStacking& stacking);

  /// Opens it on a screen on which so many other pins are open, and leaves the keyboard where it is.
  void open(QScreen& screen, int others);

  /// The same picture with more pixels.
  void setPicture(const QImage& picture);
  [[nodiscard]] const QImage& picture() const { return picture_; }
  /// Where it is in the window.
  [[nodiscard]] QRectF picturePlace() const;

  [[nodiscard]] double opacity() const { return opacity_; }
  void toggleFade();

 Q_SIGNALS:
  void closeRequested();
  void openRequested();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  void changeEvent(QEvent* event) override;

 private:
  PinButton* addButton(const QString& symbol, const QString& title, const QString& name);
  void addButtons();
  void showButtons();
  void placeButtons();
  /// So many times as large, around a point of the desktop.
  void zoom(double factor, const QPointF& anchor);
  [[nodiscard]] int radius() const;
  [[nodiscard]] QPixmap composed(double scale) const;

  QImage picture_;
  WindowStacking& stacking_;
  PinGrip grip_;
  QWidget* buttons_;
  PinButton* fade_ = nullptr;
  bool hovering_ = false;
  bool keyboardInButtons_ = false;
  double opacity_ = 1;
  QSize opened_;            ///< the size that it had at first
  double openedScale_ = 1;  ///< of the screen there; on another one the picture keeps its share of the window
  QRectF exact_;            ///< where the last zoom wanted it, which whole numbers do not tell
  QPixmap composed_;        ///< the picture at the size and scale of the moment; null when not yet made
};

}  // namespace Nimbrel
