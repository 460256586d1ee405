#include "Sync/EncryptedSync.h"

#include "Platform/FileMove.h"
#include "Platform/FolderLock.h"
#include "Sync/ConfinedFolder.h"
#include "Sync/SyncErrors.h"
#include "Sync/SyncWatch.h"
#include "Sync/Vault.h"
#include "Sync/VaultExport.h"
#include "Sync/VaultImport.h"

namespace Nimbrel::EncryptedSync {

Result<SyncResult> run(const std::string& library, const std::string& vault, std::string_view passphrase,
                       const Progress& progress, const std::stop_token& stop) {
  const auto key = Vault::key(passphrase);
  if (!key) return key.error();
  for (const auto& folder : {library, vault}) {
    if (const auto failure = FileMove::createFolders(folder)) return SyncErrors::cannotMakeFolder(folder, *failure);
  }
  const auto turn = FolderLock::take(library, stop);
  if (!turn) return SyncErrors::stopped();
  SyncWatch watch(progress, stop);
  ConfinedFolder ours(library);
  ConfinedFolder theirs(vault);
  VaultImport coming(ours, theirs, key.value());
  const auto imported = coming.run(watch);
  if (!imported) return imported.error();
  VaultExport going(ours, theirs, coming.dates(), key.value());
  const auto exported = going.run(watch);
  if (!exported) return exported.error();
  return SyncResult{.exported = exported.value(), .imported = imported.value()};
}

}  // namespace Nimbrel::EncryptedSync
