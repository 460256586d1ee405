#pragma once

#include "Foundation/Result.h"
#include "Platform/Crypto.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// The form of a vault: a flat folder in which each picture is one file, named by the digest of its path. A vault file
/// is a nonce of 12 bytes, the sealed payload (see SyncEnvelope) and a tag of 16 bytes, nothing else.
namespace Nimbrel::Vault {

inline constexpr std::string_view extension = "nimbrelvault";

/// The shortest and the longest that a vault file can be.
inline constexpr std::uint64_t shortestFile = sizeof(Crypto::Nonce) + sizeof(Crypto::Tag);
inline constexpr std::uint64_t longestFile = shortestFile + Crypto::longestMessage;

/// So many characters, as people count them, a passphrase has at least.
inline constexpr std::size_t fewestCharacters = 8;

/// The key of a passphrase that is long enough, which is taken as it was typed.
[[nodiscard]] Result<Crypto::Key> key(std::string_view passphrase);

/// The name of the file that holds a picture; absent when the system cannot work out digests.
[[nodiscard]] std::optional<std::string> fileName(std::string_view relativePath);

/// Whether a file of that name belongs to a vault.
[[nodiscard]] bool isFileName(std::string_view name);

}  // namespace Nimbrel::Vault
