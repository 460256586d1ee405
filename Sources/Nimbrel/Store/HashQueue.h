#pragma once

#include "Catalogue/Database.h"
#include "Store/ShotBatch.h"

#include <QObject>
#include <QThreadPool>

#include <cstdint>
#include <string>

namespace Nimbrel {

/// Gives shots their perceptual hash in the background, one picture at a time at low priority, newest first. Main
/// thread; only the decoding runs elsewhere.
class HashQueue : public QObject {
  Q_OBJECT
 public:
  /// `database` is borrowed and must outlive the queue.
  explicit HashQueue(Database& database, QObject* parent = nullptr);
  /// Leaves what is still to be done pending, and waits for the picture at hand.
  ~HashQueue() override;

  [[nodiscard]] bool isRunning() const { return !batch_.isEmpty(); }

  /// Starts a batch of shots without a hash. Does nothing while one runs, or when none is pending.
  void start();
  /// The same for all of them, however many.
  void startAll();

 Q_SIGNALS:
  /// The batch is done, and another may be started.
  void finished();

 private:
  void start(int limit);
  void hashNext();
  void store(const std::string& path, std::int64_t hash);
  void passOn();

  Database& database_;
  ShotBatch batch_;
  QThreadPool pool_;
};

}  // namespace Nimbrel
