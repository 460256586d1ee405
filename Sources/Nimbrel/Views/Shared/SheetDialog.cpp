#include "Views/Shared/SheetDialog.h"

#include "Views/Shared/Buttons.h"
#include "Views/Shared/Hairline.h"
#include "Views/Shared/Measures.h"
#include "Views/Shared/TextStyles.h"

#include <QLabel>

namespace Nimbrel {

SheetDialog::SheetDialog(const QString& heading, QWidget* parent)
    : QDialog(parent), content_(new QVBoxLayout), footerStart_(new QHBoxLayout), footerEnd_(new QHBoxLayout) {
  setWindowTitle(heading);
  setWindowModality(Qt::WindowModal);
  auto* title = new QLabel(heading);
  setTextLook(*title, TextStyle::Title2);
  title->setWordWrap(true);
  title->setMinimumHeight(lineHeight(TextStyle::Title2));
  content_->setContentsMargins(Measures::dialogMargin, Measures::dialogMargin, Measures::dialogMargin,
                               Measures::dialogMargin);
  content_->setSpacing(Measures::step12);
  content_->addWidget(title);

  auto* footer = new QWidget;
  footer->setMinimumHeight(scaled(Measures::dialogFooterHeight) - 1);
  auto* row = new QHBoxLayout(footer);
  row->setContentsMargins(Measures::dialogMargin, 0, Measures::dialogMargin, 0);
  row->setSpacing(Measures::buttonGap);
  footerEnd_->setSpacing(Measures::buttonGap);
  row->addLayout(footerStart_);
  row->addStretch();
  row->addLayout(footerEnd_);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  // Neither smaller nor larger than its content asks for.
  column->setSizeConstraint(QLayout::SetFixedSize);
  column->addLayout(content_, 1);
  column->addWidget(new Hairline(Qt::Horizontal));
  column->addWidget(footer);
}

QPushButton* SheetDialog::addCancelButton(const QString& title) {
  auto* button = new QPushButton(title);
  setVariant(*button, ButtonVariant::Plain);
  footerEnd_->insertWidget(0, button);
  connect(button, &QPushButton::clicked, this, &SheetDialog::reject);
  return button;
}

QPushButton* SheetDialog::addFurtherButton(const QString& title) {
  auto* button = new QPushButton(title);
  setVariant(*button, ButtonVariant::Plain);
  footerEnd_->addWidget(button);
  return button;
}

QPushButton* SheetDialog::addDefaultButton(const QString& title) {
  auto* button = new QPushButton(title);
  setVariant(*button, ButtonVariant::Default);
  footerEnd_->addWidget(button);
  return button;
}

}  // namespace Nimbrel
