#pragma once

#include "Platform/OwnerAuthentication.h"
#include "Platform/Terminal.h"

#include <memory>
#include <string>

namespace Nimbrel::Ctl {

/// Puts the questions of an authentication on the terminal.
class TerminalPrompt final : public CredentialPrompt {
 public:
  /// Null when the process has no terminal.
  [[nodiscard]] static std::unique_ptr<TerminalPrompt> open();
  explicit TerminalPrompt(std::unique_ptr<Terminal> terminal);

  void ask(const std::string& question, Echo echo, Answer answer) override;
  void show(const std::string& message) override;
  void end() override {}

 private:
  std::unique_ptr<Terminal> terminal_;
};

}  // namespace Nimbrel::Ctl
