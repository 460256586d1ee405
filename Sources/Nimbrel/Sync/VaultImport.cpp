#include "Sync/VaultImport.h"

#include "Foundation/FilePath.h"
#include "Platform/Base64.h"
#include "Platform/FileMove.h"
#include "Platform/FileSystem.h"
#include "Sync/SyncErrors.h"
#include "Sync/Vault.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

/// Letters decoded at a time, a multiple of four.
constexpr std::size_t pieceSize = std::size_t{256} << 10;

std::vector<std::string> vaultFiles(const std::string& folder) {
  std::vector<std::string> paths;
  FileSystem::forEachEntry(folder, [&](std::string_view name, FileSystem::EntryKind) {
    if (Vault::isFileName(name)) paths.push_back(FilePath::join(folder, name));
  });
  std::ranges::sort(paths);
  return paths;
}

/// A file that is missing, or whose date cannot be told, is older than anything.
bool isNewer(Seconds modified, const std::string& target) {
  const auto local = FileSystem::modificationDate(target);
  return !local || modified > sinceReferenceDate(*local) + dateSlack;
}

}  // namespace

VaultImport::VaultImport(ConfinedFolder& library, ConfinedFolder& vault, const Crypto::Key& key)
    : library_(library), vault_(vault), opener_(key) {}

Result<std::size_t> VaultImport::run(SyncWatch& watch) {
  auto failure = takeAll(watch);
  auto unfinished = group_.finish();
  if (failure) return std::move(*failure);
  if (unfinished) return SyncErrors::cannotWriteToLibrary(*unfinished);
  return group_.placed();
}

std::optional<Error> VaultImport::takeAll(SyncWatch& watch) {
  const auto paths = vaultFiles(vault_.path());
  watch.expect(paths.size());
  for (const auto& path : paths) {
    if (auto reason = watch.reasonToEnd()) return reason;
    if (auto failure = take(path)) return failure;
    watch.pass();
  }
  return std::nullopt;
}

std::optional<Error> VaultImport::take(const std::string& path) {
  if (!vault_.holds(path)) return std::nullopt;
  const auto opened = opener_.open(path);
  if (!opened) return SyncErrors::cannotRead(FilePath::lastComponent(path), opened.error());
  const auto& envelope = opened.value();
  if (!envelope) return std::nullopt;
  const auto location = library_.location(envelope->relativePath);
  if (!location) return SyncErrors::cannotWrite(envelope->relativePath, location.error());
  const auto& target = location.value();
  if (!target) return std::nullopt;
  dates_.insert_or_assign(std::string(envelope->relativePath), envelope->modified);
  if (!isNewer(envelope->modified, *target)) return std::nullopt;
  return write(*envelope, *target);
}

std::optional<Error> VaultImport::write(const SyncEnvelope& envelope, const std::string& target) {
  const auto folder = std::string(FilePath::folder(target));
  if (const auto failure = FileMove::createFolders(folder)) return SyncErrors::cannotMakeFolder(folder, *failure);
  auto file = PendingFile::beside(target);
  if (!file) return SyncErrors::cannotWrite(envelope.relativePath, file.error());
  if (const auto failure = writeContent(envelope.data, file.value())) {
    return SyncErrors::cannotWrite(envelope.relativePath, *failure);
  }
  file.value().setModificationDate(momentAfterReferenceDate(envelope.modified));
  // By then another vault file for the same place may have come, or the user may have saved something newer.
  const auto isStillNewer = [target, modified = envelope.modified] { return isNewer(modified, target); };
  if (const auto failure = group_.add(std::move(file).value(), isStillNewer)) {
    return SyncErrors::cannotWriteToLibrary(*failure);
  }
  return std::nullopt;
}

std::optional<Error> VaultImport::writeContent(std::string_view base64, PendingFile& file) {
  if (!decoded_.makeRoom(pieceSize)) return Error{"There is not enough memory for it"};
  while (!base64.empty()) {
    const auto piece = base64.substr(0, pieceSize);
    const auto length = Base64::decode(piece, decoded_.bytes());
    if (!length) return Error{"It cannot be decoded"};
    if (auto failure = file.write({decoded_.bytes().data(), *length})) return failure;
    base64.remove_prefix(piece.size());
  }
  return std::nullopt;
}

}  // namespace Nimbrel
