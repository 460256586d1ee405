#include "Linux/Factory.h"

#include "Foundation/FilePath.h"
#include "Linux/Authentication/PamOwnerAuthentication.h"
#include "Linux/Capture/ScreenCaptureProcess.h"
#include "Linux/Desktop/DesktopEntries.h"
#include "Linux/Desktop/DesktopWorkspace.h"
#include "Linux/Desktop/LinuxScreenshotTool.h"
#include "Linux/Desktop/PortalAppearance.h"
#include "Linux/Desktop/QtPasteboard.h"
#include "Linux/Desktop/SessionKind.h"
#include "Linux/Desktop/TokenActivation.h"
#include "Linux/Files/DesktopTrash.h"
#include "Linux/Files/InotifyFileEvents.h"
#include "Linux/Portal/PortalHotkeys.h"
#include "Linux/Reading/ReaderProcess.h"
#include "Linux/X11/X11FrontApplication.h"
#include "Linux/X11/X11Hotkeys.h"
#include "Linux/X11/X11WindowActivation.h"
#include "Linux/X11/X11WindowFocus.h"
#include "Linux/X11/X11WindowStacking.h"
#include "Linux/X11/XcbConnection.h"
#include "Platform/UserFolders.h"

#include <QGuiApplication>

#include <memory>

namespace Nimbrel {

namespace {

/// The user's folder for data, in which ours lies, holds the Trash as well.
std::optional<std::string> homeTrash() {
  const auto folders = UserFolders::ofCurrentUser();
  if (!folders) return std::nullopt;
  return FilePath::join(FilePath::folder(folders->applicationSupport), "Trash");
}

/// That of Qt's windows; empty in programs without.
QString windowPlatform() {
  const auto* application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
  return application != nullptr ? QGuiApplication::platformName() : QString();
}

/// Programs without windows have no clipboard, and platforms that show nothing have one that nobody else can reach.
std::unique_ptr<Pasteboard> makePasteboard(const std::shared_ptr<XcbConnection>& connection) {
  const auto platform = windowPlatform();
  if (platform == QLatin1String("xcb")) return makeQtPasteboard(connection);
  return platform.startsWith(QLatin1String("wayland")) ? makeQtPasteboard(nullptr) : nullptr;
}

/// Keys of a Wayland session reach the X server only while one of its windows has them.
std::unique_ptr<HotkeyService> makeHotkeys(const std::shared_ptr<XcbConnection>& connection,
                                           const std::string& ownIdentifier) {
  switch (sessionKind()) {
    case SessionKind::x11:
      return makeX11Hotkeys(connection);
    case SessionKind::wayland:
      return makePortalHotkeys(ownIdentifier);
    case SessionKind::none:
      break;
  }
  return std::make_unique<NullHotkeyService>();
}

/// What each platform has for its windows.
void addWindowServices(Services& services, const std::shared_ptr<XcbConnection>& connection) {
  const auto platform = windowPlatform();
  if (platform.startsWith(QLatin1String("wayland"))) services.windowActivation = makeTokenActivation();
  // Also in a Wayland session, where the X server's windows may still ask.
  if (platform != QLatin1String("xcb")) return;
  services.windowStacking = makeX11WindowStacking(connection);
  services.windowFocus = makeX11WindowFocus(connection);
  services.windowActivation = makeX11WindowActivation(connection);
}

}  // namespace

Services makeServices(const std::string& ownIdentifier) {
  Services services;
  services.fileEvents = makeInotifyFileEvents();
  services.screenshotTool = makeLinuxScreenshotTool();
  services.ownerAuthentication = makePamOwnerAuthentication();
  services.pictureReader = makeReaderProcess();
  services.trash = makeDesktopTrash(homeTrash());
  services.screenCaptureTool = makeScreenCaptureProcess();
  services.workspace = makeDesktopWorkspace();
  services.installedApplications = std::make_unique<DesktopEntries>();
  const auto connection = std::make_shared<XcbConnection>();
  if (auto pasteboard = makePasteboard(connection)) services.pasteboard = std::move(pasteboard);
  if (sessionKind() == SessionKind::x11) services.frontApplication = makeX11FrontApplication(connection, ownIdentifier);
  services.hotkeys = makeHotkeys(connection, ownIdentifier);
  services.desktopAppearance = makePortalAppearance();
  addWindowServices(services, connection);
  return services;
}

}  // namespace Nimbrel
