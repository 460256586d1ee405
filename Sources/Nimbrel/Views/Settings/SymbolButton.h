#pragma once

#include <QAbstractButton>

namespace Nimbrel {

/// A symbol without a border in a row of a form. Its title is its accessible name and tooltip.
class SymbolButton final : public QAbstractButton {
  Q_OBJECT

 public:
  /// `size` of the symbol in device-independent pixels, at the desktop's default size of text.
  SymbolButton(const QString& symbol, int size, QWidget* parent = nullptr);

  void setTitle(const QString& title);
  void setSymbol(const QString& symbol);
  [[nodiscard]] QString symbol() const { return symbol_; }
  /// For a symbol that points to the side in which the script runs; it is drawn for scripts from left to right.
  void setFollowsScript(bool followsScript) { followsScript_ = followsScript; }

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString symbol_;
  int size_;
  bool followsScript_ = false;
};

}  // namespace Nimbrel
