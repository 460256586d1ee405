#include "Views/Window/Surface.h"

#include <QPalette>

namespace Nimbrel {

void setSurface(QWidget& widget, Token token) {
  widget.setAutoFillBackground(true);
  const auto paint = [&widget, token] {
    auto palette = widget.palette();
    palette.setColor(QPalette::Window, themeColor(token));
    palette.setColor(QPalette::Base, themeColor(token));
    widget.setPalette(palette);
  };
  paint();
  QObject::connect(&Theme::shared(), &Theme::changed, &widget, paint);
}

}  // namespace Nimbrel
