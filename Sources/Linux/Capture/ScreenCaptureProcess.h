#pragma once

#include "Platform/ScreenCaptureTool.h"

#include <chrono>
#include <memory>
#include <string>

namespace Nimbrel {

struct ScreenCaptureProcessOptions {
  std::string program;  ///< where nimbrel-screencapture lies
  /// How long the program may take to end by itself once it was interrupted.
  std::chrono::milliseconds patience = std::chrono::seconds(5);
  /// The same for a recording, which is copied into a plain file at its end: minutes of it fill gigabytes.
  std::chrono::milliseconds patienceWithRecordings = std::chrono::minutes(2);
  /// How long it may take from the request to terminate, which follows, until it is killed.
  std::chrono::milliseconds lastPatience = std::chrono::seconds(2);
};

/// Takes captures in the child process nimbrel-screencapture, which runs on when its RunningCapture is gone. It is to
/// hear of the end of this process by itself and then to finish what it records: a recording ends with the application
/// and its file is kept. What it says about failures goes to our standard error. Needs a QCoreApplication.
[[nodiscard]] std::unique_ptr<ScreenCaptureTool> makeScreenCaptureProcess(ScreenCaptureProcessOptions options);

/// With the program beside this one, or where it is installed.
[[nodiscard]] std::unique_ptr<ScreenCaptureTool> makeScreenCaptureProcess();

}  // namespace Nimbrel
