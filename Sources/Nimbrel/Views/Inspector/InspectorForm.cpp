#include "Views/Inspector/InspectorForm.h"

#include "Views/Inspector/CodesSection.h"
#include "Views/Inspector/FoundSection.h"
#include "Views/Inspector/NoteSection.h"
#include "Views/Inspector/TagsSection.h"
#include "Views/Inspector/TextSection.h"
#include "Views/Shared/Measures.h"

#include <QEvent>
#include <QStyle>

#include <algorithm>

namespace Nimbrel {

InspectorForm::InspectorForm(const InspectorContext& context, QWidget* parent)
    : QWidget(parent),
      form_(new GroupedForm),
      warning_(new WarningSection(context)),
      actions_(new ActionsSection(context)),
      details_(new DetailsSection(context)) {
  setObjectName(QStringLiteral("inspector.form"));
  sections_ = {warning_,
               actions_,
               details_,
               new TextSection(context),
               new FoundSection(context),
               new CodesSection(context),
               new TagsSection(context),
               new NoteSection(context)};
  for (auto* section : sections_) form_->add(section);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(form_);
  placeMargins();
  connect(warning_, &WarningSection::editClicked, this, &InspectorForm::editClicked);
  connect(actions_, &ActionsSection::editClicked, this, &InspectorForm::editClicked);
  connect(actions_, &ActionsSection::pinClicked, this, &InspectorForm::pinClicked);
  connect(actions_, &ActionsSection::shareClicked, this, &InspectorForm::shareClicked);
}

void InspectorForm::setShot(const ShotPtr& shot) {
  for (auto* section : sections_) section->setShot(shot);
}

void InspectorForm::setCanEdit(bool canEdit) {
  warning_->setCanEdit(canEdit);
  actions_->setCanEdit(canEdit);
}

void InspectorForm::setCanPin(bool canPin) { actions_->setCanPin(canPin); }

void InspectorForm::closePopovers() {
  actions_->closeMenu();
  details_->closeEditor();
}

void InspectorForm::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::StyleChange) placeMargins();
}

void InspectorForm::placeMargins() {
  const auto narrow = std::max(0, Measures::formMargin - style()->pixelMetric(QStyle::PM_ScrollBarExtent));
  const bool isLeftToRight = layoutDirection() == Qt::LeftToRight;
  form_->layout()->setContentsMargins(isLeftToRight ? Measures::formMargin : narrow, Measures::rowPadding,
                                      isLeftToRight ? narrow : Measures::formMargin, Measures::rowPadding);
}

}  // namespace Nimbrel
