#include "Views/Shared/ApplicationFocus.h"

#include <QApplication>

#include <chrono>

namespace Nimbrel {

namespace {

/// How long the focus may be nowhere while it goes from one of our windows to another.
constexpr std::chrono::milliseconds onTheWay{150};

}  // namespace

ApplicationFocus::ApplicationFocus(QObject* parent) : QObject(parent) {
  leaving_.setInterval(onTheWay);
  connect(&leaving_, &QTimer::timeout, this, &ApplicationFocus::decide);
  connect(qApp, &QGuiApplication::focusWindowChanged, this, &ApplicationFocus::follow);
}

void ApplicationFocus::lookAgain() {
  if (QGuiApplication::focusWindow() == nullptr) leaving_.start();
}

void ApplicationFocus::follow(const QWindow* focused) {
  if (focused == nullptr) return leaving_.start();
  leaving_.stop();
  Q_EMIT came();
}

void ApplicationFocus::decide() {
  const bool isBusyHere =
      QApplication::activePopupWidget() != nullptr || QGuiApplication::mouseButtons() != Qt::NoButton;
  // Asked again until the menu is closed or the button let go.
  if (isBusyHere) return;
  leaving_.stop();
  Q_EMIT left();
}

}  // namespace Nimbrel
