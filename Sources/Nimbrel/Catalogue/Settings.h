#pragma once

#include "Catalogue/Preference.h"
#include "Foundation/Timestamp.h"
#include "Platform/ScreenshotTool.h"
#include "Platform/UserFolders.h"

#include <QObject>

#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// Everything that the user can set. Each field is stored under its own name at every change, and taken over from other
/// processes by refreshFromDisk(). A missing key or a value of the wrong type reads as the default given here. Main
/// thread.
class Settings : public QObject {
  Q_OBJECT
 public:
  /// Loads all fields. `defaults` is borrowed and must outlive the object.
  Settings(Defaults& defaults, const UserFolders& folders, const ScreenshotTool& screenshotTool,
           QObject* parent = nullptr);

  Preference<std::string> libraryRoot;           ///< root of the filed library; "Pictures/Nimbrel" below home
  Preference<std::vector<std::string>> sources;  ///< folders of new screenshots; systemScreenshotFolder
  Preference<bool> autoFile;                     ///< file the whole Inbox at each scan; no
  Preference<bool> runOCR;                       ///< run text recognition; yes
  Preference<bool> renameOnFile;                 ///< give filed shots a meaningful name; yes
  Preference<bool> captureHotkey;                ///< global hotkey for captures; no
  Preference<bool> showMenuBar;                  ///< icon in the menu bar; yes
  Preference<std::vector<std::string>> savedSearches;
  Preference<bool> quickFindHotkey;                   ///< global hotkey for quick find; no
  Preference<double> heicQuality;                     ///< 0 to 1; 0.9
  Preference<double> thumbSize;                       ///< edge of a gallery cell in points; 190
  Preference<GalleryLayout> galleryLayout;            ///< grid
  Preference<GallerySort> gallerySort;                ///< newest
  Preference<bool> groupByDay;                        ///< sections by day; yes
  Preference<double> inspectorWidth;                  ///< points; held in 240 to 460 on loading; 300
  Preference<CaptureDestination> captureDestination;  ///< inbox
  Preference<int> captureDelay;                       ///< seconds before a capture: 0, 3 or 10; 0
  Preference<bool> protectSensitive;                  ///< lock sensitive previews; yes
  Preference<std::vector<AutomationRule>> automationRules;
  Preference<std::vector<std::string>> projects;
  Preference<std::optional<std::string>> syncRoot;  ///< folder of the encrypted sync; absent

  /// All fields in the order above.
  [[nodiscard]] const std::vector<AnyPreference*>& all() const { return all_; }

  /// The source folders as absolute paths without a slash at their end.
  [[nodiscard]] std::vector<std::string> sourceFolders() const;

  /// Where a filed shot of that date and name goes: library root, year, year and month, name.
  [[nodiscard]] std::string libraryLocation(Timestamp date, std::string_view name) const;

  /// Where the system's own screenshots land: the folder set for them, else "Desktop" below home.
  [[nodiscard]] static std::string systemScreenshotFolder(const UserFolders& folders,
                                                          const ScreenshotTool& screenshotTool);

  struct Refreshed {
    bool watch = false;    ///< the folders to watch are others
    bool hotkeys = false;  ///< a hotkey was switched on or off
  };
  /// Takes over what other processes have stored. Saved searches, quality, cell size and inspector width are left out:
  /// each process keeps its own until it restarts. Nothing is written or told when nothing changed.
  Refreshed refreshFromDisk();

 Q_SIGNALS:
  /// The field with this key has another value.
  void changed(const QString& key);

 private:
  Defaults& defaults_;
  std::vector<AnyPreference*> all_;
};

}  // namespace Nimbrel
