#include "Catalogue/Settings.h"

#include "Foundation/FilePath.h"
#include "Foundation/Formats.h"
#include "Platform/FileSystem.h"

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr const char* systemScreenshotSuite = "com.apple.screencapture";

double heldInInspectorRange(double width) { return std::clamp(width, 240.0, 460.0); }

bool isCaptureDelay(const int& seconds) { return seconds == 0 || seconds == 3 || seconds == 10; }

int validCaptureDelay(int seconds) { return isCaptureDelay(seconds) ? seconds : 0; }

std::optional<std::string> systemScreenshotLocation(const UserFolders& folders, const ScreenshotTool& screenshotTool) {
  const Defaults suite(folders.preferences, systemScreenshotSuite);
  if (!FileSystem::exists(suite.filePath().toStdString())) return screenshotTool.configuredFolder();
  return PreferenceCodec<std::string>::decode(suite.value(QStringLiteral("location")));
}

}  // namespace

#define NIMBREL_PREFERENCE(field, ...) \
  field(                               \
      defaults, QStringLiteral(#field), [this](const QString& key) { Q_EMIT changed(key); }, __VA_ARGS__)

Settings::Settings(Defaults& defaults, const UserFolders& folders, const ScreenshotTool& screenshotTool,
                   QObject* parent)
    : QObject(parent),
      NIMBREL_PREFERENCE(libraryRoot, FilePath::join(folders.home, "Pictures/Nimbrel")),
      NIMBREL_PREFERENCE(sources, {systemScreenshotFolder(folders, screenshotTool)}),
      NIMBREL_PREFERENCE(autoFile, false),
      NIMBREL_PREFERENCE(runOCR, true),
      NIMBREL_PREFERENCE(renameOnFile, true),
      NIMBREL_PREFERENCE(captureHotkey, false),
      NIMBREL_PREFERENCE(showMenuBar, true),
      NIMBREL_PREFERENCE(savedSearches, {}),
      NIMBREL_PREFERENCE(quickFindHotkey, false),
      NIMBREL_PREFERENCE(heicQuality, 0.9),
      NIMBREL_PREFERENCE(thumbSize, 190.0),
      NIMBREL_PREFERENCE(galleryLayout, GalleryLayout::grid),
      NIMBREL_PREFERENCE(gallerySort, GallerySort::newest),
      NIMBREL_PREFERENCE(groupByDay, true),
      NIMBREL_PREFERENCE(inspectorWidth, 300.0, heldInInspectorRange),
      NIMBREL_PREFERENCE(captureDestination, CaptureDestination::inbox),
      NIMBREL_PREFERENCE(captureDelay, 0, validCaptureDelay),
      NIMBREL_PREFERENCE(protectSensitive, true),
      NIMBREL_PREFERENCE(automationRules, {}),
      NIMBREL_PREFERENCE(projects, {}),
      NIMBREL_PREFERENCE(syncRoot, std::nullopt),
      defaults_(defaults),
      all_{&libraryRoot,     &sources,          &autoFile,        &runOCR,
           &renameOnFile,    &captureHotkey,    &showMenuBar,     &savedSearches,
           &quickFindHotkey, &heicQuality,      &thumbSize,       &galleryLayout,
           &gallerySort,     &groupByDay,       &inspectorWidth,  &captureDestination,
           &captureDelay,    &protectSensitive, &automationRules, &projects,
           &syncRoot} {
  // A value of the wrong type does not stay behind under the one key that may be missing.
  syncRoot.set(syncRoot());
}

#undef NIMBREL_PREFERENCE

std::vector<std::string> Settings::sourceFolders() const {
  std::vector<std::string> folders;
  for (const auto& source : sources()) folders.push_back(FilePath::withoutTrailingSlashes(source));
  return folders;
}

std::string Settings::libraryLocation(Timestamp date, std::string_view name) const {
  const auto year = FilePath::join(libraryRoot(), Formats::date(date, u"yyyy"));
  return FilePath::join(FilePath::join(year, Formats::date(date, u"yyyy-MM")), name);
}

std::string Settings::systemScreenshotFolder(const UserFolders& folders, const ScreenshotTool& screenshotTool) {
  const auto location = systemScreenshotLocation(folders, screenshotTool);
  if (!location || location->empty()) return FilePath::join(folders.home, "Desktop");
  return FilePath::expandingTilde(*location, folders.home);
}

Settings::Refreshed Settings::refreshFromDisk() {
  defaults_.synchronize();
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
