#include "Views/Sheets/AuthenticationSheet.h"

#include "Views/Shared/FieldText.h"
#include "Views/Shared/Measures.h"

#include <QStyle>

#include <cmath>
#include <numbers>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int contentWidth = 360;
constexpr int shakeMilliseconds = 400;
constexpr int shakes = 3;
constexpr double shakeReach = 8;

/// The system's questions end as they do on a terminal: "Password: ".
QString withoutColon(QString question) {
  question = question.trimmed();
  if (question.endsWith(QLatin1Char(':'))) question.chop(1);
  return question;
}

}  // namespace

AuthenticationSheet::AuthenticationSheet(QWidget* parent)
    : SheetDialog(tr("Unlock"), parent),
      message_(new QLabel),
      question_(new QLabel),
      field_(new QLineEdit),
      refusal_(new QLabel),
      ring_(new BusyRing),
      unlock_(nullptr) {
  setObjectName(QStringLiteral("authenticationSheet"));
  addFields();
  footerStart()->addWidget(ring_);
  addCancelButton(tr("Cancel"))->setObjectName(QStringLiteral("authentication.cancel"));
  unlock_ = addDefaultButton(tr("Unlock"));
  unlock_->setObjectName(QStringLiteral("authentication.unlock"));
  connect(unlock_, &QPushButton::clicked, this, &AuthenticationSheet::give);
  shaking_.setStartValue(0.0);
  shaking_.setEndValue(1.0);
  shaking_.setDuration(shakeMilliseconds);
  connect(&shaking_, &QVariantAnimation::valueChanged, this, &AuthenticationSheet::moveField);
  setBusy(true);
}

void AuthenticationSheet::addFields() {
  message_->setObjectName(QStringLiteral("authentication.message"));
  setTextLook(*message_, TextStyle::Body, Token::Secondary);
  question_->setObjectName(QStringLiteral("authentication.question"));
  setTextLook(*question_, TextStyle::Body);
  question_->setBuddy(field_);
  field_->setObjectName(QStringLiteral("authentication.answer"));
  field_->setContextMenuPolicy(Qt::NoContextMenu);
  field_->setEchoMode(QLineEdit::Password);
  refusal_->setObjectName(QStringLiteral("authentication.refusal"));
  setTextLook(*refusal_, TextStyle::Callout, Token::Danger);
  refusal_->setMinimumHeight(lineHeight(TextStyle::Callout));
  content()->setSpacing(Measures::step8);
  for (auto* label : {message_, question_, refusal_}) {
    label->setWordWrap(true);
    label->setFixedWidth(contentWidth);
  }
  content()->addWidget(message_);
  content()->addWidget(question_);
  content()->addWidget(field_);
  content()->addWidget(refusal_);
}

void AuthenticationSheet::showMessage(const QString& message) { message_->setText(message); }

void AuthenticationSheet::ask(const QString& question, CredentialPrompt::Echo echo, CredentialPrompt::Answer answer) {
  const bool isHidden = echo == CredentialPrompt::Echo::Off;
  question_->setText(withoutColon(question));
  field_->setAccessibleName(question_->text());
  if (isHidden) {
    hideText(*field_);
  } else {
    field_->setEchoMode(QLineEdit::Normal);
    field_->setInputMethodHints(Qt::ImhSensitiveData | Qt::ImhNoPredictiveText);
  }
  dropSecret(*field_);
  answer_ = std::move(answer);
  setBusy(false);
  field_->setFocus(Qt::OtherFocusReason);
}

// Its window may take it along without hiding it first.
AuthenticationSheet::~AuthenticationSheet() { dropSecret(*field_); }

void AuthenticationSheet::refuse() {
  refusal_->setText(tr("That was not right. Try again."));
  shake();
}

void AuthenticationSheet::give() {
  if (!answer_) return;
  setBusy(true);
  refusal_->clear();
  const auto answer = std::exchange(answer_, nullptr);
  answer(takeSecret(*field_));
}

void AuthenticationSheet::setBusy(bool isBusy) {
  ring_->setVisible(isBusy);
  field_->setEnabled(!isBusy);
  unlock_->setEnabled(!isBusy);
}

void AuthenticationSheet::hideEvent(QHideEvent* event) {
  shaking_.stop();
  dropSecret(*field_);
  SheetDialog::hideEvent(event);
}

void AuthenticationSheet::shake() {
  if (style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) <= 0) return;
  if (shaking_.state() != QAbstractAnimation::Running) fieldLeft_ = field_->x();
  shaking_.stop();
  shaking_.start();
}

void AuthenticationSheet::moveField(const QVariant& progress) {
  const auto time = progress.toDouble();
  const auto offset = shakeReach * (1 - time) * std::sin(time * shakes * 2 * std::numbers::pi);
  field_->move(fieldLeft_ + static_cast<int>(std::lround(offset)), field_->y());
}

}  // namespace Nimbrel
