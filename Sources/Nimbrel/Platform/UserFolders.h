#pragma once

#include <optional>
#include <string>

namespace Nimbrel {

/// Where the user's files and ours lie. Absolute paths without a slash at their end; none need exist.
struct UserFolders {
  std::string home;
  /// Holds the catalogue.
  std::string applicationSupport;
  /// Holds the settings suites.
  std::string preferences;
  /// Holds what can be lost without harm.
  std::string caches;

  /// From the environment, with the account's home folder where it says nothing; absent when the account has none.
  [[nodiscard]] static std::optional<UserFolders> ofCurrentUser();
};

}  // namespace Nimbrel
