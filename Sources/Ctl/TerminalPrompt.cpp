#include "TerminalPrompt.h"

#include <utility>

namespace Nimbrel::Ctl {

std::unique_ptr<TerminalPrompt> TerminalPrompt::open() {
  auto terminal = Terminal::open();
  return terminal ? std::make_unique<TerminalPrompt>(std::move(terminal)) : nullptr;
}

TerminalPrompt::TerminalPrompt(std::unique_ptr<Terminal> terminal) : terminal_(std::move(terminal)) {}

void TerminalPrompt::ask(const std::string& question, Echo echo, Answer answer) {
  terminal_->ask(question, echo == Echo::On ? Terminal::Echo::On : Terminal::Echo::Off, std::move(answer));
}

void TerminalPrompt::show(const std::string& message) { terminal_->write(message + "\n"); }

}  // namespace Nimbrel::Ctl
