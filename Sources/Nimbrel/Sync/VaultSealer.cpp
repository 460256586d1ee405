#include "Sync/VaultSealer.h"

#include "Platform/Base64.h"
#include "Sync/SyncEnvelope.h"
#include "Sync/SyncErrors.h"

#include <algorithm>
#include <span>
#include <string>
#include <utility>

namespace Nimbrel {

namespace {

/// A multiple of three, as base64 wants it, and of a size that stays in the processor's own memory. Most pictures have
/// no more than one piece, and go out with one call.
constexpr std::size_t pieceSize = std::size_t{192} << 10;

}  // namespace

Result<VaultSealer::Outcome> VaultSealer::seal(FileReader& source, std::string_view relativePath, PendingFile& target) {
  const auto start = envelopeStart(relativePath, sinceReferenceDate(source.modified()));
  const auto room =
      sizeof(Crypto::Nonce) + start.size() + Base64::encodingRoom(pieceSize) + envelopeEnd.size() + sizeof(Crypto::Tag);
  const auto nonce = sealer_.begin();
  waiting_ = 0;
  if (!nonce || !plain_.makeRoom(pieceSize) || !output_.makeRoom(room)) return SyncErrors::cannotEncrypt(relativePath);
  append({nonce->data(), nonce->size()});
  if (!appendSealed(start)) return SyncErrors::cannotEncrypt(relativePath);
  if (auto failure = sealContent(source, relativePath, target)) return std::move(*failure);
  if (!appendSealed(envelopeEnd)) return SyncErrors::cannotEncrypt(relativePath);
  const auto tag = sealer_.finish();
  if (!tag) return SyncErrors::cannotEncrypt(relativePath);
  append({tag->data(), tag->size()});
  if (auto failure = flush(target)) return std::move(*failure);
  return source.hasChanged() ? Outcome::SourceChanged : Outcome::Sealed;
}

std::optional<Error> VaultSealer::sealContent(FileReader& source, std::string_view relativePath, PendingFile& target) {
  const auto piece = plain_.bytes().first(pieceSize);
  while (true) {
    const auto read = source.read(piece);
    if (!read) return SyncErrors::cannotRead(relativePath, read.error());
    if (!appendSealedBase64({piece.data(), read.value()})) return SyncErrors::cannotEncrypt(relativePath);
    if (read.value() < piece.size()) return std::nullopt;
    if (auto failure = flush(target)) return failure;
  }
}

void VaultSealer::append(std::string_view bytes) {
  std::ranges::copy(bytes, output_.bytes().subspan(waiting_).begin());
  waiting_ += bytes.size();
}

bool VaultSealer::appendSealed(std::string_view text) {
  const auto start = waiting_;
  append(text);
  return sealer_.seal(output_.bytes().subspan(start, text.size()));
}

bool VaultSealer::appendSealedBase64(std::string_view bytes) {
  const auto room = output_.bytes().subspan(waiting_);
  const auto letters = Base64::encode(bytes, room);
  waiting_ += letters;
  return sealer_.seal(room.first(letters));
}

std::optional<Error> VaultSealer::flush(PendingFile& target) {
  const auto failure = target.write({output_.bytes().data(), waiting_});
  waiting_ = 0;
  return failure ? std::optional(SyncErrors::cannotWriteToVault(*failure)) : std::nullopt;
}

}  // namespace Nimbrel
