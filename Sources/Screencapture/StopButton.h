#pragma once

#include <QAbstractButton>
#include <QColor>

namespace Nimbrel::Screencapture {

inline constexpr QColor recordingRed(255, 59, 48);

/// A square in a circle. Never takes the focus.
class StopButton : public QAbstractButton {
  Q_OBJECT
 public:
  explicit StopButton(QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace Nimbrel::Screencapture
