#include "Foundation/FilePath.h"
#include "Foundation/Formats.h"
#include "Model/ShotFile.h"
#include "Platform/FileSystem.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace Nimbrel {

namespace {

const auto lastCapturedKey = QStringLiteral("lastCapturedID");
constexpr std::string_view recordingsFolder = "Recordings";
/// How long a compositor may take until a window that was hidden is off the screen.
constexpr std::chrono::milliseconds hidingTime(150);

std::string captureName(CaptureMode mode, Timestamp date) {
  return (isRecording(mode) ? "Recording " : "Screenshot ") + Formats::date(date, u"yyyy-MM-dd 'at' HH.mm.ss") +
         (isRecording(mode) ? ".mov" : ".png");
}

std::string statusWithoutFile(int exitStatus) {
  return exitStatus == 0 ? "Capture cancelled" : "Capture failed; check screen recording permission";
}

}  // namespace

/// One capture, from the end of its delay on. What it tells the tool to call holds it.
class Store::CaptureRun {
 public:
  CaptureRun(Store& store, CaptureMode mode, CaptureDestination destination, Panel panel)
      : store_(store), mode_(mode), destination_(destination), panel_(panel) {}

  void begin() {
    application_ = store_.currentCaptureApplication();
    auto path = makeCaptureURL();
    if (path) {
      path_ = std::move(path).value();
      runCapture();
    } else {
      store_.capture_.giveUp();
      fail(path.error());
    }
  }

 private:
  [[nodiscard]] Result<std::string> makeCaptureURL() const;
  void runCapture();
  void fail(const Error& error) const;
  void end(int exitStatus) const;
  void unhide() const;
  void presentFreshCapture() const;
  [[nodiscard]] Shot freshShot() const;
  void showFirst(ShotID id) const;

  Store& store_;
  CaptureMode mode_;
  CaptureDestination destination_;
  Panel panel_;
  std::string path_;
  bool wasTaken_ = false;    ///< somebody's file stands there, which the tool leaves alone
  Application application_;  ///< in front when it was begun
};

void Store::capture(CaptureMode mode, Panel panel) {
  CaptureRun run(*this, mode, settings_.captureDestination(), panel);
  std::chrono::milliseconds delay = std::chrono::seconds(settings_.captureDelay());
  if (panel == Panel::Dismiss) delay = std::max(delay, hidingTime);
  if (!capture_.accept(delay, [run = std::move(run)]() mutable { run.begin(); })) return;
  publishCapture();
  if (panel == Panel::Dismiss) Q_EMIT hidingRequested();
}

Result<std::string> Store::CaptureRun::makeCaptureURL() const {
  auto path = store_.captureLocation(mode_, destination_);
  if (auto failure = store_.makeFolder(std::string(FilePath::folder(path)))) return std::move(*failure);
  return path;
}

void Store::CaptureRun::runCapture() {
  const Operation operation(store_);
  wasTaken_ = FileSystem::exists(path_);
  const auto failure = store_.capture_.launch(mode_, path_, [run = *this](int exitStatus) { run.end(exitStatus); });
  if (failure) return fail(*failure);
  store_.publishCapture();
  if (isRecording(mode_)) store_.setStatus("Recording — use Stop Recording in the menu bar when done");
}

void Store::CaptureRun::fail(const Error& error) const {
  const Operation operation(store_);
  store_.publishCapture();
  store_.setStatus("Capture failed: " + error.message);
  unhide();
}

void Store::CaptureRun::end(int exitStatus) const {
  const Operation operation(store_);
  store_.publishCapture();
  unhide();
  if (wasTaken_ || !FileSystem::exists(path_)) return store_.setStatus(statusWithoutFile(exitStatus));
  if (!isRecording(mode_)) return presentFreshCapture();
  store_.setLastRecordingURL(path_);
  store_.setStatus("Recording saved to " + std::string(FilePath::lastComponent(FilePath::folder(path_))));
}

void Store::CaptureRun::unhide() const {
  if (panel_ == Panel::Dismiss) Q_EMIT store_.unhidingRequested();
}

void Store::CaptureRun::presentFreshCapture() const {
  const auto shot = freshShot();
  const auto id = store_.database_->insert(shot);
  if (id == 0) return store_.setStatus("Captured, but Nimbrel could not add it to the catalogue");
  // A watcher may have been sooner with the row, and could only guess.
  if (!shot.appName.empty()) {
    store_.database_->setApp(id, shot.appName, shot.bundleID, Database::Trusted::Yes);
  }
  showFirst(id);
  store_.setSelection({id});
  store_.publish(store_.lastCapturedID_, std::optional(id), Fact::lastCapturedID);
  store_.context_.defaults->set(lastCapturedKey, qint64{id});
  if (const auto fresh = store_.lastCapturedShot()) Q_EMIT store_.freshShotArrived(*fresh);
  store_.setStatus(shot.appName.empty() ? "Captured" : "Captured from " + shot.appName);
  // In a later turn, so that the capture is seen before a large catalogue is read again.
  QMetaObject::invokeMethod(&store_, &Store::takeInCapture, Qt::QueuedConnection);
}

Shot Store::CaptureRun::freshShot() const {
  auto shot = store_.newShot(path_, store_.filedByPlace(path_));
  shot.appName = application_.name;
  shot.bundleID = application_.bundleID;
  shot.appAttributionTrusted = !application_.name.empty();
  return shot;
}

void Store::CaptureRun::showFirst(ShotID id) const {
  // The row and not what was inserted: what others have found in it by now, as that it is sensitive, counts.
  auto row = store_.database_->shot(id);
  if (!row) return;
  auto shots = store_.shots_;
  const auto known = std::ranges::find_if(
      shots, [&](const ShotPtr& other) { return other->id == row->id || other->path == row->path; });
  const auto place = known == shots.end() ? shots.insert(shots.begin(), nullptr) : known;
  *place = std::make_shared<const Shot>(std::move(*row));
  store_.publish(store_.shots_, std::move(shots), Fact::shots);
}

void Store::takeInCapture() {
  const Operation operation(*this);
  reload();
  startOCR();
  startHashing();
  startCodes();
}

void Store::publishCapture() {
  const Operation operation(*this);
  publish(captureBusy_, capture_.isBusy(), Fact::captureBusy);
  publish(recording_, capture_.isRecording(), Fact::recording);
}

std::string Store::captureLocation(CaptureMode mode, CaptureDestination destination) const {
  const auto name = captureName(mode, now());
  if (destination == CaptureDestination::library) {
    return ShotFile::uniqueURL(isRecording(mode)
                                   ? FilePath::join(FilePath::join(settings_.libraryFolder(), recordingsFolder), name)
                                   : settings_.libraryLocation(now(), name));
  }
  const auto sources = settings_.sourceFolders();
  const auto folder = sources.empty()
                          ? Settings::systemScreenshotFolder(context_.folders, *context_.services.screenshotTool)
                          : sources.front();
  return ShotFile::uniqueURL(FilePath::join(folder, name));
}

std::optional<ShotPtr> Store::lastCapturedShot() const {
  const auto found = std::ranges::find_if(shots_, [this](const ShotPtr& shot) { return shot->id == lastCapturedID_; });
  return found == shots_.end() ? std::nullopt : std::optional(*found);
}

void Store::revealLastRecording() {
  if (lastRecordingURL_) context_.services.workspace->reveal(*lastRecordingURL_);
}

void Store::undoLastCapture() {
  const auto shot = lastCapturedShot();
  if (!shot) return;
  context_.defaults->remove(lastCapturedKey);
  trash({*shot});
}

std::optional<ShotID> Store::storedCapturedID() const {
  const auto stored = context_.defaults->value(lastCapturedKey);
  return stored.isDouble() ? std::optional<ShotID>(stored.toInteger()) : std::nullopt;
}

void Store::requestEdit(const ShotPtr& shot) {
  withAccess({shot}, [this, id = shot->id] {
    {
      const Operation operation(*this);
      setSelection({id});
      setFilter({Filter::All{}});
      editRequestShotID_ = id;
      publish(editRequestNonce_, QUuid::createUuid(), Fact::editRequestNonce);
    }
    Q_EMIT windowRequested();
  });
}

}  // namespace Nimbrel
