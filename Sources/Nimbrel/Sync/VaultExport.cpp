#include "Sync/VaultExport.h"

#include "Foundation/FilePath.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"
#include "Sync/SyncEnvelope.h"
#include "Sync/SyncErrors.h"
#include "Sync/Vault.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

/// All that is named like a picture, be it a folder: reading it will tell.
std::vector<std::string> pictures(const std::string& folder) {
  std::vector<std::string> paths;
  FileSystem::forEachEntryBelow(folder, [&](const std::string& path, FileSystem::EntryKind) {
    if (ShotFile::hasImageType(path)) paths.push_back(path);
  });
  std::ranges::sort(paths);
  return paths;
}

}  // namespace

VaultExport::VaultExport(ConfinedFolder& library, const ConfinedFolder& vault, const VaultDates& dates,
                         const Crypto::Key& key)
    : library_(library), vault_(vault), dates_(dates), sealer_(key) {}

Result<std::size_t> VaultExport::run(SyncWatch& watch) {
  auto failure = sendAll(watch);
  auto unfinished = group_.finish();
  if (failure) return std::move(*failure);
  if (unfinished) return SyncErrors::cannotWriteToVault(*unfinished);
  return group_.placed();
}

std::optional<Error> VaultExport::sendAll(SyncWatch& watch) {
  const auto paths = pictures(library_.path());
  watch.expect(paths.size());
  for (const auto& path : paths) {
    if (auto reason = watch.reasonToEnd()) return reason;
    if (auto failure = send(path)) return failure;
    watch.pass();
  }
  return std::nullopt;
}

std::optional<Error> VaultExport::send(const std::string& path) {
  const auto relativePath = library_.relativePath(path);
  if (!relativePath || !library_.holds(path) || isInVault(path, *relativePath)) return std::nullopt;
  return seal(path, *relativePath);
}

bool VaultExport::isInVault(const std::string& path, const std::string& relativePath) const {
  const auto known = dates_.find(relativePath);
  if (known == dates_.end()) return false;
  const auto local = FileSystem::modificationDate(path);
  return local && known->second >= sinceReferenceDate(*local) - dateSlack;
}

std::optional<Error> VaultExport::seal(const std::string& path, const std::string& relativePath) {
  auto picture = FileReader::open(path);
  if (!picture) return SyncErrors::cannotRead(relativePath, picture.error());
  const auto name = Vault::fileName(relativePath);
  if (!name) return SyncErrors::cannotEncrypt(relativePath);
  auto file = PendingFile::beside(FilePath::join(vault_.path(), *name));
  if (!file) return SyncErrors::cannotWriteToVault(file.error());
  const auto outcome = sealer_.seal(picture.value(), relativePath, file.value());
  if (!outcome) return outcome.error();
  // What it has become goes out with the next run.
  if (outcome.value() == VaultSealer::Outcome::SourceChanged) return std::nullopt;
  const auto failure = group_.add(std::move(file).value());
  return failure ? std::optional(SyncErrors::cannotWriteToVault(*failure)) : std::nullopt;
}

}  // namespace Nimbrel
