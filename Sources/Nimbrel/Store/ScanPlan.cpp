#include "Store/ScanPlan.h"

#include "Foundation/FilePath.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"
#include "Platform/MetadataStore.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <unordered_set>

namespace Nimbrel {

namespace {

/// How the names of screenshots begin where nothing better tells them.
constexpr std::array<std::string_view, 4> screenshotNames{"Screenshot", "Screen Shot", "CleanShot",
                                                          "Simulator Screenshot"};

void listSource(const std::string& folder, std::vector<std::string>& files) {
  const auto first = files.size();
  FileSystem::forEachEntry(folder, [&](std::string_view name, FileSystem::EntryKind kind) {
    if (kind == FileSystem::EntryKind::File && ShotFile::hasImageType(name)) {
      files.push_back(FilePath::join(folder, name));
    }
  });
  std::sort(files.begin() + static_cast<std::ptrdiff_t>(first), files.end());
}

std::vector<std::string> unknownOf(const std::vector<std::string>& files, const PathSet& indexed,
                                   const PathSet& ignored) {
  std::vector<std::string> unknown;
  for (const auto& file : files) {
    if (!indexed.contains(file) && !ignored.contains(file)) unknown.push_back(file);
  }
  return unknown;
}

}  // namespace

DiskListing listFolders(const std::vector<std::string>& sources, const std::string& libraryRoot) {
  DiskListing listing;
  for (const auto& source : sources) listSource(source, listing.sourceFiles);
  FileSystem::forEachFileBelow(libraryRoot, [&](const std::string& path) {
    if (ShotFile::hasImageType(path)) listing.libraryFiles.push_back(path);
  });
  return listing;
}

ScanPlan planScan(const DiskListing& listing, const PathSet& indexed, const PathSet& ignored, const ShotList& shots) {
  ScanPlan plan;
  plan.newInSources = unknownOf(listing.sourceFiles, indexed, ignored);
  plan.newInLibrary = unknownOf(listing.libraryFiles, indexed, ignored);
  // The disk lists files in no order; row ids should follow one.
  std::ranges::sort(plan.newInLibrary);

  std::unordered_set<std::string_view> seen;
  seen.reserve(listing.sourceFiles.size() + listing.libraryFiles.size());
  seen.insert(listing.sourceFiles.begin(), listing.sourceFiles.end());
  seen.insert(listing.libraryFiles.begin(), listing.libraryFiles.end());
  std::ranges::copy_if(shots, std::back_inserter(plan.unseen),
                       [&](const ShotPtr& shot) { return !seen.contains(shot->path) && indexed.contains(shot->path); });
  return plan;
}

bool isScreenshot(const std::string& path) {
  if (const auto said = MetadataStore::isScreenCapture(path)) return *said;
  const auto name = FilePath::lastComponent(path);
  return std::ranges::any_of(screenshotNames, [&](std::string_view start) { return name.starts_with(start); });
}

}  // namespace Nimbrel
