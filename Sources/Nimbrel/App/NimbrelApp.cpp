#include "App/NimbrelApp.h"

#include "App/CompanionProcess.h"
#include "App/HeadlessRun.h"
#include "App/MainProcess.h"
#include "App/MenuBarCompanion.h"
#include "App/TrayNotice.h"
#include "Linux/Factory.h"
#include "Model/AppIdentity.h"
#include "Platform/Display.h"
#include "Platform/Process.h"
#include "Platform/SingleInstance.h"
#include "Store/Store.h"
#include "Views/Shared/NimbrelStyle.h"
#include "Views/Shared/Theme.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
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

/// What the desktop gave whoever started this process for a window to come to the front; empty when there is nothing.
/// Taken away, since it is not for the programs that are started from here.
std::string takeActivationToken() {
  std::string token;
  for (const auto* name : {"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"}) {
    if (auto value = qgetenv(name).toStdString(); !value.empty()) token = std::move(value);
    qunsetenv(name);
  }
  return token;
}

/// With windows for all but the headless pass, if they can be shown.
std::unique_ptr<QCoreApplication> makeApplication(ProcessRole role, int& argc, char** argv) {
  if (role == ProcessRole::headless || !Display::isThere()) {
    return std::make_unique<QCoreApplication>(argc, argv);
  }
  // It is started by each session anew, and would be started by what the session remembers as well.
  if (role == ProcessRole::menuBarCompanion) qunsetenv("SESSION_MANAGER");
  auto application = std::make_unique<QApplication>(argc, argv);
  QGuiApplication::setApplicationDisplayName(QStringLiteral("Nimbrel"));
  QGuiApplication::setDesktopFileName(QString::fromStdString(AppIdentity::bundleIdentifier()));
  QGuiApplication::setWindowIcon(QIcon(QStringLiteral(":/Icons/com.halderquist.nimbrel.svg")));
  // What was copied may keep the process after its window.
  QGuiApplication::setQuitOnLastWindowClosed(false);
  installDesign(*application);
  return application;
}

bool hasWindows() { return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr; }

std::string programsFolder() { return QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString(); }

/// Whether this process is the one of its kind.
struct Place {
  std::unique_ptr<SingleInstance> instance;  ///< keeps it so; null where several may run, or the account has no home
  std::optional<int> status;                 ///< where it is not: what to exit with
};

/// What this start is for.
StartRequest ownRequest(const AppIdentity& identity, const std::string& token) {
  const bool isAsked = !identity.isMenuBarHelper() || !qEnvironmentVariableIsSet(MenuBarCompanion::unaskedVariable);
  qunsetenv(MenuBarCompanion::unaskedVariable);
  if (isAsked) return {.activationToken = token};
  return {.kind = StartRequest::Kind::Action, .action = MenuBarCompanion::unaskedAction};
}

/// Hands the start over to the process that runs, if there is one.
Place takePlace(ProcessRole role, const AppIdentity& identity, const std::string& token) {
  const auto folders = UserFolders::ofCurrentUser();
  // An application without a display is not the one that the user wants to see.
  const bool isOneOfMany = role != ProcessRole::menuBarCompanion && !hasWindows();
  if (isOneOfMany || !folders) return {};
  auto instance = makeSingleInstance(identity.processIdentifier(), folders->applicationSupport);
  switch (instance->claim(ownRequest(identity, token))) {
    case SingleInstance::Place::First:
      return {.instance = std::move(instance), .status = {}};
    case SingleInstance::Place::HandedOver:
      return {.instance = nullptr, .status = EXIT_SUCCESS};
    case SingleInstance::Place::Unanswered:
      break;
  }
  std::fputs("nimbrel: another one runs and does not answer\n", stderr);
  return {.instance = nullptr, .status = EXIT_FAILURE};
}

/// From now on the process answers those who are started after it, until it begins to quit.
template <class Shown>
void answerOthers(Shown& process, std::unique_ptr<SingleInstance> instance) {
  if (!instance) return;
  instance->listen([&process](const StartRequest& request) { process.answer(request); });
  // Whoever is started while it only waits for its end is the first one again.
  auto held = std::make_shared<std::unique_ptr<SingleInstance>>(std::move(instance));
  QObject::connect(&process, &Shown::quitBegun, &process, [held] { held->reset(); });
}

/// The window until the user has closed it.
int runWindow(Store& store, const WindowServices& services, const AppIdentity& identity, const std::string& token,
              std::unique_ptr<SingleInstance> instance) {
  MainProcess process(store, services);
  process.raise(token);
  answerOthers(process, std::move(instance));
  const auto tray = makeTrayIcon();
  const TrayNotice notice(store, *tray);
  if (const auto folders = UserFolders::ofCurrentUser()) {
    MenuBarCompanion::launchIfNeeded(identity, *folders, programsFolder());
  }
  return QCoreApplication::exec();
}

/// The worker's icon and panel, until the user has enough of it or a signal ends it.
int runCompanion(Store& store, const WindowServices& services, const AppIdentity& identity,
                 std::unique_ptr<SingleInstance> instance) {
  const auto tray = makeTrayIcon();
  CompanionProcess process(store, services, *tray, [&identity](const std::string& token) {
    MenuBarCompanion::openMainApp(identity, programsFolder(), token, [] {});
  });
  answerOthers(process, std::move(instance));
  return QCoreApplication::exec();
}

/// What the window leaves to the companion is asked of this at the time.
bool isCompanionRunning() {
  const auto folders = UserFolders::ofCurrentUser();
  return folders && MenuBarCompanion::isRunning(*folders);
}

/// While it lives and the event loop runs, the companion is known as that of its catalogue.
class Announcement {
 public:
  explicit Announcement(const AppIdentity& identity) {
    // Whoever only looks whether one runs holds the place for a moment.
    QObject::connect(&again_, &QTimer::timeout, &again_, [this] {
      place_ = MenuBarCompanion::announce(*folders_);
      if (place_) again_.stop();
    });
    if (folders_ && identity.isMenuBarHelper()) again_.start(betweenAnnouncements);
  }

 private:
  std::optional<UserFolders> folders_ = UserFolders::ofCurrentUser();
  std::optional<FolderLock> place_;
  QTimer again_;
};

/// As the user sees it, which follows the desktop's looks meanwhile.
int runWithWindows(Store& store, const WindowServices& services, DesktopAppearance& appearance,
                   const AppIdentity& identity, const std::string& token, std::unique_ptr<SingleInstance> instance) {
  Theme::shared().follow(appearance);
  const auto status = identity.isMenuBarHelper() ? runCompanion(store, services, identity, std::move(instance))
                                                 : runWindow(store, services, identity, token, std::move(instance));
  // What still runs may need the application: words of marks are drawn with its fonts.
  QThreadPool::globalInstance()->waitForDone();
  static NullDesktopAppearance nothing;
  Theme::shared().follow(nothing);
  return status;
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
  // Before the application object, which would take it for its own first window.
  const auto token = takeActivationToken();
  const auto application = makeApplication(role, argc, argv);
  Process::logToSystem(identity.isMenuBarHelper() ? "nimbrel-menubar" : "nimbrel");
  if (role != ProcessRole::headless) Process::quitOnSignals();
  auto place = takePlace(role, identity, token);
  if (place.status) return *place.status;

  auto services = servicesFor(role);
  const WindowServices windowServices(services);
  auto& appearance = *services.desktopAppearance;
  auto store = Store::openForCurrentUser(role, std::move(services), isCompanionRunning);
  if (!store) {
    std::fprintf(stderr, "nimbrel: %s\n", store.error().message.c_str());
    return EXIT_FAILURE;
  }
  if (role == ProcessRole::headless) return runHeadless(*store.value(), arguments);
  const Announcement announcement(identity);
  if (!hasWindows()) return QCoreApplication::exec();
  return runWithWindows(*store.value(), windowServices, appearance, identity, token, std::move(place.instance));
}

}  // namespace Nimbrel
