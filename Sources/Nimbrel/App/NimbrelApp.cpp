#include "App/NimbrelApp.h"

#include "App/HeadlessRun.h"
#include "App/MainProcess.h"
#include "App/MenuBarCompanion.h"
#include "Linux/Factory.h"
#include "Model/AppIdentity.h"
#include "Platform/Display.h"
#include "Platform/Process.h"
#include "Store/Store.h"
#include "Views/Shared/NimbrelStyle.h"
#include "Views/Shared/Theme.h"

#include <QApplication>
#include <QFile>
#include <QThreadPool>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace Nimbrel {

namespace {

using Arguments = std::vector<std::string_view>;

constexpr std::chrono::milliseconds betweenAnnouncements{100};

/// The headless pass looks once, and would only take watches away from the companion.
Services servicesFor(ProcessRole role) {
  auto services = makeServices(AppIdentity::bundleIdentifier());
  if (role == ProcessRole::headless) services.fileEvents = std::make_unique<NullFileEvents>();
  return services;
}

Verbosity verbosityOf(const Arguments& arguments) {
  const bool verbose = std::ranges::find(arguments, verboseArgument) != arguments.end();
  return verbose ? Verbosity::HashLines : Verbosity::Summary;
}

/// With windows for the main application, if they can be shown.
std::unique_ptr<QCoreApplication> makeApplication(ProcessRole role, int& argc, char** argv) {
  if (role != ProcessRole::mainApplication || !Display::isThere()) {
    return std::make_unique<QCoreApplication>(argc, argv);
  }
  auto application = std::make_unique<QApplication>(argc, argv);
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Nimbrel"));
  QGuiApplication::setDesktopFileName(QStringLiteral("nimbrel"));
  // What was copied may keep the process after its window.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  installDesign(*application);
  return application;
}

/// The window until the user has closed it.
int runWindow(Store& store, const WindowServices& services, const AppIdentity& identity) {
  MainProcess process(store, services);
  process.raise();
  const auto programs = QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString();
  if (const auto folders = UserFolders::ofCurrentUser()) MenuBarCompanion::launchIfNeeded(identity, *folders, programs);
  return QCoreApplication::exec();
}

/// The worker, or the application where there is nothing to show its window on, until a signal ends it.
int runWithoutWindow(const AppIdentity& identity) {
  const auto folders = UserFolders::ofCurrentUser();
  std::optional<FolderLock> place;
  QTimer announcing;
  // Whoever only looks whether one runs holds the place for a moment.
  QObject::connect(&announcing, &QTimer::timeout, &announcing, [&] {
    place = MenuBarCompanion::announce(*folders);
    if (place) announcing.stop();
  });
  if (folders && identity.isMenuBarHelper()) announcing.start(betweenAnnouncements);
  return QCoreApplication::exec();
}

/// What the window leaves to the companion is asked of this at the time.
bool isCompanionRunning() {
  const auto folders = UserFolders::ofCurrentUser();
  return folders && MenuBarCompanion::isRunning(*folders);
}

int runHeadless(Store& store, const Arguments& arguments) {
  finishHeadlessRun(store, verbosityOf(arguments), std::cout);
  return std::cout.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace

int runNimbrel(int argc, char** argv) {
  const Arguments arguments(argv + std::min(argc, 1), argv + argc);
  const auto identity = AppIdentity::fromProgramName(argc > 0 ? argv[0] : "");
  const auto role = processRole(identity, arguments);
  const auto application = makeApplication(role, argc, argv);
  Process::logToSystem(identity.isMenuBarHelper() ? "nimbrel-menubar" : "nimbrel");
  if (role != ProcessRole::headless) Process::quitOnSignals();

  auto services = servicesFor(role);
  const WindowServices windowServices(services);
  auto& appearance = *services.desktopAppearance;
  auto store = Store::openForCurrentUser(role, std::move(services), isCompanionRunning);
  if (!store) {
    std::fprintf(stderr, "nimbrel: %s\n", store.error().message.c_str());
    return EXIT_FAILURE;
  }
  if (role == ProcessRole::headless) return runHeadless(*store.value(), arguments);
  if (qobject_cast<QApplication*>(application.get()) == nullptr) return runWithoutWindow(identity);
  Theme::shared().follow(appearance);
  const auto status = runWindow(*store.value(), windowServices, identity);
  // What still runs may need the application: words of marks are drawn with its fonts.
  QThreadPool::globalInstance()->waitForDone();
  static NullDesktopAppearance nothing;
  Theme::shared().follow(nothing);
  return status;
}

}  // namespace Nimbrel
