#pragma once

#include "Platform/OwnerAuthentication.h"
#include "Views/Shared/BusyRing.h"
#include "Views/Shared/SheetDialog.h"
#include "Views/Shared/TextStyles.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVariantAnimation>

namespace Nimbrel {

/// The sheet in which the owner is asked. It puts one question at a time, waits while the answer is looked at, and
/// shakes when it was wrong. Closing it cancels.
class AuthenticationSheet final : public SheetDialog {
  Q_OBJECT

 public:
  explicit AuthenticationSheet(QWidget* parent);
  ~AuthenticationSheet() override;

  /// What it is about, or what the system has to say.
  void showMessage(const QString& message);
  /// Any answer that was begun is dropped.
  void ask(const QString& question, CredentialPrompt::Echo echo, CredentialPrompt::Answer answer);
  /// The answers were wrong; a question follows.
  void refuse();

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void addFields();
  void give();
  void setBusy(bool isBusy);
  void shake();
  void moveField(const QVariant& progress);

  QLabel* message_;
  QLabel* question_;
  QLineEdit* field_;
  QLabel* refusal_;
  BusyRing* ring_;
  QPushButton* unlock_;
  QVariantAnimation shaking_;
  int fieldLeft_ = 0;  ///< where the field rests while it shakes
  CredentialPrompt::Answer answer_;
};

}  // namespace Nimbrel
