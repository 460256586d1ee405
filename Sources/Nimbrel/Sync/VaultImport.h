#pragma once

#include "Foundation/Result.h"
#include "Foundation/SecretBuffer.h"
#include "Platform/Crypto.h"
#include "Platform/FileGroup.h"
#include "Sync/ConfinedFolder.h"
#include "Sync/SyncEnvelope.h"
#include "Sync/SyncWatch.h"
#include "Sync/VaultDates.h"
#include "Sync/VaultOpener.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace Nimbrel {

/// The first half of a run: what is newer in the vault comes into the library. One thread.
class VaultImport {
 public:
  /// All is borrowed; both folders are there.
  VaultImport(ConfinedFolder& library, ConfinedFolder& vault, const Crypto::Key& key);

  /// Looks at each vault file in turn. Returns how many files were written; what is whole by then is in place also
  /// when an error ends it.
  [[nodiscard]] Result<std::size_t> run(SyncWatch& watch);

  /// Of all that could be opened.
  [[nodiscard]] const VaultDates& dates() const { return dates_; }

 private:
  [[nodiscard]] std::optional<Error> takeAll(SyncWatch& watch);
  [[nodiscard]] std::optional<Error> take(const std::string& path);
  [[nodiscard]] std::optional<Error> write(const SyncEnvelope& envelope, const std::string& target);
  [[nodiscard]] std::optional<Error> writeContent(std::string_view base64, PendingFile& file);

  ConfinedFolder& library_;
  ConfinedFolder& vault_;
  VaultOpener opener_;
  VaultDates dates_;
  FileGroup group_;
  SecretBuffer decoded_;
};

}  // namespace Nimbrel
