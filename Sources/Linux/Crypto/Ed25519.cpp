#include "Linux/Crypto/UnsignedBytes.h"
#include "Platform/Crypto.h"

#include <openssl/evp.h>

#include <memory>

namespace Nimbrel::Crypto {

namespace {

struct Free {
  void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
  void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

}  // namespace

bool isSigned(std::string_view bytes, const Signature& signature, const PublicKey& key) {
  const auto* raw = unsignedBytes(key.data());
  const std::unique_ptr<EVP_PKEY, Free> verifier(
      EVP_PKEY_new_raw_public_key(EVP_PKEY_ED25519, nullptr, raw, key.size()));
  const std::unique_ptr<EVP_MD_CTX, Free> context(EVP_MD_CTX_new());
  if (!verifier || !context) return false;
  if (EVP_DigestVerifyInit(context.get(), nullptr, nullptr, nullptr, verifier.get()) != 1) return false;
  return EVP_DigestVerify(context.get(), unsignedBytes(signature.data()), signature.size(), unsignedBytes(bytes.data()),
                          bytes.size()) == 1;
}

}  // namespace Nimbrel::Crypto
