#include "Views/Sheets/AuthenticationPrompt.h"

#include "Views/Shared/ShotWords.h"
#include "Views/Sheets/AuthenticationSheet.h"

#include <QApplication>

#include <utility>

namespace Nimbrel {

AuthenticationPrompt::AuthenticationPrompt(OwnerAuthentication& authentication, QWidget& window)
    : authentication_(authentication), window_(window) {
  authentication_.setPrompt(this);
}

AuthenticationPrompt::~AuthenticationPrompt() {
  authentication_.setPrompt(nullptr);
  end();
}

void AuthenticationPrompt::ask(const std::string& question, Echo echo, Answer answer) {
  open();
  sheet_->ask(shownText(question), echo, std::move(answer));
}

void AuthenticationPrompt::show(const std::string& message) {
  // Many systems have nothing to say, and a question for the finger or the card may take its time.
  open();
  sheet_->showMessage(shownText(message));
}

bool AuthenticationPrompt::wantsAnotherTry() {
  if (!sheet_) return false;
  sheet_->refuse();
  return true;
}

void AuthenticationPrompt::end() {
  if (!sheet_) return;
  auto* sheet = sheet_.data();
  sheet_.clear();
  sheet->disconnect(this);
  sheet->hide();
  sheet->deleteLater();
}

QWidget* AuthenticationPrompt::place() const {
  auto* front = QApplication::activeWindow();
  // Menus and what else pops up is gone before it is answered.
  const bool isLasting = front != nullptr && front->windowType() != Qt::Popup && front->windowType() != Qt::ToolTip;
  if (isLasting) return front;
  // Over nothing it has a place of its own.
  return window_.isVisible() ? &window_ : nullptr;
}

void AuthenticationPrompt::open() {
  if (sheet_) return;
  sheet_ = new AuthenticationSheet(place());
  connect(sheet_, &QDialog::rejected, this, &AuthenticationPrompt::cancel);
  // It goes with the window that it stands over.
  connect(sheet_, &QObject::destroyed, this, &AuthenticationPrompt::cancel);
  sheet_->open();
}

void AuthenticationPrompt::cancel() {
  // Also an answer that is being looked at is not to count any more: who takes the prompt back is refused.
  authentication_.setPrompt(nullptr);
  end();
  authentication_.setPrompt(this);
}

}  // namespace Nimbrel
