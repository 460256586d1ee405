#pragma once

#include <QObject>
#include <QTimer>
#include <QWindow>

namespace Nimbrel {

/// Tells whether the user works in this process: while any of its windows has the focus. Going from one of them to
/// another, as to a dialog and back, is no leaving; nor are its menus, and a drag that a button still holds. Needs a
/// QApplication. Main thread.
class ApplicationFocus final : public QObject {
  Q_OBJECT

 public:
  explicit ApplicationFocus(QObject* parent = nullptr);

  /// Tells again that the user has left, a moment from now, if no window of ours has the focus by then.
  void lookAgain();

 Q_SIGNALS:
  /// A window of ours has the focus; told for each.
  void came();
  void left();

 private:
  void follow(const QWindow* focused);
  void decide();

  QTimer leaving_;  ///< runs while no window has the focus, until that counts
};

}  // namespace Nimbrel
