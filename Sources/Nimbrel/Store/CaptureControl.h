#pragma once

#include "Foundation/Result.h"
#include "Model/CaptureOptions.h"
#include "Platform/ScreenCaptureTool.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel {

/// One capture at a time, from the request over the delay to the end of the program that takes it. A capture under way
/// outlives this object; what becomes of it is then told to nobody. Main thread.
class CaptureControl : public QObject {
 public:
  /// `tool` is borrowed and must outlive the object.
  CaptureControl(ScreenCaptureTool& tool, QObject* parent);
  ~CaptureControl() override;

  /// Accepts a capture and calls `then` after the delay, in a later turn of the event loop; whoever is called goes on
  /// with launch() or giveUp(). False, and nothing happens, while another is busy.
  [[nodiscard]] bool accept(std::chrono::milliseconds delay, std::function<void()> then);

  /// Starts what was accepted. `then` comes with the exit status once the program has ended, and this is idle by that
  /// time. The error says why it could not be started, and this is idle then too.
  [[nodiscard]] std::optional<Error> launch(CaptureMode mode, const std::string& path, ScreenCaptureTool::Then then);

  /// Forgets what was accepted and not launched.
  void giveUp() { isBusy_ = false; }

  /// Asks the recording to end, if one runs.
  void stopRecording();

  /// From the request to the end.
  [[nodiscard]] bool isBusy() const { return isBusy_; }
  /// While the program runs that records.
  [[nodiscard]] bool isRecording() const { return recording_ != nullptr; }

 private:
  void end();

  ScreenCaptureTool& tool_;
  QTimer delay_{this};
  std::function<void()> afterDelay_;
  bool isBusy_ = false;
  std::unique_ptr<RunningCapture> recording_;
};

}  // namespace Nimbrel
