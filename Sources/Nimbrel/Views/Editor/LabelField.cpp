#include "Views/Editor/LabelField.h"

#include <QKeyEvent>

#include <utility>

namespace Nimbrel {

LabelField::LabelField(const QUuid& label, const QString& text, QWidget* canvas)
    : QLineEdit(text, canvas), label_(label) {
  setObjectName(QStringLiteral("editor.labelOnCanvas"));
  setAccessibleName(tr("Label"));
  selectAll();
}

void LabelField::keyPressEvent(QKeyEvent* event) {
  // Not the dialog's: they would save it, or close it.
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return keep();
  if (event->key() == Qt::Key_Escape) return end();
  QLineEdit::keyPressEvent(event);
}

void LabelField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  // Its own menu takes the focus and gives it back.
  if (event->reason() != Qt::PopupFocusReason) keep();
}

void LabelField::keep() {
  if (!hasEnded_) Q_EMIT kept(label_, text());
  end();
}

void LabelField::end() {
  if (std::exchange(hasEnded_, true)) return;
  if (hasFocus()) parentWidget()->setFocus(Qt::OtherFocusReason);
  hide();
  deleteLater();
}

}  // namespace Nimbrel
