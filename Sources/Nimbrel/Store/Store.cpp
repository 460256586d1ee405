#include "Store/Store.h"

#include "Foundation/FilePath.h"
#include "Model/AppIdentity.h"
#include "Platform/FileSystem.h"
#include "Store/BackgroundWork.h"
#include "Store/ReloadRun.h"
#include "Store/StoreOperation.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace Nimbrel {

using namespace std::chrono_literals;

namespace {

constexpr auto pollInterval = 2s;
constexpr auto rescanDelay = 900ms;
constexpr std::string_view catalogueFile = "nimbrel.sqlite";
const auto lastRecordingKey = QStringLiteral("lastRecordingPath");

}  // namespace

Result<std::unique_ptr<Store>> Store::open(StoreContext context) {
  std::unique_ptr<Store> store(new Store(std::move(context)));
  auto database = Database::open(FilePath::join(store->context_.folders.applicationSupport, catalogueFile));
  if (!database) return database.error();
  store->start(std::move(database).value());
  return store;
}

Result<std::unique_ptr<Store>> Store::openForCurrentUser(ProcessRole role, Services services,
                                                         std::function<bool()> isCompanionRunning) {
  const auto folders = UserFolders::ofCurrentUser();
  if (!folders) return Error{"The account has no home folder to keep the catalogue in"};
  return open({.role = role,
               .folders = *folders,
               .clock = [] { return Timestamp(std::chrono::system_clock::now()); },
               .services = std::move(services),
               .defaults = AppIdentity::openDefaults(folders->preferences),
               .isCompanionRunning = std::move(isCompanionRunning)});
}

Store::Store(StoreContext context)
    : context_(std::move(context)),
      settings_(*context_.defaults, context_.folders, *context_.services.screenshotTool),
      lastCapturedID_(storedCapturedID()),
      lastRecordingURL_(storedRecordingPath()),
      showMenuBar_(settings_.showMenuBar()),
      capture_(*context_.services.screenCaptureTool, this),
      hotkeys_(*context_.services.hotkeys) {
  pollTimer_.setInterval(pollInterval);
  connect(&pollTimer_, &QTimer::timeout, this, &Store::poll);
  pendingRescan_.setSingleShot(true);
  pendingRescan_.setInterval(rescanDelay);
  connect(&pendingRescan_, &QTimer::timeout, this, &Store::scan);
  connect(&settings_, &Settings::changed, this, [this](const QString& key) {
    if (key == settings_.protectSensitive.key()) lockSensitive();
    // What came while it was switched off waits for no scan.
    if (key == settings_.runOCR.key() && isBackgroundWorker()) startOCR();
  });
  connect(&sync_, &SyncRun::progressChanged, this, &Store::syncProgressChanged);
  connect(&sync_, &SyncRun::ended, this, &Store::endSync);
}

Store::~Store() = default;

void Store::start(std::unique_ptr<Database> database) {
  database_ = std::move(database);
  prepareWork();
  if (lastRecordingURL_ && !FileSystem::exists(*lastRecordingURL_)) setLastRecordingURL(std::nullopt);
  load();
  // The others are over before they could have seen an application come to the front.
  if (context_.role == ProcessRole::mainApplication || context_.role == ProcessRole::menuBarCompanion) {
    tracker_.emplace(*context_.services.frontApplication, context_.clock);
  }
  if (isBackgroundWorker()) startWorking();
  if (context_.role != ProcessRole::tool) pollTimer_.start();
}

void Store::startWorking() {
  watcher_.emplace(*context_.services.fileEvents, [this] { scheduleRescan(); });
  restartWatching();
  scan();
  rescanSensitive();
  // The headless pass is over before a press could reach it.
  if (context_.role == ProcessRole::menuBarCompanion) applyHotkeySetting();
}

void Store::poll() {
  const Operation operation(*this);
  const auto refreshed = settings_.refreshFromDisk();
  if (isBackgroundWorker() && refreshed.watch) {
    restartWatching();
    scan();
  }
  if (isBackgroundWorker()) {
    if (refreshed.hotkeys) applyHotkeySetting();
    hotkeys_.tryAgain();
  }
  if (showMenuBar_ != settings_.showMenuBar()) setShowMenuBar(settings_.showMenuBar());
  if (auto stored = storedRecordingPath(); stored != lastRecordingURL_) setLastRecordingURL(std::move(stored));
  if (database_->dataVersion() != stateRead_.othersVersion) reloadInTurns();
  work_->retryReading();
}

void Store::setSelection(ShotIDSet selection) {
  const Operation operation(*this);
  publish(selection_, std::move(selection), Fact::selection);
}

void Store::setStatus(std::string status) {
  const Operation operation(*this);
  publish(status_, std::move(status), Fact::status);
}

void Store::setLastRecordingURL(std::optional<std::string> path) {
  const Operation operation(*this);
  if (path) {
    context_.defaults->set(lastRecordingKey, QString::fromStdString(*path));
  } else {
    context_.defaults->remove(lastRecordingKey);
  }
  publish(lastRecordingURL_, std::move(path), Fact::lastRecordingURL);
}

std::optional<std::string> Store::storedRecordingPath() const {
  return PreferenceCodec<std::string>::decode(context_.defaults->value(lastRecordingKey));
}

void Store::setShowMenuBar(bool show) {
  const Operation operation(*this);
  publish(showMenuBar_, show, Fact::showMenuBar);
  if (settings_.showMenuBar() != show) settings_.showMenuBar.set(show);
}

std::size_t Store::inboxCount() const {
  return static_cast<std::size_t>(std::ranges::count_if(shots_, [](const ShotPtr& shot) { return !shot->filed; }));
}

std::size_t Store::sensitiveCount() const {
  return static_cast<std::size_t>(
      std::ranges::count_if(shots_, [](const ShotPtr& shot) { return !shot->sensitive.empty(); }));
}

void Store::note(Fact fact) { facts_.set(static_cast<std::size_t>(fact)); }

void Store::tell() {
  using Signal = void (Store::*)();
  static constexpr std::array<Signal, static_cast<std::size_t>(Fact::count)> signalOfFact{
      &Store::shotsChanged,
      &Store::derivedChanged,
      &Store::filterChanged,
      &Store::queryChanged,
      &Store::searchResultChanged,
      &Store::unlockedSensitiveIDsChanged,
      &Store::selectionChanged,
      &Store::tagsChanged,
      &Store::statusChanged,
      &Store::captureBusyChanged,
      &Store::recordingChanged,
      &Store::lastCapturedIDChanged,
      &Store::lastRecordingURLChanged,
      &Store::showRecordingToolsChanged,
      &Store::showPurgeChanged,
      &Store::showDuplicatesChanged,
      &Store::showShrinkChanged,
      &Store::showCleanupChanged,
      &Store::editRequestNonceChanged,
      &Store::showMenuBarChanged,
      &Store::shrinkProgressChanged,
  };
  static_assert(signalOfFact.size() <= mostFacts);
  const auto facts = std::exchange(facts_, {});
  for (std::size_t fact = 0; fact < signalOfFact.size(); ++fact) {
    if (facts.test(fact)) Q_EMIT(this->*signalOfFact[fact])();
  }
}

}  // namespace Nimbrel
