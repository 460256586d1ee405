#pragma once

#include <optional>
#include <string>

namespace Nimbrel {

/// An entry of the system's list of users.
struct Account {
  std::string name;
  std::string home;

  /// That of the user whose process this is, whatever the environment says; absent when there is none.
  [[nodiscard]] static std::optional<Account> ofRealUser();
};

}  // namespace Nimbrel
