#include "Views/Window/ActivityWatch.h"

#include <QApplication>

#include <chrono>

namespace Nimbrel {

namespace {

/// How long the focus may be nowhere while it goes from one of our windows to another.
constexpr std::chrono::milliseconds onTheWay{150};

}  // namespace

ActivityWatch::ActivityWatch(Store& store, QObject* parent) : QObject(parent), store_(store) {
  leaving_.setInterval(onTheWay);
  connect(&leaving_, &QTimer::timeout, this, &ActivityWatch::decide);
  connect(qApp, &QGuiApplication::focusWindowChanged, this, &ActivityWatch::follow);
}

void ActivityWatch::follow(const QWindow* focused) {
  if (focused == nullptr) return leaving_.start();
  leaving_.stop();
  store_.setApplicationActive(true);
}

void ActivityWatch::decide() {
  const bool isBusyHere =
      QApplication::activePopupWidget() != nullptr || QGuiApplication::mouseButtons() != Qt::NoButton;
  // Asked again until the menu is closed or the button let go.
  if (isBusyHere) return;
  leaving_.stop();
  store_.setApplicationActive(false);
}

}  // namespace Nimbrel
