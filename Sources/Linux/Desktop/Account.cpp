#include "Linux/Desktop/Account.h"

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace Nimbrel {

std::optional<Account> Account::ofRealUser() {
  constexpr std::size_t longestEntry = 1 << 20;
  passwd entry{};
  passwd* found = nullptr;
  for (std::vector<char> buffer(4096); buffer.size() <= longestEntry; buffer.resize(2 * buffer.size())) {
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE) continue;
    if (found == nullptr) return std::nullopt;
    return Account{found->pw_name, found->pw_dir};
  }
  return std::nullopt;
}

}  // namespace Nimbrel
