#pragma once

#include "Platform/HttpsFetcher.h"
#include "Platform/Services.h"
#include "Platform/SingleInstance.h"
#include "Platform/TrayIcon.h"

#include <memory>
#include <string>

namespace Nimbrel {

/// The services as this desktop offers them, chosen at run time. Windows of our own processes are told from others by
/// `ownIdentifier`. Needs a QCoreApplication. Main thread only.
[[nodiscard]] Services makeServices(const std::string& ownIdentifier);

/// The place of a process with that identifier over that catalogue, whose folder need not be there: by the standard
/// application interface on the session bus, or by a local socket where there is no bus. Needs a QCoreApplication. Main
/// thread only.
[[nodiscard]] std::unique_ptr<SingleInstance> makeSingleInstance(const std::string& identifier,
                                                                 const std::string& catalogueFolder);

/// An icon in the tray of this desktop, whichever kind of tray it has. Needs a QApplication. Main thread only.
[[nodiscard]] std::unique_ptr<TrayIcon> makeTrayIcon();

/// What reads from servers. Apart from the services, so that it is linked only into the program that looks for updates,
/// and nothing else can open a connection. Needs a QCoreApplication. Main thread only.
[[nodiscard]] std::unique_ptr<HttpsFetcher> makeHttpsFetcher();

}  // namespace Nimbrel
