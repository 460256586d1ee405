#pragma once

#include "Views/Shared/Theme.h"

#include <QAction>
#include <QPushButton>
#include <QWidget>

namespace Nimbrel {

/// What a push button is for, and thereby how it looks.
enum class ButtonVariant { Plain, Default, Destructive, Link };
enum class ButtonSize { Normal, Small };

/// Buttons are plain and normal until told otherwise. A default button answers Return in its dialog, and one per dialog
/// is enough.
void setVariant(QPushButton& button, ButtonVariant variant);
void setButtonSize(QPushButton& button, ButtonSize size);
[[nodiscard]] ButtonVariant variantOf(const QWidget& button);
[[nodiscard]] ButtonSize sizeOf(const QWidget& button);

/// Shows a menu item in the colour of danger. Its icon, if any, is best made with Token::Danger.
void setDestructive(QAction& action);
[[nodiscard]] bool isDestructive(const QAction& action);

/// A bordered symbol of the details' row of actions, 42 high; `title` is its accessible name and tooltip.
class IconButton final : public QPushButton {
  Q_OBJECT

 public:
  IconButton(const QString& symbol, const QString& title, QWidget* parent = nullptr);

  void setSymbol(const QString& symbol, const QString& title, Token color = Token::Text);
  [[nodiscard]] QString symbol() const { return symbol_; }
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QString symbol_;
  Token color_ = Token::Text;
};

/// Words in the colour of the accent that do something.
class LinkButton final : public QPushButton {
  Q_OBJECT

 public:
  explicit LinkButton(const QString& text, QWidget* parent = nullptr);
};

}  // namespace Nimbrel
