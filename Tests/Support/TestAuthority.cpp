#include "Support/TestAuthority.h"

#include <gtest/gtest.h>

#include <openssl/bio.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <array>
#include <utility>
#include <vector>

namespace Nimbrel::Testing {

namespace {

constexpr long hour = 3600;
constexpr long version3 = 2;

using Extensions = std::vector<std::pair<int, std::string>>;

EVP_PKEY* newKey() {
  auto* key = EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256");
  EXPECT_NE(key, nullptr);
  return key;
}

/// All that has been written to it, which is given back.
std::string contentOf(BIO* memory) {
  std::string text;
  constexpr int room = 4096;
  std::array<char, room> piece{};
  for (int length = 0; (length = BIO_read(memory, piece.data(), room)) > 0;) {
    text.append(piece.data(), static_cast<std::size_t>(length));
  }
  BIO_free(memory);
  return text;
}

std::string pemOf(X509* certificate) {
  auto* memory = BIO_new(BIO_s_mem());
  EXPECT_EQ(PEM_write_bio_X509(memory, certificate), 1);
  return contentOf(memory);
}

std::string pemOf(EVP_PKEY* key) {
  auto* memory = BIO_new(BIO_s_mem());
  EXPECT_EQ(PEM_write_bio_PrivateKey(memory, key, nullptr, nullptr, 0, nullptr, nullptr), 1);
  return contentOf(memory);
}

void addExtensions(X509* certificate, X509* issuer, const Extensions& extensions) {
  X509V3_CTX context{};
  X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
  for (const auto& [kind, value] : extensions) {
    auto* extension = X509V3_EXT_conf_nid(nullptr, &context, kind, value.c_str());
    EXPECT_NE(extension, nullptr) << value;
    EXPECT_EQ(X509_add_ext(certificate, extension, -1), 1);
    X509_EXTENSION_free(extension);
  }
}

/// Signed by the issuer, or by itself where that is null.
X509* makeCertificate(const std::string& name, EVP_PKEY* key, X509* issuer, EVP_PKEY* issuerKey,
                      const Extensions& extensions) {
  auto* certificate = X509_new();
  if (issuer == nullptr) issuer = certificate;
  X509_set_version(certificate, version3);
  ASN1_INTEGER_set(X509_get_serialNumber(certificate), issuer == certificate ? 1 : 2);
  X509_gmtime_adj(X509_getm_notBefore(certificate), -hour);
  X509_gmtime_adj(X509_getm_notAfter(certificate), 24 * hour);
  X509_set_pubkey(certificate, key);
  const auto* letters = reinterpret_cast<const unsigned char*>(name.c_str());
  X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate), "CN", MBSTRING_UTF8, letters, -1, -1, 0);
  X509_set_issuer_name(certificate, X509_get_subject_name(issuer));
  addExtensions(certificate, issuer, extensions);
  EXPECT_GT(X509_sign(certificate, issuerKey, EVP_sha256()), 0);
  return certificate;
}

}  // namespace

TestAuthority::TestAuthority() : key_(newKey()) {
  certificate_ = makeCertificate("Authority of a test", key_, nullptr, key_,
                                 {{NID_basic_constraints, "critical,CA:TRUE"},
                                  {NID_key_usage, "critical,keyCertSign,cRLSign"},
                                  {NID_subject_key_identifier, "hash"}});
  pem_ = pemOf(certificate_);
}

TestAuthority::~TestAuthority() {
  X509_free(certificate_);
  EVP_PKEY_free(key_);
}

TestAuthority::Identity TestAuthority::issue(const std::string& names) const {
  auto* key = newKey();
  auto* certificate = makeCertificate("Server of a test", key, certificate_, key_,
                                      {{NID_basic_constraints, "critical,CA:FALSE"},
                                       {NID_key_usage, "critical,digitalSignature"},
                                       {NID_ext_key_usage, "serverAuth"},
                                       {NID_subject_alt_name, names}});
  Identity identity{.certificate = pemOf(certificate), .key = pemOf(key)};
  X509_free(certificate);
  EVP_PKEY_free(key);
  return identity;
}

}  // namespace Nimbrel::Testing
