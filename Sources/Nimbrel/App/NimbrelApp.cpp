#include "App/NimbrelApp.h"

#include "App/HeadlessRun.h"
#include "Linux/Factory.h"
#include "Model/AppIdentity.h"
#include "Platform/Process.h"
#include "Store/Store.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string_view>
#include <vector>

namespace Nimbrel {

namespace {

using Arguments = std::vector<std::string_view>;

Timestamp systemTime() { return std::chrono::time_point_cast<Seconds>(std::chrono::system_clock::now()); }

Result<std::unique_ptr<Store>> openStore(ProcessRole role) {
  const auto folders = UserFolders::ofCurrentUser();
  if (!folders) return Error{"The account has no home folder to keep the catalogue in"};
  return Store::open({.role = role,
                      .folders = *folders,
                      .clock = systemTime,
                      .services = makeServices(),
                      .defaults = AppIdentity::openDefaults(folders->preferences)});
}

Verbosity verbosityOf(const Arguments& arguments) {
  const bool verbose = std::ranges::find(arguments, verboseArgument) != arguments.end();
  return verbose ? Verbosity::HashLines : Verbosity::Summary;
}

}  // namespace

int runNimbrel(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const Arguments arguments(argv + std::min(argc, 1), argv + argc);
  const auto identity = AppIdentity::fromProgramName(argc > 0 ? argv[0] : "");
  Process::logToSystem(identity.isMenuBarHelper() ? "nimbrel-menubar" : "nimbrel");
  const auto role = processRole(identity, arguments);
  if (role != ProcessRole::headless) Process::quitOnSignals();

  auto store = openStore(role);
  if (!store) {
    std::fprintf(stderr, "nimbrel: %s\n", store.error().message.c_str());
    return EXIT_FAILURE;
  }
  if (role == ProcessRole::headless) {
    finishHeadlessRun(*store.value(), verbosityOf(arguments), std::cout);
    return EXIT_SUCCESS;
  }
  return QCoreApplication::exec();
}

}  // namespace Nimbrel
