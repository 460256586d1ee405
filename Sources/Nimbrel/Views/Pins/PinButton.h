#pragma once

#include <QAbstractButton>

namespace Nimbrel {

/// A small button that lies over a picture, on a ground of its own. Its title is its accessible name and tooltip.
class PinButton final : public QAbstractButton {
  Q_OBJECT

 public:
  static constexpr int side = 20;

  PinButton(const QString& symbol, const QString& title, QWidget* parent);

  void setSymbol(const QString& symbol);
  [[nodiscard]] const QString& symbol() const { return symbol_; }
  /// Painted so strong, from 0 to 1.
  void setOpacity(double opacity);
  [[nodiscard]] QSize sizeHint() const override { return {side, side}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString symbol_;
  double opacity_ = 1;
};

}  // namespace Nimbrel
