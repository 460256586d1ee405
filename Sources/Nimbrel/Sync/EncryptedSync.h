#pragma once

#include "Foundation/Result.h"

#include <cstddef>
#include <functional>
#include <stop_token>
#include <string>
#include <string_view>

namespace Nimbrel {

/// What a run has moved.
struct SyncResult {
  std::size_t exported = 0;  ///< vault files written
  std::size_t imported = 0;  ///< library files written

  bool operator==(const SyncResult&) const = default;
};

/// Exchanges the pictures of the library with a folder of encrypted files. Any thread but the main one.
namespace EncryptedSync {

/// Files done and files in all, as far as that is known; on the thread of the run.
using Progress = std::function<void(std::size_t done, std::size_t all)>;

/// One merge both ways: what is newer in the vault by more than a second comes in, then what is newer in the library
/// goes out. Nothing is ever removed on either side. Both folders are made if they are not there. Vault files that this
/// passphrase does not open are passed over. The first file that cannot be read or written ends the run with an error
/// in words for people; what was written until then stays. Every file is whole at any moment. When `stop` is asked for,
/// the run ends with an error between two files.
///
/// A passphrase has at least eight characters as people count them; key and payloads are wiped from memory in the end.
[[nodiscard]] Result<SyncResult> run(const std::string& library, const std::string& vault, std::string_view passphrase,
                                     const Progress& progress = {}, const std::stop_token& stop = {});

}  // namespace EncryptedSync

}  // namespace Nimbrel
