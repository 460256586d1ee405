#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>

namespace Nimbrel {

/// A ring that turns once in 0.9 seconds while it is seen, and stands still where the desktop wants no animations.
class BusyRing final : public QWidget {
  Q_OBJECT

 public:
  explicit BusyRing(QWidget* parent = nullptr);

  [[nodiscard]] bool isTurning() const { return turning_.isActive(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  QBasicTimer turning_;
  QElapsedTimer since_;
};

}  // namespace Nimbrel
