#pragma once

#include <QLineEdit>
#include <QUuid>

namespace Nimbrel {

/// The field in which a label on the canvas is written anew, over the label. Return and leaving it keep what is
/// written, Escape does not; either way it deletes itself.
class LabelField final : public QLineEdit {
  Q_OBJECT

 public:
  LabelField(const QUuid& label, const QString& text, QWidget* canvas);

  /// As Return does.
  void keep();

 Q_SIGNALS:
  /// Once at most.
  void kept(const QUuid& label, const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void end();

  QUuid label_;
  bool hasEnded_ = false;
};

}  // namespace Nimbrel
