#include "Sync/Vault.h"

#include "Foundation/FilePath.h"
#include "Foundation/Text.h"

namespace Nimbrel::Vault {

namespace {

std::string hexadecimal(std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += digits[value >> 4];
    text += digits[value & 0x0F];
  }
  return text;
}

}  // namespace

Result<Crypto::Key> key(std::string_view passphrase) {
  if (Text::characterCount(passphrase) < fewestCharacters) {
    return Error{"Use a passphrase with at least 8 characters"};
  }
  auto key = Crypto::Key::digestOf(passphrase);
  if (!key) return Error{"The key cannot be worked out"};
  return *key;
}

std::optional<std::string> fileName(std::string_view relativePath) {
  const auto digest = Crypto::sha256(relativePath);
  if (!digest) return std::nullopt;
  return hexadecimal({digest->data(), digest->size()}) + "." + std::string(extension);
}

bool isFileName(std::string_view name) { return FilePath::extension(name) == extension; }

}  // namespace Nimbrel::Vault
