// The bytes of a vault file, as they come and, so that something gets past the tag, as a payload that we seal first.

#include "Sync/Vault.h"
#include "Sync/VaultOpener.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace Nimbrel {

namespace {

/// A file without a place on a disk.
class MemoryFile {
 public:
  MemoryFile() : file_(::memfd_create("vault", MFD_CLOEXEC)) {}

  void setContent(std::string_view bytes) const {
    if (::ftruncate(file_, 0) != 0 || ::pwrite(file_, bytes.data(), bytes.size(), 0) != std::ssize(bytes)) std::abort();
  }
  [[nodiscard]] std::string path() const { return "/proc/self/fd/" + std::to_string(file_); }

 private:
  int file_;
};

std::string sealed(const Crypto::Key& key, std::string payload) {
  Crypto::Sealer sealer(key);
  const auto nonce = sealer.begin();
  if (!nonce || !sealer.seal(payload)) std::abort();
  const auto tag = sealer.finish();
  if (!tag) std::abort();
  return std::string(nonce->data(), nonce->size()) + payload + std::string(tag->data(), tag->size());
}

void open(VaultOpener& opener, const MemoryFile& file, std::string_view bytes) {
  file.setContent(bytes);
  const auto opened = opener.open(file.path());
  if (!opened) std::abort();
  if (opened.value() && opened.value()->data.size() % 4 != 0) std::abort();
}

}  // namespace

}  // namespace Nimbrel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Nimbrel;
  static const MemoryFile file;
  static const auto key = Vault::key("correct horse").value();
  static VaultOpener opener(key);
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  open(opener, file, bytes);
  open(opener, file, sealed(key, bytes));
  return 0;
}
