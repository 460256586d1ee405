#include "CommandTable.h"
#include "EventWait.h"
#include "ShotArguments.h"

#include "Model/CaptureOptions.h"
#include "Platform/Process.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QObject>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace Nimbrel::Ctl {

namespace {

constexpr std::array<std::pair<std::string_view, CaptureMode>, allCaptureModes.size()> modes{{
    {"area", CaptureMode::area},
    {"window", CaptureMode::window},
    {"screen", CaptureMode::screen},
    {"recordArea", CaptureMode::recordArea},
    {"recordScreen", CaptureMode::recordScreen},
}};

constexpr std::array<std::string_view, 2> failures{"Capture failed", "Captured, but"};

std::optional<CaptureMode> modeNamed(std::string_view word) {
  const auto found = std::ranges::find(modes, word, [](const auto& entry) { return entry.first; });
  return found == modes.end() ? std::nullopt : std::optional(found->second);
}

Outcome wouldTake(const Store& store, CaptureMode mode) {
  const auto path = store.captureLocation(mode, store.settings().captureDestination());
  return Outcome::done(QJsonObject{{QStringLiteral("path"), jsonString(path)}}, path + "\n");
}

/// A recording that runs is ended by an interrupt; anything else is given up.
void takeInterrupt(Store& store) {
  if (store.recording()) {
    store.stopRecording();
  } else {
    QCoreApplication::exit(Outcome::Failed);
  }
}

Outcome taken(Store& store, CaptureMode mode) {
  const QObject context;
  const bool isDone = untilDone([&](const std::function<void()>& done) {
    QObject::connect(&store, &Store::captureBusyChanged, &context, [&store, done] {
      if (!store.captureBusy()) done();
    });
    store.capture(mode, Store::Panel::Keep);
  });
  if (!isDone) return Outcome::failed(std::string(interrupted));
  const bool hasFailed =
      std::ranges::any_of(failures, [&](std::string_view failure) { return store.status().starts_with(failure); });
  return hasFailed ? Outcome::failed(store.status()) : Outcome::changed(store.status());
}

}  // namespace

Outcome runCapture(const CommandLine& line, Session& session) {
  const auto& word = line.arguments.front();
  const auto mode = modeNamed(word);
  if (!mode) return Outcome::misused("no way to capture: " + word);
  return withStore(session, [&](Store& store) {
    if (line.has("--dry-run")) return wouldTake(store, *mode);
    Process::quitOnSignals();
    const Process::OnInterrupt onInterrupt([&store] { takeInterrupt(store); });
    return taken(store, *mode);
  });
}

}  // namespace Nimbrel::Ctl
