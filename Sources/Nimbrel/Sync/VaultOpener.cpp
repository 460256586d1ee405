#include "Sync/VaultOpener.h"

#include "Sync/Vault.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace Nimbrel {

namespace {

/// What was read is opened while the processor still has it at hand.
constexpr std::size_t pieceSize = std::size_t{256} << 10;

// What comes of a file that is passed over.
constexpr std::optional<SyncEnvelope> noEnvelope;
constexpr std::optional<std::span<char>> noPayload;

}  // namespace

Result<std::optional<SyncEnvelope>> VaultOpener::open(const std::string& path) {
  auto file = FileReader::open(path);
  if (!file) return file.error();
  const auto size = file.value().size();
  if (size < Vault::shortestFile || size > Vault::longestFile) return noEnvelope;
  const auto opened = payload(file.value());
  if (!opened) return opened.error();
  const auto& genuine = opened.value();
  return genuine ? readEnvelope(*genuine) : noEnvelope;
}

Result<std::optional<std::span<char>>> VaultOpener::payload(FileReader& file) {
  const auto size = static_cast<std::size_t>(file.size() - Vault::shortestFile);
  if (!buffer_.makeRoom(size)) return Error{"There is not enough memory for it"};
  const auto whole = buffer_.bytes().first(size);

  Crypto::Nonce nonce;
  const auto begun = file.read(nonce);
  if (!begun) return begun.error();
  // A file that has become shorter meanwhile, here as below.
  if (begun.value() < nonce.size() || !opener_.begin(nonce)) return noPayload;
  for (auto left = whole; !left.empty();) {
    const auto piece = left.first(std::min(left.size(), pieceSize));
    const auto read = file.read(piece);
    if (!read) return read.error();
    if (read.value() < piece.size() || !opener_.open(piece)) return noPayload;
    left = left.subspan(piece.size());
  }
  Crypto::Tag tag;
  const auto read = file.read(tag);
  if (!read) return read.error();
  return read.value() == tag.size() && opener_.isGenuine(tag) ? std::optional(whole) : noPayload;
}

}  // namespace Nimbrel
