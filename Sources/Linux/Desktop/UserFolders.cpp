#include "Platform/UserFolders.h"

#include "Foundation/FilePath.h"
#include "Linux/Desktop/Account.h"

#include <cstdlib>
#include <string_view>

namespace Nimbrel {

namespace {

/// Relative values are to be ignored, as the standard for these variables has it.
std::optional<std::string> absolutePathFrom(const char* value) {
  if (value == nullptr || value[0] != '/') return std::nullopt;
  return FilePath::withoutTrailingSlashes(value);
}

std::optional<std::string> homeOfAccount() {
  const auto account = Account::ofRealUser();
  return account ? absolutePathFrom(account->home.c_str()) : std::nullopt;
}

/// Our folder in the one that the variable names.
std::string ourFolder(const char* variable, const std::string& home, std::string_view placeInHome) {
  const auto base = absolutePathFrom(std::getenv(variable));
  return FilePath::join(base ? *base : FilePath::join(home, placeInHome), "Nimbrel");
}

}  // namespace

std::optional<UserFolders> UserFolders::ofCurrentUser() {
  auto home = absolutePathFrom(std::getenv("HOME"));
  if (!home) home = homeOfAccount();
  if (!home) return std::nullopt;
  return UserFolders{*home, ourFolder("XDG_DATA_HOME", *home, ".local/share"),
                     ourFolder("XDG_CONFIG_HOME", *home, ".config"), ourFolder("XDG_CACHE_HOME", *home, ".cache")};
}

}  // namespace Nimbrel
