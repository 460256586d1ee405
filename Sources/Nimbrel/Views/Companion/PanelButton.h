#pragma once

#include <QPushButton>
#include <QString>

namespace Nimbrel {

/// A small bordered button of the panel of the menu bar: a symbol and a title on one line, or the symbol alone.
class PanelButton final : public QPushButton {
  Q_OBJECT

 public:
  enum class Words { Shown, Hidden };

  /// Where they are hidden the title is the button's name and its tooltip.
  PanelButton(const QString& symbol, const QString& title, Words words = Words::Shown, QWidget* parent = nullptr);
};

}  // namespace Nimbrel
