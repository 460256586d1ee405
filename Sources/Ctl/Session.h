#pragma once

#include "TerminalPrompt.h"

#include "Store/Store.h"

#include <memory>
#include <optional>

namespace Nimbrel::Ctl {

/// The catalogue and the settings, opened when a command first asks for them.
class Session {
 public:
  /// The Store, which lives as long as the session; an error when the catalogue cannot be opened.
  [[nodiscard]] Result<Store*> store();

  /// Has the owner authenticate on the terminal, unless none of the shots is protected. Runs the event loop until that
  /// is decided. The reason when it was refused.
  [[nodiscard]] std::optional<Error> unlock(const ShotList& shots);

 private:
  std::unique_ptr<TerminalPrompt> prompt_;  ///< lives as long as the Store, which borrows it; null without a terminal
  std::unique_ptr<Store> store_;
};

}  // namespace Nimbrel::Ctl
