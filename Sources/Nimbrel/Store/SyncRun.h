#pragma once

#include "Foundation/Result.h"
#include "Sync/EncryptedSync.h"

#include <QObject>
#include <QThreadPool>

#include <cstddef>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>

namespace Nimbrel {

/// How far an exchange with the vault is. Files in all grow once the vault is through.
struct SyncProgress {
  std::size_t done = 0;
  std::size_t all = 0;

  bool operator==(const SyncProgress&) const = default;
};

/// Exchanges library and vault in the background, at low priority. One run at a time: what is asked for meanwhile
/// waits. Main thread.
class SyncRun : public QObject {
  Q_OBJECT
 public:
  explicit SyncRun(QObject* parent = nullptr);
  /// Ends a run after the file at hand, and waits for that; those that wait for it do not begin.
  ~SyncRun() override;

  /// Starts a run over the two folders. The passphrase is copied, and the copy wiped after the run.
  void start(std::string library, std::string vault, std::string_view passphrase);

  /// Of the run under way; absent when none is. Told about a hundred times a run at most.
  [[nodiscard]] const std::optional<SyncProgress>& progress() const { return progress_; }

 Q_SIGNALS:
  void progressChanged();
  /// Once for each start(), in the order of these, always in a later turn of the event loop.
  void ended(const Nimbrel::Result<Nimbrel::SyncResult>& result);

 private:
  [[nodiscard]] EncryptedSync::Progress reporter();
  void publish(std::optional<SyncProgress> progress);
  void end(const Result<SyncResult>& result);

  std::optional<SyncProgress> progress_;
  std::size_t unfinished_ = 0;  ///< runs that were started and have not ended
  std::stop_source stop_;
  QThreadPool pool_;
};

}  // namespace Nimbrel
