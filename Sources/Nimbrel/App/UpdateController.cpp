#include "App/UpdateController.h"

#include "Foundation/Background.h"
#include "Foundation/FilePath.h"
#include "Foundation/Log.h"
#include "Updates/SavedDownload.h"
#include "Updates/SignatureText.h"
#include "Updates/UpdateSchedule.h"

#include <chrono>
#include <utility>

namespace Nimbrel {

namespace {

// Often enough to notice that a day has gone by, also one in which the machine slept.
constexpr std::chrono::hours betweenLooksAtTheClock{1};
const auto lastCheckKey = QStringLiteral("lastUpdateCheck");
const auto skippedKey = QStringLiteral("skippedUpdate");

std::optional<Timestamp> lastCheckIn(const Defaults& defaults) {
  const auto value = defaults.value(lastCheckKey);
  return value.isDouble() ? std::optional(timestamp(value.toDouble())) : std::nullopt;
}

}  // namespace

UpdateController::UpdateController(UpdateSettings settings, Store& store, Workspace& workspace, Means means)
    : settings_(std::move(settings)), store_(store), workspace_(workspace), means_(std::move(means)) {
  if (!settings_.isConfigured(ProcessRole::mainApplication)) return;
  connect(&hourly_, &QTimer::timeout, this, &UpdateController::checkIfDue);
  hourly_.setTimerType(Qt::VeryCoarseTimer);
  hourly_.start(betweenLooksAtTheClock);
  QTimer::singleShot(means_.untilFirstLook, this, &UpdateController::checkIfDue);
}

UpdateController::~UpdateController() = default;

void UpdateController::checkForUpdates() {
  if (!settings_.isConfigured(ProcessRole::mainApplication)) {
    return store_.setStatus("No updates are set up for this build");
  }
  check(Asker::User);
}

void UpdateController::checkIfDue() {
  // Whoever has asked is to be told.
  if (isLooking_) return;
  if (isUpdateCheckDue(lastCheckIn(defaults()), store_.now())) check(Asker::Schedule);
}

void UpdateController::check(Asker asker) {
  // Before anything is asked: a server that does not answer is left alone for a day as well.
  defaults().set(lastCheckKey, secondsSince1970(store_.now()));
  const auto key = publicKeyFrom(settings_.publicKey);
  const auto running = Version::parse(means_.version);
  if (!key || !running) return fail(asker, {"this build has a damaged key"});
  if (asker == Asker::User) store_.setStatus("Checking for updates…");
  UpdateSource source{.feedURL = settings_.feedURL, .key = *key, .running = *running};
  if (asker == Asker::Schedule) source.skipped = defaults().value(skippedKey).toString().toStdString();
  look_ = std::make_unique<QObject>();
  isLooking_ = true;
  lookForUpdate(fetcher(), std::move(source), look_.get(),
                [this, asker](const UpdateOutcome& outcome) { take(asker, outcome); });
}

void UpdateController::take(Asker asker, const UpdateOutcome& outcome) {
  isLooking_ = false;
  if (!outcome) return fail(asker, outcome.error());
  const auto& update = outcome.value();
  if (asker == Asker::User) {
    store_.setStatus(update ? "Nimbrel " + update->offer.version + " is available"
                            : "Nimbrel " + means_.version + " is the newest version");
  }
  if (update) Q_EMIT updateFound(*update);
}

void UpdateController::fail(Asker asker, const Error& error) {
  const auto words = "Update check failed: " + error.message;
  if (asker == Asker::User) return store_.setStatus(words);
  Log::write(words);
}

void UpdateController::save(const VerifiedUpdate& update) {
  const auto write = [update, folder = means_.downloads] { return saveDownload(update, folder); };
  inBackground(this, *QThreadPool::globalInstance(), write, [this](const Result<std::string>& path) {
    if (!path) return store_.setStatus("The update could not be saved: " + path.error().message);
    store_.setStatus("Saved " + std::string(FilePath::lastComponent(path.value())));
    workspace_.reveal(path.value());
  });
}

void UpdateController::skip(const VerifiedUpdate& update) {
  defaults().set(skippedKey, QString::fromStdString(update.offer.version));
}

HttpsFetcher& UpdateController::fetcher() {
  if (!fetcher_) fetcher_ = means_.makeFetcher();
  return *fetcher_;
}

Defaults& UpdateController::defaults() {
  if (!defaults_) defaults_ = means_.openDefaults();
  defaults_->synchronize();
  return *defaults_;
}

}  // namespace Nimbrel
