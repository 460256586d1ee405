#pragma once

#include <QRadioButton>

namespace Nimbrel {

/// A disc in one ink, to choose it by; the chosen one stands in a ring. Its name is its accessible name and tooltip.
class InkSwatch final : public QRadioButton {
  Q_OBJECT

 public:
  /// A row of InkColor::all().
  explicit InkSwatch(int colorIndex, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  [[nodiscard]] bool hitButton(const QPoint& point) const override { return rect().contains(point); }
  void paintEvent(QPaintEvent* event) override;

 private:
  int colorIndex_;
};

}  // namespace Nimbrel
