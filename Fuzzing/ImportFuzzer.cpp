// A run over a vault with one genuine file: its path is the first line of the input, its content the rest. Whatever
// they are, nothing is written outside the library.

#include "Platform/Base64.h"
#include "Sync/EncryptedSync.h"
#include "Sync/SyncEnvelope.h"
#include "Sync/Vault.h"

#include <QTemporaryDir>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace Nimbrel {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view passphrase = "correct horse";
constexpr Seconds modified{700'000'000};

void demand(bool condition) {
  if (!condition) std::abort();
}

/// Library and vault, and a folder beside them to which links lead. Fast, and gone with the machine.
class Folders {
 public:
  Folders() { demand(temporary_.isValid()); }

  [[nodiscard]] fs::path top() const { return temporary_.path().toStdString(); }
  [[nodiscard]] fs::path library() const { return top() / "library"; }
  [[nodiscard]] fs::path vault() const { return top() / "vault"; }
  [[nodiscard]] fs::path outside() const { return top() / "outside"; }

  void makeAnew() const {
    for (const auto& folder : {library(), vault(), outside()}) fs::remove_all(folder);
    for (const auto& folder : {library() / "sub", vault(), outside()}) fs::create_directories(folder);
    fs::create_directory_symlink("../outside", library() / "out");
    fs::create_directory_symlink("sub", library() / "in");
    fs::create_symlink("../outside/file.png", library() / "file.png");
    fs::create_symlink("loop", library() / "loop");
  }
  void demandNothingOutside() const {
    demand(fs::is_empty(outside()));
    demand(std::distance(fs::directory_iterator(top()), {}) == 3);
  }

 private:
  QTemporaryDir temporary_{QStringLiteral("/dev/shm/nimbrel-fuzzing-XXXXXX")};
};

void addToVault(const fs::path& vault, std::string_view path, std::string_view content) {
  static const auto key = Vault::key(passphrase).value();
  static Crypto::Sealer sealer(key);
  std::string base64(Base64::encodingRoom(content.size()), '\0');
  base64.resize(Base64::encode(content, base64));
  auto payload = envelopeStart(path, modified) + base64 + std::string(envelopeEnd);
  const auto nonce = sealer.begin();
  demand(nonce && sealer.seal(payload));
  const auto tag = sealer.finish();
  demand(tag.has_value());
  std::ofstream file(vault / "a.nimbrelvault", std::ios::binary);
  file << std::string_view(nonce->data(), nonce->size()) << payload << std::string_view(tag->data(), tag->size());
  demand(bool(file << std::flush));
}

/// Of the only file that has come in.
std::string contentIn(const fs::path& library) {
  const auto isFile = [](const fs::directory_entry& entry) { return fs::is_regular_file(entry.symlink_status()); };
  const auto entries = fs::recursive_directory_iterator(library);
  demand(std::count_if(begin(entries), end(entries), isFile) == 1);
  const auto again = fs::recursive_directory_iterator(library);
  std::ifstream file(std::find_if(begin(again), end(again), isFile)->path(), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

}  // namespace Nimbrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Nimbrel;
  static const Folders folders;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const auto path = input.substr(0, input.find('\n'));
  const auto content = input.substr(std::min(size, path.size() + 1));
  folders.makeAnew();
  addToVault(folders.vault(), path, content);
  const auto result = EncryptedSync::run(folders.library(), folders.vault(), passphrase);
  folders.demandNothingOutside();
  if (!result || result.value().imported == 0) return 0;
  demand(contentIn(folders.library()) == content);
  const auto again = EncryptedSync::run(folders.library(), folders.vault(), passphrase);
  demand(again && again.value() == SyncResult());
  return 0;
}
