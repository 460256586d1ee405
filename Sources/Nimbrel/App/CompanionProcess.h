#pragma once

#include "App/CompanionWindows.h"
#include "App/DesktopActions.h"
#include "App/HiddenWindows.h"
#include "App/MainProcess.h"
#include "App/TrayNotice.h"
#include "Platform/SingleInstance.h"
#include "Platform/TrayIcon.h"
#include "Store/Store.h"
#include "Views/Companion/MenuBarView.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/QuickFind/QuickFindPanel.h"
#include "Views/Recording/RecordingExports.h"
#include "Views/Sheets/AuthenticationPrompt.h"
#include "Views/Shelf/CaptureShelf.h"
#include "Views/Window/ActivityWatch.h"

#include <QObject>

#include <functional>
#include <string>

namespace Nimbrel {

/// The worker as the user sees it: an icon in the tray with its panel, and the windows that are opened from there. It
/// goes on without any of them. Needs a QApplication with the design installed. Main thread.
class CompanionProcess final : public QObject {
  Q_OBJECT

 public:
  /// Starts the main application or brings it to the front; `token` is what the desktop gave for that, if it did.
  using OpenMainApp = std::function<void(const std::string& token)>;

  /// The Store, the services in it and the tray must outlive it.
  CompanionProcess(Store& store, const WindowServices& services, TrayIcon& tray, OpenMainApp openMainApp);
  ~CompanionProcess() override;
  CompanionProcess(const CompanionProcess&) = delete;
  CompanionProcess& operator=(const CompanionProcess&) = delete;

  [[nodiscard]] MenuBarView& panel() { return panel_; }
  [[nodiscard]] QuickFindPanel& quickFind() { return quickFind_; }
  [[nodiscard]] CaptureShelf& shelf() { return shelf_; }
  /// What the launcher may ask for; whoever offers more adds it.
  [[nodiscard]] DesktopActions& actions() { return actions_; }

  /// Does what somebody wants who has started the program again: without a wish of its own, the panel is shown.
  void answer(const StartRequest& request);

  /// Ends the event loop once nothing that was copied or is exported here is lost with the process; until then it
  /// stays without a window. Again, it does nothing.
  void quit();

 Q_SIGNALS:
  /// From now on nobody sees this process any more, however long it stays.
  void quitBegun();

 private:
  void dress();
  void showIcon();
  void forgetPictures(const std::string& path);
  void hideWindows();
  void unhideWindows();

  Store& store_;
  WindowServices services_;
  TrayIcon& tray_;
  OpenMainApp openMainApp_;
  DesktopActions actions_;
  ThumbCache thumbs_;
  GalleryPreviewCache previews_;
  RecordingExports exports_;
  MenuBarView panel_;
  QuickFindPanel quickFind_;
  CaptureShelf shelf_;
  CompanionWindows windows_;
  AuthenticationPrompt prompt_;
  ActivityWatch activity_;
  TrayNotice notice_;
  HiddenWindows hidden_;
  bool isQuitting_ = false;
};

}  // namespace Nimbrel
