#include "Foundation/Wipe.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <string>
#include <utility>

namespace Nimbrel {

void Store::syncEncrypted(std::string passphrase) {
  const auto vault = settings_.syncFolder();
  if (vault) {
    setStatus("Syncing encrypted library…");
    sync_.start(settings_.libraryFolder(), *vault, passphrase);
  } else {
    setStatus("Choose a sync folder first");
  }
  wipe(passphrase);
  if (!vault) Q_EMIT syncEnded();
}

void Store::endSync(const Result<SyncResult>& result) {
  {
    const Operation operation(*this);
    if (result) {
      scan();
      setStatus("Encrypted sync complete · " + std::to_string(result.value().exported) + " sent · " +
                std::to_string(result.value().imported) + " received");
    } else {
      setStatus("Sync failed: " + result.error().message);
    }
  }
  Q_EMIT syncEnded();
}

}  // namespace Nimbrel
