#include "FileCommands.h"
#include "CommandTable.h"
#include "EventWait.h"
#include "ShotArguments.h"

#include <QObject>

#include <string_view>

namespace Nimbrel::Ctl {

namespace {

/// The status of an operation that says by how it begins whether it failed.
Outcome outcomeOf(const std::string& status, std::string_view failure) {
  return status.starts_with(failure) ? Outcome::failed(status) : Outcome::changed(status);
}

/// Lets the Store begin something and waits for the status that it ends with; false when a signal came first.
bool untilStatus(Store& store, const std::function<void()>& begin) {
  const QObject context;
  return untilDone([&](const std::function<void()>& done) {
    QObject::connect(&store, &Store::statusChanged, &context, done);
    begin();
  });
}

}  // namespace

Outcome runFile(const CommandLine& line, Session& session) {
  return withShots(line.arguments, session, [](Store& store, const ShotList& shots) {
    store.file(shots);
    return outcomeOf(store.status(), "Could not file ");
  });
}

Outcome runRename(const CommandLine& line, Session& session) {
  const std::span ids(line.arguments.data(), 1);
  return withShots(ids, session, [&](Store& store, const ShotList& shots) {
    store.rename(*shots.front(), line.arguments[1]);
    return outcomeOf(store.status(), "Rename failed: ");
  });
}

Outcome runTrash(const CommandLine& line, Session& session) { return withShots(line.arguments, session, trashed); }

Outcome runForget(const CommandLine& line, Session& session) {
  return withShots(line.arguments, session, [](Store& store, const ShotList& shots) {
    store.forget(shots);
    return Outcome::changed(store.status());
  });
}

Outcome runShrink(const CommandLine& line, Session& session) {
  return withShots(line.arguments, session, [](Store& store, const ShotList& shots) {
    if (!untilStatus(store, [&] { store.recompress(shots); })) return Outcome::failed(std::string(interrupted));
    return Outcome::changed(store.status());
  });
}

Outcome trashed(Store& store, const ShotList& shots) {
  if (!untilStatus(store, [&] { store.trash(shots); })) return Outcome::failed(std::string(interrupted));
  return outcomeOf(store.status(), "Trash failed: ");
}

}  // namespace Nimbrel::Ctl
