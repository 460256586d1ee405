#include "Platform/Base64.h"

#include "Linux/Crypto/UnsignedBytes.h"

#include <openssl/evp.h>

namespace Nimbrel::Base64 {

namespace {

/// The library takes padding for zero bytes.
std::size_t paddingOf(std::string_view letters) {
  if (letters.ends_with("==")) return 2;
  return letters.ends_with('=') ? 1 : 0;
}

}  // namespace

std::size_t encode(std::string_view bytes, std::span<char> room) {
  const auto* source = unsignedBytes(bytes.data());
  return static_cast<std::size_t>(EVP_EncodeBlock(unsignedBytes(room.data()), source, static_cast<int>(bytes.size())));
}

std::optional<std::size_t> decode(std::string_view letters, std::span<char> room) {
  const auto* source = unsignedBytes(letters.data());
  const auto length = EVP_DecodeBlock(unsignedBytes(room.data()), source, static_cast<int>(letters.size()));
  if (length < 0) return std::nullopt;
  return static_cast<std::size_t>(length) - paddingOf(letters);
}

}  // namespace Nimbrel::Base64
