#include "Store/SyncRun.h"

#include "Foundation/Background.h"
#include "Foundation/Wipe.h"
#include "Platform/Crypto.h"
#include "Platform/Process.h"

#include <memory>
#include <utility>

namespace Nimbrel {

namespace {

/// A copy of a text, wiped in the end.
class Secret {
 public:
  explicit Secret(std::string_view text) : text_(text) {}
  ~Secret() { wipe(text_); }
  Secret(const Secret&) = delete;
  Secret& operator=(const Secret&) = delete;

  [[nodiscard]] std::string_view text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace

SyncRun::SyncRun(QObject* parent) : QObject(parent) { pool_.setMaxThreadCount(1); }

SyncRun::~SyncRun() {
  stop_.request_stop();
  pool_.waitForDone();
}

void SyncRun::start(std::string library, std::string vault, std::string_view passphrase) {
  if (++unfinished_ == 1) publish(SyncProgress());
  inBackground(
      this, pool_,
      [library = std::move(library), vault = std::move(vault), secret = std::make_shared<const Secret>(passphrase),
       report = reporter(), stop = stop_.get_token()]() mutable -> Result<SyncResult> {
        Process::lowerThreadPriority();
        if (stop.stop_requested()) return Error{};
        auto result = EncryptedSync::run(library, vault, secret->text(), report, stop);
        secret.reset();
        // The program may end before the thread does: a pool waits for its work alone.
        Crypto::releaseThread();
        return result;
      },
      [this](const Result<SyncResult>& result) { end(result); });
}

/// Called on the thread of the run, for every file; what goes to the main thread is each hundredth part.
EncryptedSync::Progress SyncRun::reporter() {
  return [this, told = SyncProgress()](std::size_t done, std::size_t all) mutable {
    constexpr std::size_t parts = 100;
    if (all == 0 || (all == told.all && done * parts / all == told.done * parts / all)) return;
    told = {done, all};
    QMetaObject::invokeMethod(
        this, [this, told] { publish(told); }, Qt::QueuedConnection);
  };
}

void SyncRun::publish(std::optional<SyncProgress> progress) {
  if (progress_ == progress) return;
  progress_ = progress;
  Q_EMIT progressChanged();
}

void SyncRun::end(const Result<SyncResult>& result) {
  publish(--unfinished_ == 0 ? std::nullopt : std::optional(SyncProgress()));
  Q_EMIT ended(result);
}

}  // namespace Nimbrel
