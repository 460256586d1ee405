#pragma once

#include "Platform/OwnerAuthentication.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace Nimbrel {

class AuthenticationSheet;

/// Has the owner asked in a sheet over whichever window the user works in. After a wrong answer it asks again, until
/// the user cancels.
class AuthenticationPrompt final : public QObject, public CredentialPrompt {
  Q_OBJECT

 public:
  /// Becomes the prompt of that authentication for as long as it lives; `window` is asked over when no other of ours is
  /// in front, or nothing while it is hidden. Both must outlive it.
  AuthenticationPrompt(OwnerAuthentication& authentication, QWidget& window);
  ~AuthenticationPrompt() override;
  AuthenticationPrompt(const AuthenticationPrompt&) = delete;
  AuthenticationPrompt& operator=(const AuthenticationPrompt&) = delete;

  void ask(const std::string& question, Echo echo, Answer answer) override;
  void show(const std::string& message) override;
  [[nodiscard]] bool wantsAnotherTry() override;
  void end() override;

 private:
  [[nodiscard]] QWidget* place() const;
  void open();
  void cancel();

  OwnerAuthentication& authentication_;
  QWidget& window_;
  QPointer<AuthenticationSheet> sheet_;  ///< while it is asked
};

}  // namespace Nimbrel
