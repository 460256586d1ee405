#include "Platform/UserFolders.h"

#include "Foundation/FilePath.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace Nimbrel {

namespace {

/// Relative values are to be ignored, as the standard for these variables has it.
std::optional<std::string> absolutePathFrom(const char* value) {
  if (value == nullptr || value[0] != '/') return std::nullopt;
  return FilePath::withoutTrailingSlashes(value);
}

std::optional<std::string> homeOfAccount() {
  constexpr std::size_t longestEntry = 1 << 20;
  passwd entry{};
  passwd* found = nullptr;
  for (std::vector<char> buffer(4096); buffer.size() <= longestEntry; buffer.resize(2 * buffer.size())) {
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE) continue;
    if (found == nullptr) return std::nullopt;
    return absolutePathFrom(found->pw_dir);
  }
  return std::nullopt;
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
                     ourFolder("XDG_CONFIG_HOME", *home, ".config")};
}

}  // namespace Nimbrel
