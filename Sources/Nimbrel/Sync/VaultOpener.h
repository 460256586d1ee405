#pragma once

#include "Foundation/Result.h"
#include "Foundation/SecretBuffer.h"
#include "Platform/Crypto.h"
#include "Platform/FileReader.h"
#include "Sync/SyncEnvelope.h"

#include <optional>
#include <string>

namespace Nimbrel {

/// Opens vault files, one after the other. A file is read once and opened where it was read to, in the memory of one
/// file; nothing of it is looked at before its tag was found to be right. One thread.
class VaultOpener {
 public:
  explicit VaultOpener(const Crypto::Key& key) : opener_(key) {}

  /// The envelope in a vault file; it borrows from this object until the next call. Absent when this key does not
  /// open the file, or what is in it is no envelope. An error when it cannot be read, or not be held in memory.
  [[nodiscard]] Result<std::optional<SyncEnvelope>> open(const std::string& path);

 private:
  /// Reads and opens the whole payload; absent when it is not genuine.
  [[nodiscard]] Result<std::optional<std::span<char>>> payload(FileReader& file);

  Crypto::Opener opener_;
  SecretBuffer buffer_;
};

}  // namespace Nimbrel
