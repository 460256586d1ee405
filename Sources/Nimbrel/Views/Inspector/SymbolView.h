#pragma once

#include "Views/Shared/Theme.h"

#include <QWidget>

namespace Nimbrel {

/// A symbol that stands for itself, in the colour of a token. Nothing for screen readers.
class SymbolView final : public QWidget {
  Q_OBJECT

 public:
  /// `size` in device-independent pixels, as it is.
  SymbolView(const QString& symbol, int size, Token token, QWidget* parent = nullptr);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString symbol_;
  Token token_;
};

}  // namespace Nimbrel
