#include "Views/Window/MenuTitles.h"

#include <QCoreApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>

namespace Nimbrel {

MenuTitles::MenuTitles(QWidget* parent) : QMenuBar(parent) {
  setObjectName(QStringLiteral("menuTitles"));
  setAccessibleName(QStringLiteral("Menus"));
  setNativeMenuBar(false);
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

bool MenuTitles::event(QEvent* event) {
  // A menu bar takes the key for itself, as another arrow key, and would never let it go on.
  if (event->type() == QEvent::KeyPress) {
    const auto key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab) return focusNextPrevChild(key == Qt::Key_Tab);
  }
  return QMenuBar::event(event);
}

void MenuTitles::focusInEvent(QFocusEvent* event) {
  QMenuBar::focusInEvent(event);
  const bool isByTab = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  if (isByTab && !actions().isEmpty()) movePointerTo(actionGeometry(actions().constFirst()).center());
}

void MenuTitles::focusOutEvent(QFocusEvent* event) {
  QMenuBar::focusOutEvent(event);
  if (event->reason() != Qt::PopupFocusReason) movePointerTo({-1, -1});
}

void MenuTitles::movePointerTo(QPoint place) {
  // A title is marked without its menu being opened for the pointer alone.
  QMouseEvent move(QEvent::MouseMove, place, mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
  QCoreApplication::sendEvent(this, &move);
}

}  // namespace Nimbrel
