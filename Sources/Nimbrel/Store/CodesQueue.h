#pragma once

#include "Catalogue/Database.h"
#include "Model/Models.h"
#include "Platform/PictureReader.h"

#include <QObject>

#include <cstddef>

namespace Nimbrel {

/// Finds the codes of shots in the background where text recognition has not: it may be switched off. Newest first, up
/// to 400 at a time. Main thread; the reading itself runs elsewhere.
class CodesQueue : public QObject {
  Q_OBJECT
 public:
  /// Both are borrowed and must outlive the queue.
  CodesQueue(Database& database, PictureReader& reader, QObject* parent = nullptr);

  [[nodiscard]] bool isRunning() const { return !batch_.empty(); }

  /// Starts a batch of shots that were not looked at. Does nothing while one runs, or when none is pending.
  void start();

 Q_SIGNALS:
  /// The batch is done and written, and another may be started.
  void finished();

 private:
  Database& database_;
  PictureReader& reader_;
  ShotList batch_;
  std::size_t next_ = 0;
};

}  // namespace Nimbrel
