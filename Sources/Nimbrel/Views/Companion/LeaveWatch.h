#pragma once

#include <QObject>
#include <QTimer>
#include <QWidget>
#include <QWindow>

namespace Nimbrel {

/// Tells when the user has left a window that is to close then: once the keyboard is neither in it nor in a dialog of
/// its own. Its menus, a dialog that is still up, and a drag that a button still holds are no leaving. A window that
/// never had the keyboard is not left. Needs a QApplication. Main thread.
class LeaveWatch final : public QObject {
  Q_OBJECT

 public:
  /// It belongs to the window.
  explicit LeaveWatch(QWidget& window);

 Q_SIGNALS:
  void left();

 private:
  void follow(const QWindow* focused);
  void decide();
  [[nodiscard]] bool isOwn(const QWindow* window) const;
  [[nodiscard]] bool isBusyHere() const;

  QWidget& window_;
  bool isIn_ = false;  ///< as far as it is known
  QTimer leaving_;     ///< runs from when the keyboard went elsewhere until that counts
};

}  // namespace Nimbrel
