#include "Views/Companion/PanelButton.h"

#include "Views/Shared/Buttons.h"
#include "Views/Shared/Symbols.h"
#include "Views/Shared/TextStyles.h"

namespace Nimbrel {

namespace {

constexpr int wordlessWidth = 28;

}  // namespace

PanelButton::PanelButton(const QString& symbol, const QString& title, Words words, QWidget* parent)
    : QPushButton(parent) {
  setVariant(*this, ButtonVariant::Plain);
  setButtonSize(*this, ButtonSize::Small);
  setIcon(Symbols::icon(symbol, {.normal = Token::Text}));
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(title);
  if (words == Words::Shown) {
    setText(title);
  } else {
    setToolTip(title);
    setFixedWidth(scaled(wordlessWidth));
  }
}

}  // namespace Nimbrel
