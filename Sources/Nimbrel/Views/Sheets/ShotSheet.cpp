#include "Views/Sheets/ShotSheet.h"

#include "Views/Shared/FormSection.h"
#include "Views/Shared/Measures.h"
#include "Views/Sheets/WrappedText.h"

namespace Nimbrel {

namespace {

constexpr int noteGap = Measures::step8;

}  // namespace

ShotSheet::ShotSheet(const QString& heading, int width, QWidget* parent)
    : SheetDialog(heading, parent), contentWidth_(width - 2 * Measures::dialogMargin), footerText_(new QLabel) {
  setAttribute(Qt::WA_DeleteOnClose);
  content()->setContentsMargins(Measures::dialogMargin, Measures::dialogMargin, Measures::dialogMargin,
                                Measures::step16);
  content()->setSpacing(0);
  footerText_->setObjectName(QStringLiteral("footerText"));
  setTextLook(*footerText_, TextStyle::Body, Token::Secondary);
  footerStart()->addWidget(footerText_);
}

void ShotSheet::addWords(const QString& words) {
  content()->addSpacing(Measures::step4);
  addLabel(words, TextStyle::Body);
}

void ShotSheet::addForm(GroupedForm* form) {
  content()->addSpacing(Measures::sectionGap);
  form->layout()->setContentsMargins(0, 0, 0, 0);
  form->setFixedWidth(contentWidth_);
  content()->addWidget(form);
  form_ = form;
}

void ShotSheet::addNote(const QString& words) {
  // Nearer to its form than what comes after a form is otherwise.
  if (form_ != nullptr) form_->findChild<FormSection*>()->layout()->setContentsMargins(0, 0, 0, noteGap);
  addLabel(words, TextStyle::Caption)->setContentsMargins(Measures::step2, 0, Measures::step2, 0);
  content()->addSpacing(Measures::step12);
}

void ShotSheet::addPlace(QWidget* list, Placeholder* placeholder, int height) {
  place_ = new QStackedWidget;
  place_->addWidget(list);
  place_->addWidget(placeholder);
  place_->setFixedSize(contentWidth_, height);
  content()->addWidget(place_);
}

void ShotSheet::showPlaceholder(bool isEmpty) { place_->setCurrentIndex(isEmpty ? 1 : 0); }

void ShotSheet::setFooterText(const QString& text) { footerText_->setText(text); }

QLabel* ShotSheet::addLabel(const QString& text, TextStyle style) {
  auto* label = new WrappedText(text, style, Token::Secondary);
  label->setFixedWidth(contentWidth_);
  content()->addWidget(label);
  return label;
}

}  // namespace Nimbrel
