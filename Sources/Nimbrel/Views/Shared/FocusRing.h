#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace Nimbrel {

/// The mark around the control that has the focus: a ring for those that the keyboard has reached, the halo for text
/// fields however they were reached. It lies around the control, above its surroundings, and takes no clicks. The style
/// owns one and watches its widgets with it.
class FocusRing final : public QObject {
  Q_OBJECT

 public:
  FocusRing();
  ~FocusRing() override;

  /// Watches a control; those that take no ring are passed over.
  void watch(QWidget& widget);
  void forget(QWidget& widget);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void showAround(QWidget& widget);
  void takeAway();
  void place();

  QPointer<QWidget> control_;
  QPointer<QWidget> ring_;  ///< a child of the control's window
};

}  // namespace Nimbrel
