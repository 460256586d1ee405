#include "Store/CaptureControl.h"

#include <utility>

namespace Nimbrel {

CaptureControl::CaptureControl(ScreenCaptureTool& tool, QObject* parent) : QObject(parent), tool_(tool) {
  delay_.setObjectName(QStringLiteral("captureDelay"));
  delay_.setSingleShot(true);
  // A countdown is watched by whoever asked for it.
  delay_.setTimerType(Qt::PreciseTimer);
  connect(&delay_, &QTimer::timeout, this, [this] { std::exchange(afterDelay_, nullptr)(); });
}

CaptureControl::~CaptureControl() = default;

bool CaptureControl::accept(std::chrono::milliseconds delay, std::function<void()> then) {
  if (isBusy_) return false;
  isBusy_ = true;
  afterDelay_ = std::move(then);
  delay_.start(delay);
  return true;
}

std::optional<Error> CaptureControl::launch(CaptureMode mode, const std::string& path, ScreenCaptureTool::Then then) {
  auto running = tool_.launch(this, captureArguments(mode, path), [this, then = std::move(then)](int exitStatus) {
    end();
    then(exitStatus);
  });
  if (!running) {
    end();
    return running.error();
  }
  // A picture is given up in the program itself, so nobody here needs to reach it.
  if (Nimbrel::isRecording(mode)) recording_ = std::move(running).value();
  return std::nullopt;
}

void CaptureControl::stopRecording() {
  if (recording_) recording_->interrupt();
}

void CaptureControl::end() {
  isBusy_ = false;
  recording_.reset();
}

}  // namespace Nimbrel
