#pragma once

#include "Sync/EncryptedSync.h"
#include "Sync/Vault.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <QByteArray>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Nimbrel::Testing {

inline constexpr std::string_view passphrase = "correct horse";
/// A moment, and what envelopes write for it.
inline constexpr double someDate = 1'700'000'000;
inline constexpr double someReferenceDate = someDate - 978'307'200;

[[nodiscard]] inline Crypto::Key keyOf(std::string_view secret) { return Vault::key(secret).value(); }

/// The bytes of a vault file with this payload, whatever that is.
[[nodiscard]] inline std::string sealed(std::string payload, std::string_view secret = passphrase) {
  Crypto::Sealer sealer(keyOf(secret));
  const auto nonce = sealer.begin().value();
  EXPECT_TRUE(sealer.seal(payload));
  const auto tag = sealer.finish().value();
  return std::string(nonce.data(), nonce.size()) + payload + std::string(tag.data(), tag.size());
}

/// What is in a vault file; absent when it does not open.
[[nodiscard]] inline std::optional<std::string> unsealed(std::string file, std::string_view secret = passphrase) {
  if (file.size() < Vault::shortestFile) return std::nullopt;
  Crypto::Nonce nonce;
  Crypto::Tag tag;
  std::copy_n(file.begin(), nonce.size(), nonce.begin());
  std::copy_n(file.end() - tag.size(), tag.size(), tag.begin());
  auto payload = file.substr(nonce.size(), file.size() - Vault::shortestFile);
  Crypto::Opener opener(keyOf(secret));
  EXPECT_TRUE(opener.begin(nonce));
  EXPECT_TRUE(opener.open(payload));
  return opener.isGenuine(tag) ? std::optional(payload) : std::nullopt;
}

[[nodiscard]] inline std::string base64(std::string_view bytes) {
  return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())).toBase64().toStdString();
}

/// A payload; the path as JSON writes it, without its quotes, and the date as a number.
[[nodiscard]] inline std::string payload(std::string_view path, std::string_view modified, std::string_view content) {
  return "{\"relativePath\":\"" + std::string(path) + "\",\"modified\":" + std::string(modified) + ",\"data\":\"" +
         base64(content) + "\"}";
}

/// A library and a vault, both there and empty.
class SyncFixture : public ::testing::Test {
 protected:
  SyncFixture() {
    folder_.makeFolder("library");
    folder_.makeFolder("vault");
  }
  void TearDown() override {
    // Qt does not remove names that are not valid UTF-8.
    std::error_code error;
    std::filesystem::remove_all(folder_.path(), error);
  }

  [[nodiscard]] std::string library(std::string_view name = {}) const { return in("library", name); }
  [[nodiscard]] std::string vault(std::string_view name = {}) const { return in("vault", name); }

  /// "2 sent, 1 received", or the error.
  [[nodiscard]] std::string run(std::string_view secret = passphrase) const {
    const auto result = EncryptedSync::run(library(), vault(), secret);
    if (!result) return result.error().message;
    return std::to_string(result.value().exported) + " sent, " + std::to_string(result.value().imported) + " received";
  }

  /// Puts a file into the library; returns its path.
  std::string addPicture(std::string_view name, std::string_view content = "picture", double date = someDate) const {
    auto path = folder_.write("library/" + std::string(name), content);
    setModificationTime(path, date);
    return path;
  }

  /// Puts a file into the vault, under the name of its path or another.
  void addToVault(std::string_view bytes, std::string_view name = "0123.nimbrelvault") const {
    folder_.write("vault/" + std::string(name), bytes);
  }
  void addEnvelope(std::string_view path, double modified, std::string_view content) const {
    addToVault(sealed(payload(path, std::to_string(modified), content)), Vault::fileName(path).value());
  }

  /// An envelope of an old file whose path is written like that in JSON.
  void addPath(std::string_view path) const { addToVault(sealed(payload(path, "1000", "forged"))); }

  void link(const std::string& target, const std::string& path) const { std::filesystem::create_symlink(target, path); }

  /// The payload that the vault holds for a path; fails the test when there is none.
  [[nodiscard]] std::string inVault(std::string_view path, std::string_view secret = passphrase) const {
    const auto opened = unsealed(contentOf(vault(Vault::fileName(path).value())), secret);
    EXPECT_TRUE(opened.has_value()) << path;
    return opened.value_or("");
  }

  /// All files of a folder below its top, what is hidden as well, with their contents.
  [[nodiscard]] static std::map<std::string, std::string> filesIn(const std::string& folder) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
      if (entry.is_regular_file()) {
        files.emplace(entry.path().lexically_relative(folder), contentOf(entry.path()));
      }
    }
    return files;
  }

  TemporaryFolder folder_;

 private:
  [[nodiscard]] std::string in(const std::string& folder, std::string_view name) const {
    return folder_.path(name.empty() ? folder : folder + "/" + std::string(name));
  }
};

}  // namespace Nimbrel::Testing
