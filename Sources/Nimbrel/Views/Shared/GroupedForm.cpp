#include "Views/Shared/GroupedForm.h"

#include "Views/Shared/Measures.h"

namespace Nimbrel {

GroupedForm::GroupedForm(QWidget* parent) : QWidget(parent), column_(new QVBoxLayout(this)) {
  column_->setContentsMargins(Measures::formMargin, Measures::rowPadding, Measures::formMargin, 0);
  column_->setSpacing(0);
  column_->addStretch();
}

void GroupedForm::addSection(const QString& title) { add(new FormSection(title)); }

void GroupedForm::add(FormSection* section) {
  section_ = section;
  column_->insertWidget(column_->count() - 1, section);
}

void GroupedForm::addValueRow(const QString& label, const QString& value) { section().addValueRow(label, value); }

void GroupedForm::addRow(const QString& label, QWidget* control, Fit fit, const QString& explanation) {
  section().addRow(label, control, fit, explanation);
}

QCheckBox* GroupedForm::addToggle(const QString& label, const QString& explanation) {
  return section().addToggle(label, explanation);
}

void GroupedForm::addWidgetRow(QWidget* widget) { section().addWidgetRow(widget); }

FormSection& GroupedForm::section() {
  if (section_ == nullptr) add(new FormSection);
  return *section_;
}

}  // namespace Nimbrel
