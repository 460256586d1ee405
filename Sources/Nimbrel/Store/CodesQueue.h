#pragma once

#include "Catalogue/Database.h"
#include "Platform/PictureReader.h"
#include "Store/ShotBatch.h"

#include <QObject>

#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// Finds the codes of shots in the background where text recognition has not: it may be switched off. Newest first, up
/// to 400 at a time. A shot whose file is gone or cannot be read has none. Main thread, which is free between any two
/// shots; the reading itself runs elsewhere.
class CodesQueue : public QObject {
  Q_OBJECT
 public:
  /// Both are borrowed and must outlive the queue.
  CodesQueue(Database& database, PictureReader& reader, QObject* parent = nullptr);

  [[nodiscard]] bool isRunning() const { return !batch_.isEmpty(); }

  /// Starts a batch of shots that were not looked at. Does nothing while one runs, or when none is pending.
  void start();
  /// The same for all of them, however many.
  void startAll();

 Q_SIGNALS:
  /// The batch is written, as far as pictures can be looked at, and another may be started.
  void finished();

 private:
  void start(int limit);
  void takeNextLater();
  void takeNext();
  void take(const std::string& path, const std::optional<std::vector<std::string>>& codes);
  void write(const std::vector<std::string>& codes);
  void passOn();
  void end();

  Database& database_;
  PictureReader& reader_;
  ShotBatch batch_;
};

}  // namespace Nimbrel
