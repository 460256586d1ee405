#pragma once

#include "Foundation/Result.h"
#include "Platform/Workspace.h"

#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace Nimbrel {

class Store;

/// What is to be made of a recording: a shorter movie, or a GIF where it has a number of frames a second. Times are
/// seconds.
struct ExportRequest {
  std::string url;
  double start = 0;
  double end = 0;
  bool removeSilence = false;
  std::optional<int> fps;
};

/// An export that runs. It deletes itself in the turn after it has told how it ended, and owes nothing to who watches
/// it. Main thread.
class RecordingExport final : public QObject {
  Q_OBJECT

 public:
  /// From 0 to 1.
  [[nodiscard]] double share() const { return share_->load(); }

 Q_SIGNALS:
  /// The file is there, and the Store and the desktop know of it.
  void succeeded();
  /// Why nothing was made, in words for people.
  void failed(const std::string& message);

 private:
  friend class RecordingExports;
  explicit RecordingExport(QObject* parent) : QObject(parent) {}

  /// Written by the thread that works.
  std::shared_ptr<std::atomic<double>> share_ = std::make_shared<std::atomic<double>>(0);
};

/// Runs the exports that the tools of a recording ask for, which go on when those are closed, and does what follows
/// from their success: a movie becomes the last recording, the status names the file, and the file manager shows it.
/// Main thread.
class RecordingExports final : public QObject {
  Q_OBJECT

 public:
  /// Both must outlive it.
  RecordingExports(Store& store, Workspace& workspace);
  /// Stops what runs and waits for that; it leaves no file behind.
  ~RecordingExports() override;

  /// Begins one; its end is told in a later turn of the event loop. It belongs to this object.
  RecordingExport* begin(const ExportRequest& request);

  /// Calls it once no export runs: at once, or when the last one has told how it ended. Asked again before that, only
  /// the newer one is called.
  void whenDone(std::function<void()> then);

  /// Threads for looking at recordings, with nothing else that could hold them up: who closes the tools does not wait
  /// for what they read, only the end of this object does.
  [[nodiscard]] QThreadPool& readers() { return readers_; }

 private:
  void end(RecordingExport& run, const ExportRequest& request, const Result<std::string>& outcome);
  void publish(const std::string& path, const ExportRequest& request);

  Store& store_;
  Workspace& workspace_;
  std::stop_source stop_;
  QThreadPool pool_;
  QThreadPool readers_;
  int running_ = 0;
  std::function<void()> then_;  ///< what waits for the last one; may be empty
};

}  // namespace Nimbrel
