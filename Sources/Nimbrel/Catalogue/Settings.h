#pragma once

#include "Catalogue/Preference.h"
#include "Foundation/Timestamp.h"
#include "Platform/ScreenshotTool.h"
#include "Platform/UserFolders.h"

#include <QObject>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// Everything that the user can set. Each field is stored under its own name at every change, and taken over from other
/// processes by refreshFromDisk(). A missing key or a value of the wrong type reads as the default that stands here.
/// Main thread.
class Settings : public QObject {
  Q_OBJECT

  // Before the fields, which enter themselves into it.
  PreferenceGroup group_;
  UserFolders folders_;
  const ScreenshotTool& screenshotTool_;

 public:
  /// Loads all fields. `defaults` and `screenshotTool` are borrowed and must outlive
  /// the object.
  Settings(Defaults& defaults, const UserFolders& folders, const ScreenshotTool& screenshotTool,
           QObject* parent = nullptr);

  /// Root of the filed library; "Pictures/Nimbrel" below home.
  Preference<std::string> libraryRoot;
  /// Folders of new screenshots; systemScreenshotFolder alone.
  Preference<std::vector<std::string>> sources;
  /// File the whole Inbox at each scan.
  Preference<bool> autoFile{group_, u"autoFile", false};
  /// Run text recognition.
  Preference<bool> runOCR{group_, u"runOCR", true};
  /// Give filed shots a meaningful name.
  Preference<bool> renameOnFile{group_, u"renameOnFile", true};
  /// Global hotkey for captures.
  Preference<bool> captureHotkey{group_, u"captureHotkey", false};
  /// Icon in the menu bar.
  Preference<bool> showMenuBar{group_, u"showMenuBar", true};
  Preference<std::vector<std::string>> savedSearches{group_, u"savedSearches"};
  /// Global hotkey for quick find.
  Preference<bool> quickFindHotkey{group_, u"quickFindHotkey", false};
  /// Quality of re-encoded shots, 0 to 1.
  Preference<double> heicQuality{group_, u"heicQuality", 0.9};
  /// Edge of a gallery cell in points.
  Preference<double> thumbSize{group_, u"thumbSize", 190.0};
  Preference<GalleryLayout> galleryLayout{group_, u"galleryLayout", GalleryLayout::grid};
  Preference<GallerySort> gallerySort{group_, u"gallerySort", GallerySort::newest};
  /// Sections by day in the gallery.
  Preference<bool> groupByDay{group_, u"groupByDay", true};
  /// Points; held in 240 to 460 on loading.
  Preference<double> inspectorWidth{group_, u"inspectorWidth", 300.0, heldInInspectorRange};
  Preference<CaptureDestination> captureDestination{group_, u"captureDestination", CaptureDestination::inbox};
  /// Seconds before a capture: 0, 3 or 10; another value loads as 0.
  Preference<int> captureDelay{group_, u"captureDelay", 0, validCaptureDelay};
  /// Lock previews of shots that look sensitive.
  Preference<bool> protectSensitive{group_, u"protectSensitive", true};
  Preference<std::vector<AutomationRule>> automationRules{group_, u"automationRules"};
  /// Names of the projects.
  Preference<std::vector<std::string>> projects{group_, u"projects"};
  /// Folder of the encrypted sync; may be absent.
  Preference<std::optional<std::string>> syncRoot{group_, u"syncRoot", std::nullopt};

  /// All fields in the order above.
  [[nodiscard]] const std::vector<AnyPreference*>& all() { return group_.members; }

  /// The source folders as absolute paths without a slash at their end. What is no absolute path is one below home, the
  /// same for every process; an empty one is left out.
  [[nodiscard]] std::vector<std::string> sourceFolders() const;

  /// The library root in the same form; the default where it is empty.
  [[nodiscard]] std::string libraryFolder() const;

  /// The folder of the encrypted sync in the same form; absent when none is chosen.
  [[nodiscard]] std::optional<std::string> syncFolder() const;

  /// Where a filed shot of that date and name goes: library root, year, year and month, name.
  [[nodiscard]] std::string libraryLocation(Timestamp date, std::string_view name) const;

  /// Where the system's own screenshots land: the folder set for them, else "Desktop" below home.
  [[nodiscard]] static std::string systemScreenshotFolder(const UserFolders& folders,
                                                          const ScreenshotTool& screenshotTool);
  /// The same with the folders and the tool of these settings.
  [[nodiscard]] std::string systemScreenshotFolder() const;

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
  [[nodiscard]] std::string absolute(const std::string& path) const;
  static double heldInInspectorRange(double width);
  static int validCaptureDelay(int seconds);
};

}  // namespace Nimbrel
