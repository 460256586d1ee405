#pragma once

#include "App/UpdateSettings.h"
#include "Platform/Defaults.h"
#include "Platform/HttpsFetcher.h"
#include "Platform/Workspace.h"
#include "Store/Store.h"
#include "Updates/UpdateCheck.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace Nimbrel {

/// Looks for updates, once a day and when the user asks for it, and never installs one. A build without updates asks
/// for none of its means and so opens no connection. Main thread, in the process of the window alone.
class UpdateController final : public QObject {
  Q_OBJECT

 public:
  /// What it works with, asked for when it is first needed.
  struct Means {
    std::function<std::unique_ptr<HttpsFetcher>()> makeFetcher;
    std::function<std::unique_ptr<Defaults>()> openDefaults;  ///< keeps when it looked last, and what was skipped
    std::string version;                                      ///< of this program
    std::string downloads;                                    ///< the folder that updates are saved to
    std::chrono::milliseconds untilFirstLook{0};              ///< after the start, which a look would hold up
  };

  /// Store and workspace must outlive it. A released build takes its first look by itself, if one is due.
  UpdateController(UpdateSettings settings, Store& store, Workspace& workspace, Means means);
  ~UpdateController() override;

  /// Looks now, in place of a look that goes on, and says in the Store's status what comes of it.
  void checkForUpdates();

  /// Saves the download where the user finds it, and shows it there.
  void save(const VerifiedUpdate& update);

  /// Keeps silent about that version, until the user asks.
  void skip(const VerifiedUpdate& update);

 Q_SIGNALS:
  /// There is one that the user may want.
  void updateFound(const Nimbrel::VerifiedUpdate& update);

 private:
  enum class Asker { User, Schedule };

  void checkIfDue();
  void check(Asker asker);
  void take(Asker asker, const UpdateOutcome& outcome);
  void fail(Asker asker, const Error& error);
  HttpsFetcher& fetcher();
  Defaults& defaults();

  UpdateSettings settings_;
  Store& store_;
  Workspace& workspace_;
  Means means_;
  QTimer hourly_;
  std::unique_ptr<Defaults> defaults_;
  std::unique_ptr<HttpsFetcher> fetcher_;
  std::unique_ptr<QObject> look_;  ///< the last one; it goes on, if it does, as long as this lives
  bool isLooking_ = false;
};

}  // namespace Nimbrel
