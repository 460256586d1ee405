#pragma once

#include <memory>
#include <string>

struct evp_pkey_st;
struct x509_st;

namespace Nimbrel::Testing {

/// A certificate authority of a test's own, which nobody trusts who was not told of it.
class TestAuthority {
 public:
  TestAuthority();
  ~TestAuthority();
  TestAuthority(const TestAuthority&) = delete;
  TestAuthority& operator=(const TestAuthority&) = delete;

  /// Its own certificate, as PEM.
  [[nodiscard]] const std::string& certificate() const { return pem_; }

  struct Identity {
    std::string certificate;  ///< as PEM
    std::string key;          ///< as PEM
  };
  /// A server's, valid today, for the names given as OpenSSL writes them ("IP:127.0.0.1,DNS:localhost").
  [[nodiscard]] Identity issue(const std::string& names) const;

 private:
  evp_pkey_st* key_;
  x509_st* certificate_ = nullptr;
  std::string pem_;
};

}  // namespace Nimbrel::Testing
