#pragma once

#include "App/DesktopActions.h"
#include "App/HiddenWindows.h"
#include "App/UpdateController.h"
#include "Platform/Services.h"
#include "Platform/SingleInstance.h"
#include "Store/Store.h"
#include "Views/Gallery/GalleryPreviewCache.h"
#include "Views/Gallery/ThumbCache.h"
#include "Views/Panels/QuickLookPanel.h"
#include "Views/Pins/PinBoard.h"
#include "Views/QuickFind/QuickFindPanel.h"
#include "Views/Recording/RecordingExports.h"
#include "Views/Settings/SettingsView.h"
#include "Views/Shared/AppIcons.h"
#include "Views/Sheets/AuthenticationPrompt.h"
#include "Views/Shelf/CaptureShelf.h"
#include "Views/Window/ActivityWatch.h"
#include "Views/Window/ContentView.h"

#include <QDialog>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <string>

namespace Nimbrel {

/// The services of a Store that the window works with as well. Borrowed.
struct WindowServices {
  explicit WindowServices(const Services& services);

  Pasteboard& pasteboard;
  PictureReader& pictureReader;
  Workspace& workspace;
  InstalledApplications& installedApplications;
  OwnerAuthentication& ownerAuthentication;
  WindowStacking& windowStacking;
  WindowFocus& windowFocus;
  WindowActivation& windowActivation;
};

/// The application as the user sees it: the main window and what follows from its being there. Needs a QApplication
/// with the design installed. Main thread.
class MainProcess final : public QObject {
  Q_OBJECT

 public:
  /// The Store, and the services in it, must outlive it.
  MainProcess(Store& store, WindowServices services);

  [[nodiscard]] ContentView& window() { return window_; }
  [[nodiscard]] PinBoard& pins() { return pins_; }
  [[nodiscard]] QuickFindPanel& quickFind() { return quickFind_; }
  [[nodiscard]] CaptureShelf& shelf() { return shelf_; }
  /// What the launcher may ask for; whoever offers more adds it.
  [[nodiscard]] DesktopActions& actions() { return actions_; }

  /// Shows the window, in front. `token` is what the desktop gave whoever asked for it, if it did.
  void raise(const std::string& token = {});

  /// Does what somebody wants who has started the program again: without a wish of its own, the window is shown.
  void answer(const StartRequest& request);

  /// Shows what is new, once no other sheet is up and no capture is taken.
  void offer(const VerifiedUpdate& update);

  /// Ends the event loop once nothing that was copied or is exported here is lost with the process; until then it
  /// stays without a window. Again, it does nothing.
  void quit();

 Q_SIGNALS:
  /// From now on nobody sees this process any more, however long it stays.
  void quitBegun();

 private:
  [[nodiscard]] WindowParts parts();
  void addSheets(WindowParts& parts);
  QDialog* makeRecordingTools(QWidget* window);
  /// Those that are kept of a file that is another by now.
  void forgetPictures(const std::string& path);
  QWidget* makeGallery(QWidget* parent, EditorTarget& editor);
  QWidget* makeInspector(QWidget* parent, EditorTarget& editor);
  void lookClosely();
  void pinSelected();
  void showSettings();
  void hideWindows();
  void unhideWindows();

  Store& store_;
  WindowServices services_;
  DesktopActions actions_;
  AppIcons icons_;
  ThumbCache thumbs_;
  GalleryPreviewCache previews_;
  PinBoard pins_;
  QuickFindPanel quickFind_;
  CaptureShelf shelf_;
  UpdateController updates_;
  RecordingExports exports_;
  ContentView window_;
  AuthenticationPrompt prompt_;
  ActivityWatch activity_;
  QPointer<QuickLookPanel> quickLook_;  ///< once it was asked for; the window's
  QPointer<SettingsView> settings_;     ///< while they are open; the window's
  HiddenWindows hidden_;
  std::unique_ptr<QObject> waitingOffer_;  ///< as long as this lives, there is one that waits
  bool isQuitting_ = false;
};

}  // namespace Nimbrel
