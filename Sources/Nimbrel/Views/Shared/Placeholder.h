#pragma once

#include <QLabel>
#include <QWidget>

namespace Nimbrel {

/// What stands in an empty place: a symbol, a title, and why it is empty where there is more to say.
class Placeholder final : public QWidget {
  Q_OBJECT

 public:
  /// Small is for the details column.
  enum class Size { Normal, Small };

  Placeholder(const QString& symbol, const QString& title, const QString& description, Size size = Size::Normal,
              QWidget* parent = nullptr);

  void setContent(const QString& symbol, const QString& title, const QString& description);

 private:
  class SymbolView;

  SymbolView* symbol_;
  QLabel* title_;
  QLabel* description_;
};

}  // namespace Nimbrel
