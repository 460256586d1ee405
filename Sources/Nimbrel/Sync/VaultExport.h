#pragma once

#include "Foundation/Result.h"
#include "Platform/Crypto.h"
#include "Platform/FileGroup.h"
#include "Sync/ConfinedFolder.h"
#include "Sync/SyncWatch.h"
#include "Sync/VaultDates.h"
#include "Sync/VaultSealer.h"

#include <cstddef>
#include <optional>
#include <string>

namespace Nimbrel {

/// The second half of a run: what is newer in the library goes into the vault. One thread.
class VaultExport {
 public:
  /// All is borrowed; both folders are there.
  VaultExport(ConfinedFolder& library, const ConfinedFolder& vault, const VaultDates& dates, const Crypto::Key& key);

  /// Looks at each picture of the library in turn. Returns how many vault files were written; what is whole by then is
  /// in place also when an error ends it.
  [[nodiscard]] Result<std::size_t> run(SyncWatch& watch);

 private:
  [[nodiscard]] std::optional<Error> sendAll(SyncWatch& watch);
  [[nodiscard]] std::optional<Error> send(const std::string& path);
  [[nodiscard]] bool isInVault(const std::string& path, const std::string& relativePath) const;
  [[nodiscard]] std::optional<Error> seal(const std::string& path, const std::string& relativePath);

  ConfinedFolder& library_;
  const ConfinedFolder& vault_;
  const VaultDates& dates_;
  VaultSealer sealer_;
  FileGroup group_;
};

}  // namespace Nimbrel
