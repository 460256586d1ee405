#pragma once

#include "Catalogue/Database.h"
#include "Catalogue/Settings.h"
#include "Model/Models.h"
#include "Platform/PictureReader.h"
#include "Store/BatchEnd.h"
#include "Store/CatalogueState.h"
#include "Store/CodesQueue.h"
#include "Store/HashQueue.h"
#include "Store/ProcessRole.h"
#include "Store/ReadingQueue.h"

#include <QObject>

#include <cstddef>
#include <functional>
#include <optional>

namespace Nimbrel {

/// Decides when a process reads shots, looks for codes in them and hashes them, and does so batch by batch. What a
/// receiver does at once on a signal is done before the next batch begins. Main thread.
class BackgroundWork : public QObject {
  Q_OBJECT
 public:
  /// What it works with; all is borrowed and must outlive it.
  struct Tools {
    Database& database;
    PictureReader& reader;
    const Settings& settings;
  };
  /// Whether the catalogue may hold a shot for which the condition is true, as far as that can be told without a query:
  /// false only when it is certain that it holds none.
  using MayHold = std::function<bool(bool (*condition)(const ShotPtr&))>;

  BackgroundWork(const Tools& tools, ProcessRole role, MayHold mayHold);

  // In roles that end before their event loop, these do nothing unless workOff() has come before.

  /// Starts reading the shots without text, unless that is going on or switched off.
  void startReading();
  /// Starts looking for codes in the shots not looked at, unless that is going on. While text is read the codes wait:
  /// reading finds those of its shots as well.
  void startCodes();
  /// Starts hashing shots without a hash, unless that is going on.
  void startHashing();
  /// Starts reading again if the last batch could not be written. To be called at each poll: while a full disk keeps
  /// everything from being written, ever more polls are let pass between two batches, up to ten minutes.
  void retryReading();
  /// Does all of it in any role, until everything is done that can be; done() tells the end in a later turn of the
  /// event loop.
  void workOff();

  [[nodiscard]] bool isWorking() const;
  /// Shots of the running batch that are still to be read; 0 when none runs.
  [[nodiscard]] std::size_t remaining() const { return readingQueue_.remaining(); }

 Q_SIGNALS:
  void remainingChanged();
  /// A batch of text, of codes or of hashes has ended.
  void textEnded();
  void codesEnded();
  void hashesEnded();
  /// Nothing is left of what workOff() was asked for.
  void done();

 private:
  void goOnAfterText(BatchEnd end);
  void tellWhenDone();

  Database& database_;
  const Settings& settings_;
  MayHold mayHold_;
  ReadingQueue readingQueue_;
  CodesQueue codesQueue_;
  HashQueue hashQueue_;
  /// When the catalogue was last found without a shot that needs its codes.
  std::optional<CatalogueState> noCodesPending_;
  bool isAllowed_ = false;       ///< to start work in this process
  bool worksOff_ = false;        ///< workOff() was asked for and has not been answered
  bool codesWait_ = false;       ///< until text is read
  int pollsBetweenRetries_ = 0;  ///< 0 unless the last batch could not be written
  int pollsToRetry_ = 0;
};

}  // namespace Nimbrel
