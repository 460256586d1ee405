#pragma once

#include <QPushButton>

namespace Nimbrel {

/// A small button without a border that opens a menu: a symbol, words, and a chevron after them. The caller opens the
/// menu when it is clicked.
class MenuLink final : public QPushButton {
  Q_OBJECT

 public:
  MenuLink(const QString& symbol, const QString& title, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString symbol_;
};

}  // namespace Nimbrel
