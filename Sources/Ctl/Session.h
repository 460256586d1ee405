#pragma once

#include "Store/Store.h"

#include <memory>

namespace Nimbrel::Ctl {

/// The catalogue and the settings, opened when a command first asks for them.
class Session {
 public:
  /// The Store, which lives as long as the session; an error when the catalogue cannot be opened.
  [[nodiscard]] Result<Store*> store();

 private:
  std::unique_ptr<Store> store_;
};

}  // namespace Nimbrel::Ctl
