#include "Support/Ed25519Key.h"

#include <gtest/gtest.h>

#include <QByteArray>

#include <openssl/evp.h>

namespace Nimbrel::Testing {

namespace {

unsigned char* raw(char* bytes) { return reinterpret_cast<unsigned char*>(bytes); }
const unsigned char* raw(const char* bytes) { return reinterpret_cast<const unsigned char*>(bytes); }

}  // namespace

Ed25519Key::Ed25519Key() : key_(EVP_PKEY_Q_keygen(nullptr, nullptr, "ED25519")) { EXPECT_NE(key_, nullptr); }

Ed25519Key::~Ed25519Key() { EVP_PKEY_free(key_); }

Crypto::PublicKey Ed25519Key::publicKey() const {
  Crypto::PublicKey bytes{};
  auto length = bytes.size();
  EXPECT_EQ(EVP_PKEY_get_raw_public_key(key_, raw(bytes.data()), &length), 1);
  return bytes;
}

Crypto::Signature Ed25519Key::sign(std::string_view bytes) const {
  Crypto::Signature signature{};
  auto length = signature.size();
  auto* context = EVP_MD_CTX_new();
  EXPECT_EQ(EVP_DigestSignInit(context, nullptr, nullptr, nullptr, key_), 1);
  EXPECT_EQ(EVP_DigestSign(context, raw(signature.data()), &length, raw(bytes.data()), bytes.size()), 1);
  EVP_MD_CTX_free(context);
  return signature;
}

std::string Ed25519Key::publicKeyText() const {
  const auto bytes = publicKey();
  return base64Of({bytes.data(), bytes.size()});
}

std::string Ed25519Key::signatureText(std::string_view bytes) const {
  const auto signature = sign(bytes);
  return base64Of({signature.data(), signature.size()});
}

std::string base64Of(std::string_view bytes) {
  return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())).toBase64().toStdString();
}

}  // namespace Nimbrel::Testing
