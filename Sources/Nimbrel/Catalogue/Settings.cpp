#include "Catalogue/Settings.h"

#include "Foundation/FilePath.h"
#include "Foundation/Formats.h"
#include "Platform/FileSystem.h"

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr std::string_view libraryBelowHome = "Pictures/Nimbrel";
constexpr const char* systemScreenshotSuite = "com.apple.screencapture";

bool isCaptureDelay(const int& seconds) { return seconds == 0 || seconds == 3 || seconds == 10; }

std::optional<std::string> systemScreenshotLocation(const UserFolders& folders, const ScreenshotTool& screenshotTool) {
  const Defaults suite(folders.preferences, systemScreenshotSuite);
  if (!FileSystem::exists(suite.filePath().toStdString())) return screenshotTool.configuredFolder();
  return PreferenceCodec<std::string>::decode(suite.value(QStringLiteral("location")));
}

}  // namespace

Settings::Settings(Defaults& defaults, const UserFolders& folders, const ScreenshotTool& screenshotTool,
                   QObject* parent)
    : QObject(parent),
      group_{defaults, [this](const QString& key) { Q_EMIT changed(key); }},
      folders_(folders),
      screenshotTool_(screenshotTool),
      libraryRoot(group_, u"libraryRoot", FilePath::join(folders.home, libraryBelowHome)),
      sources(group_, u"sources", [this] { return std::vector{systemScreenshotFolder()}; }) {
  // A value of the wrong type does not stay behind under the one key that may be missing.
  syncRoot.set(syncRoot());
}

double Settings::heldInInspectorRange(double width) { return std::clamp(width, 240.0, 460.0); }

int Settings::validCaptureDelay(int seconds) { return isCaptureDelay(seconds) ? seconds : 0; }

std::vector<std::string> Settings::sourceFolders() const {
  std::vector<std::string> folders;
  for (const auto& source : sources()) {
    if (!source.empty()) folders.push_back(absolute(source));
  }
  return folders;
}

std::string Settings::libraryFolder() const {
  return absolute(libraryRoot().empty() ? std::string(libraryBelowHome) : libraryRoot());
}

std::optional<std::string> Settings::syncFolder() const {
  const auto folder = syncRoot();
  return folder && !folder->empty() ? std::optional(absolute(*folder)) : std::nullopt;
}

std::string Settings::absolute(const std::string& path) const {
  return FilePath::withoutTrailingSlashes(path.starts_with('/') ? path : FilePath::join(folders_.home, path));
}

std::string Settings::libraryLocation(Timestamp date, std::string_view name) const {
  const auto year = FilePath::join(libraryFolder(), Formats::date(date, u"yyyy"));
  return FilePath::join(FilePath::join(year, Formats::date(date, u"yyyy-MM")), name);
}

std::string Settings::systemScreenshotFolder(const UserFolders& folders, const ScreenshotTool& screenshotTool) {
  const auto location = systemScreenshotLocation(folders, screenshotTool);
  if (!location || location->empty()) return FilePath::join(folders.home, "Desktop");
  return FilePath::expandingTilde(*location, folders.home);
}

std::string Settings::systemScreenshotFolder() const { return systemScreenshotFolder(folders_, screenshotTool_); }

Settings::Refreshed Settings::refreshFromDisk() {
  group_.defaults.synchronize();
  Refreshed refreshed;
  for (AnyPreference* folder : {static_cast<AnyPreference*>(&sources), static_cast<AnyPreference*>(&libraryRoot)}) {
    refreshed.watch |= folder->refresh();
  }
  for (auto* hotkey : {&captureHotkey, &quickFindHotkey}) refreshed.hotkeys |= hotkey->refresh();
  for (AnyPreference* preference : std::initializer_list<AnyPreference*>{
           &showMenuBar, &autoFile, &runOCR, &renameOnFile, &protectSensitive, &gallerySort, &galleryLayout,
           &groupByDay, &automationRules, &projects, &syncRoot, &captureDestination}) {
    preference->refresh();
  }
  captureDelay.refreshIf(isCaptureDelay);
  return refreshed;
}

}  // namespace Nimbrel
