#include "CommandTable.h"
#include "EventWait.h"
#include "ReadableFile.h"
#include "ShotArguments.h"

#include <QObject>

namespace Nimbrel::Ctl {

namespace {

/// What was changed, once everything that follows from it is worked out too, if that is wanted.
Outcome changed(Store& store, const CommandLine& line) {
  // The work has a status of its own to tell, which was not asked for.
  const auto status = store.status();
  if (line.has("--wait")) {
    const QObject context;
    const bool isDone = untilDone([&](const std::function<void()>& done) {
      QObject::connect(&store, &Store::workDone, &context, done);
      store.workOff();
    });
    if (!isDone) return Outcome::failed(std::string(interrupted));
  }
  return Outcome::changed(status);
}

}  // namespace

Outcome runImport(const CommandLine& line, Session& session) {
  std::vector<std::string> paths;
  for (const auto& argument : line.arguments) {
    auto path = readableFile(argument);
    if (!path) return Outcome::failed(path.error().message);
    paths.push_back(std::move(path).value());
  }
  return withStore(session, [&](Store& store) {
    store.importFiles(paths);
    return changed(store, line);
  });
}

Outcome runScan(const CommandLine& line, Session& session) {
  return withStore(session, [&](Store& store) {
    store.scan();
    return changed(store, line);
  });
}

}  // namespace Nimbrel::Ctl
