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

/// Exchanges the pictures of the library with a folder of encrypted files, the vault. Any thread but the main one.
namespace EncryptedSync {

/// Files done and files in all, as far as that is known: those of the library come in once the vault is through. On the
/// thread of the run.
using Progress = std::function<void(std::size_t done, std::size_t all)>;

/// One merge both ways: what is newer in the vault by more than a second comes in, then what is newer in the library
/// goes out, pictures alone. Nothing is ever removed on either side. Both folders are made if they are not there. The
/// first file that cannot be read or written ends the run with an error in words for people; what was written until
/// then stays. When `stop` is asked for, the run ends with an error between two files, or while it waits for its turn.
///
/// Passed over without a word: vault files that this passphrase does not open or that hold no envelope; envelopes whose
/// path is empty, begins with a slash, has a piece "..", or holds a zero; pictures whose path is not UTF-8, which an
/// envelope cannot hold; and whatever leads through a link out of the library, out of the vault, or to nothing. A link
/// that stays inside is read through, and gives way to a file where one comes in.
///
/// Every file is whole at any moment, also after a crash (see FileGroup). Runs over the same library take turns, in one
/// process or several (see FolderLock). Where they cannot, and where other libraries or machines use the vault at the
/// same time, nobody sees half a file all the same: of two that write the same one the last stays, and the next run
/// makes up for what either missed. A picture that is written to while it is read is left to the next run as well.
///
/// A passphrase has at least eight characters as people count them. The key and the contents of files are wiped from
/// memory in the end; the passphrase is not copied. The memory needed is that of the largest vault file and a megabyte.
[[nodiscard]] Result<SyncResult> run(const std::string& library, const std::string& vault, std::string_view passphrase,
                                     const Progress& progress = {}, const std::stop_token& stop = {});

}  // namespace EncryptedSync

}  // namespace Nimbrel
