#include "Views/Shared/LeadingText.h"

#include <QEvent>
#include <QStyle>

namespace Nimbrel {

namespace {

/// Sees the label turn.
class Turning final : public QObject {
 public:
  Turning(QLabel& label, Qt::Alignment alignment) : QObject(&label), label_(label), alignment_(alignment) {
    label.installEventFilter(this);
    align();
  }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::LayoutDirectionChange) align();
    return false;
  }

 private:
  void align() {
    label_.setAlignment(QStyle::visualAlignment(label_.layoutDirection(), alignment_) | Qt::AlignAbsolute);
  }

  QLabel& label_;
  Qt::Alignment alignment_;
};

}  // namespace

void alignToLayout(QLabel& label, Qt::Alignment alignment) { new Turning(label, alignment); }

}  // namespace Nimbrel
