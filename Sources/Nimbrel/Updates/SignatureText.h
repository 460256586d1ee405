#pragma once

#include "Platform/Crypto.h"

#include <optional>
#include <string_view>

/// Keys and signatures as they stand in settings and feeds, in base64. Any thread, no state.
namespace Nimbrel {

/// Absent when that is not base64 of a key's length.
[[nodiscard]] std::optional<Crypto::PublicKey> publicKeyFrom(std::string_view text);

/// Absent when that is not base64 of a signature's length.
[[nodiscard]] std::optional<Crypto::Signature> signatureFrom(std::string_view text);

}  // namespace Nimbrel
