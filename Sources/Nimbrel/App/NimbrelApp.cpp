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
#include <memory>
#include <string_view>
#include <vector>

namespace Nimbrel {

namespace {

using Arguments = std::vector<std::string_view>;

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

}  // namespace

int runNimbrel(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const Arguments arguments(argv + std::min(argc, 1), argv + argc);
  const auto identity = AppIdentity::fromProgramName(argc > 0 ? argv[0] : "");
  Process::logToSystem(identity.isMenuBarHelper() ? "nimbrel-menubar" : "nimbrel");
  const auto role = processRole(identity, arguments);
  if (role != ProcessRole::headless) Process::quitOnSignals();

  auto store = Store::openForCurrentUser(role, servicesFor(role));
  if (!store) {
    std::fprintf(stderr, "nimbrel: %s\n", store.error().message.c_str());
    return EXIT_FAILURE;
  }
  if (role == ProcessRole::headless) {
    finishHeadlessRun(*store.value(), verbosityOf(arguments), std::cout);
    return std::cout.flush() ? EXIT_SUCCESS : EXIT_FAILURE;
  }
  return QCoreApplication::exec();
}

}  // namespace Nimbrel
