#pragma once

#include "Catalogue/ShotReading.h"
#include "Store/CatalogueState.h"
#include "Store/DerivedState.h"
#include "Store/UnlockedShots.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace Nimbrel {

/// What the owner's consent comes to at a moment: by it follows which shots are locked.
struct Protection {
  bool isOn = true;
  UnlockedShots unlocked;

  [[nodiscard]] bool covers(const Shot& shot) const {
    return isOn && !shot.sensitive.empty() && !unlocked.contains(shot);
  }
  bool operator==(const Protection&) const = default;
};

/// What a reload finds.
struct Reloaded {
  CatalogueState state;  ///< as of the beginning
  ShotList shots;
  std::vector<std::string> tags;
  Protection protection;  ///< that `derived` was worked out with
  std::shared_ptr<DerivedState> derived;
  bool hasDerivedChanged = false;
};

/// The tags of the shots but those of projects, in the order of their code points.
[[nodiscard]] std::vector<std::string> tagsOf(const ShotList& shots);

/// Reads a catalogue, a large one without holding the thread up: rows in short stretches, with everything that is
/// waiting between two of them, and what derives from them in another thread. Deleted, it gives up. Main thread.
class ReloadRun final : public QObject {
  Q_OBJECT

 public:
  /// All is borrowed and must stay as it is until the run is over; `former` are the shots there have been so far.
  ReloadRun(const Database& database, const ShotList& former);
  /// There have been none.
  explicit ReloadRun(const Database& database);

  /// Reads for as long as a turn of the event loop may take. True when that was all.
  [[nodiscard]] bool readFirst();
  /// Blocks until all is read.
  void readAll() { reading_.readAll(); }
  /// What has been read so far.
  [[nodiscard]] const CatalogueState& state() const { return state_; }
  [[nodiscard]] const ShotList& shots() const { return reading_.shots(); }
  [[nodiscard]] ShotList take() { return reading_.take(); }
  /// Reads the rest in later turns, not before the pause is over, and tells when that is done.
  void readOn(std::chrono::milliseconds pause);
  /// Once all is read: works the result out for what derived from the former shots, and tells it.
  void derive(Protection protection, std::shared_ptr<const DerivedState> former);

 Q_SIGNALS:
  void read();
  /// The result may be moved from.
  void derived(Nimbrel::Reloaded& result);

 private:
  void readStretch();

  CatalogueState state_;  // read before the rows: a commit in between is then seen as a change rather than missed
  ShotReading reading_;
  QTimer turns_;
};

}  // namespace Nimbrel
