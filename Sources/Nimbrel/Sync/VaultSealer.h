#pragma once

#include "Foundation/Result.h"
#include "Foundation/SecretBuffer.h"
#include "Platform/Crypto.h"
#include "Platform/FileGroup.h"
#include "Platform/FileReader.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace Nimbrel {

/// Seals files for the vault, one after the other, piece by piece: the memory that it takes does not depend on their
/// size. One thread.
class VaultSealer {
 public:
  explicit VaultSealer(const Crypto::Key& key) : sealer_(key) {}

  enum class Outcome {
    Sealed,
    SourceChanged,  ///< somebody has written to the source since it was opened, so nobody knows what was read
  };
  /// Reads a file from its beginning and writes the vault file that it becomes, which bears this path. Unless that is
  /// sealed in the end, the target is of no use.
  [[nodiscard]] Result<Outcome> seal(FileReader& source, std::string_view relativePath, PendingFile& target);

 private:
  [[nodiscard]] std::optional<Error> sealContent(FileReader& source, std::string_view relativePath,
                                                 PendingFile& target);
  void append(std::string_view bytes);
  [[nodiscard]] bool appendSealed(std::string_view text);
  [[nodiscard]] bool appendSealedBase64(std::string_view bytes);
  [[nodiscard]] std::optional<Error> flush(PendingFile& target);

  Crypto::Sealer sealer_;
  SecretBuffer plain_;
  SecretBuffer output_;      ///< what the target gets next
  std::size_t waiting_ = 0;  ///< bytes of that
};

}  // namespace Nimbrel
