#pragma once

#include "Platform/Crypto.h"

#include <memory>
#include <string>
#include <string_view>

// The library's own type.
struct evp_pkey_st;

namespace Nimbrel::Testing {

/// A key of the tests' own, with both halves, to sign downloads with.
class Ed25519Key {
 public:
  /// A new one each time.
  Ed25519Key();
  ~Ed25519Key();
  Ed25519Key(const Ed25519Key&) = delete;
  Ed25519Key& operator=(const Ed25519Key&) = delete;

  [[nodiscard]] Crypto::PublicKey publicKey() const;
  [[nodiscard]] Crypto::Signature sign(std::string_view bytes) const;

  /// The same as settings and feeds have them.
  [[nodiscard]] std::string publicKeyText() const;
  [[nodiscard]] std::string signatureText(std::string_view bytes) const;

 private:
  evp_pkey_st* key_;
};

/// Base64 of any bytes.
[[nodiscard]] std::string base64Of(std::string_view bytes);

}  // namespace Nimbrel::Testing
