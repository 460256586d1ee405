#include "Views/Shared/LeadingText.h"

#include <QEvent>
#include <QStyle>

namespace Nimbrel {

namespace {

/// Sees the label turn.
class Turning final : public QObject {
 public:
  explicit Turning(QLabel& label) : QObject(&label), label_(label) {
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
    const auto leading = QStyle::visualAlignment(label_.layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter);
    label_.setAlignment(leading | Qt::AlignAbsolute);
  }

  QLabel& label_;
};

}  // namespace

void alignToLayout(QLabel& label) { new Turning(label); }

}  // namespace Nimbrel
