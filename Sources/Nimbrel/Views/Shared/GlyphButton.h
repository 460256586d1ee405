#pragma once

#include <QAbstractButton>

namespace Nimbrel {

/// A symbol of 12 without a border that clears or removes something. Its title is its accessible name and tooltip.
class GlyphButton final : public QAbstractButton {
  Q_OBJECT

 public:
  GlyphButton(const QString& symbol, const QString& title, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override { return size(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString symbol_;
};

}  // namespace Nimbrel
