#include "Views/Companion/LeaveWatch.h"

#include <QApplication>
#include <QDialog>

#include <algorithm>
#include <chrono>
#include <utility>

namespace Nimbrel {

namespace {

/// How long the focus may be nowhere while it goes from one of our windows to another.
constexpr std::chrono::milliseconds onTheWay{150};

}  // namespace

LeaveWatch::LeaveWatch(QWidget& window) : QObject(&window), window_(window) {
  leaving_.setInterval(onTheWay);
  connect(&leaving_, &QTimer::timeout, this, &LeaveWatch::decide);
  connect(qApp, &QGuiApplication::focusWindowChanged, this, &LeaveWatch::follow);
}

bool LeaveWatch::isOwn(const QWindow* window) const {
  const auto* own = window_.windowHandle();
  for (; window != nullptr; window = window->transientParent()) {
    if (window == own) return own != nullptr;
  }
  return false;
}

void LeaveWatch::follow(const QWindow* focused) {
  if (isOwn(focused)) {
    isIn_ = true;
    leaving_.stop();
  } else if (isIn_) {
    leaving_.start();
  }
}

bool LeaveWatch::isBusyHere() const {
  if (QApplication::activePopupWidget() != nullptr || QGuiApplication::mouseButtons() != Qt::NoButton) return true;
  return std::ranges::any_of(window_.findChildren<QDialog*>(),
                             [](const QDialog* dialog) { return dialog->isVisible(); });
}

void LeaveWatch::decide() {
  // Asked again until the menu or the dialog is closed, or the button let go.
  if (isBusyHere()) return;
  leaving_.stop();
  if (std::exchange(isIn_, false) && window_.isVisible()) Q_EMIT left();
}

}  // namespace Nimbrel
