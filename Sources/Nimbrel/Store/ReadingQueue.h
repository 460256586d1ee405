#pragma once

#include "Analysis/OCR.h"
#include "Catalogue/Database.h"
#include "Platform/PictureReader.h"
#include "Store/BatchEnd.h"
#include "Store/ShotBatch.h"

#include <QObject>

#include <cstddef>
#include <optional>
#include <string>

namespace Nimbrel {

/// Reads text and codes of shots in the background, one shot after the other, newest first, and writes what was found:
/// text, codes, kinds of sensitive data. A shot whose file is gone or cannot be read is done with empty text. What is
/// left when the process ends stays pending. Main thread, which is free between any two shots; the reading itself runs
/// elsewhere.
class ReadingQueue : public QObject {
  Q_OBJECT
 public:
  /// Both are borrowed and must outlive the queue.
  ReadingQueue(Database& database, PictureReader& reader, QObject* parent = nullptr);

  [[nodiscard]] bool isRunning() const { return !batch_.isEmpty(); }
  /// How many shots of the batch are still to be read; 0 when none runs, and never more than 200.
  [[nodiscard]] std::size_t remaining() const { return batch_.remaining(); }

  /// Starts a batch of shots without text. Does nothing while one runs, or when none is pending.
  void start();

 Q_SIGNALS:
  void remainingChanged();
  /// The batch is written, and another may be started.
  void finished(BatchEnd end);

 private:
  void takeNextLater();
  void takeNext();
  void take(const std::string& path, const std::optional<OCR::RecognitionWithBarcodes>& read);
  void write(const OCR::RecognitionWithBarcodes& read);
  void passOn();
  void end(BatchEnd end);

  Database& database_;
  PictureReader& reader_;
  ShotBatch batch_;
  bool hasProgress_ = false;
};

}  // namespace Nimbrel
