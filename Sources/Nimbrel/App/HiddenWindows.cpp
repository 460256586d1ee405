#include "App/HiddenWindows.h"

#include <QApplication>

#include <utility>

namespace Nimbrel {

namespace {

/// The user goes on where the capture was taken.
void showQuietly(QWidget& window) {
  const bool wasQuiet = window.testAttribute(Qt::WA_ShowWithoutActivating);
  window.setAttribute(Qt::WA_ShowWithoutActivating);
  window.show();
  window.setAttribute(Qt::WA_ShowWithoutActivating, wasQuiet);
}

}  // namespace

void HiddenWindows::hide() {
  for (auto* widget : QApplication::topLevelWidgets()) {
    if (!widget->isVisible()) continue;
    windows_.emplace_back(widget);
    widget->hide();
  }
}

void HiddenWindows::comeBack() {
  const auto front = focus_.current();
  for (const auto& window : std::exchange(windows_, {})) {
    if (window) showQuietly(*window);
  }
  // Not every desktop heeds that they want no keyboard.
  if (front && !front->isOurs) focus_.giveTo(front->id);
}

}  // namespace Nimbrel
