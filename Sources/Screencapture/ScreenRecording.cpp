#include "Screencapture/ScreenRecording.h"

#include "Screencapture/RecordingThread.h"
#include "Screencapture/RegionFrame.h"
#include "Screencapture/StopControl.h"
#include "Screencapture/UnexpectedExit.h"

#include <QGuiApplication>

#include <chrono>
#include <csignal>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

using Clock = std::chrono::steady_clock;
using Subject = CaptureRequest::Subject;

constexpr int frameThickness = 2;

QRect withEvenSize(const QRect& area) { return {area.topLeft(), QSize(area.width() & ~1, area.height() & ~1)}; }

RecordingThread::Plan planOf(const QRect& area, const CaptureRequest& request) {
  return {area, request.path, request.subject == Subject::mainScreen ? "display" : "selection"};
}

class X11Recording final : public QObject, public ScreenRecording {
 public:
  X11Recording(QObject* context, const QRect& area, const CaptureRequest& request, Then then);

  void stop() override;

 private:
  void begin(Clock::time_point time);
  void end(std::optional<Error> failure);
  void takeAwaySigns();
  void giveUp();

  QRect area_;
  Subject subject_;
  Then then_;
  bool isStopping_ = false;
  std::unique_ptr<RegionFrame> frame_;
  std::unique_ptr<StopControl> control_;
  std::unique_ptr<RecordingThread> thread_;
  std::unique_ptr<UnexpectedExit> exit_;
};

X11Recording::X11Recording(QObject* context, const QRect& area, const CaptureRequest& request, Then then)
    : area_(withEvenSize(area)), subject_(request.subject), then_(std::move(then)) {
  // A display that has just gone away is written to once more.
  std::signal(SIGPIPE, SIG_IGN);
  connect(context, &QObject::destroyed, this, &X11Recording::giveUp);
  const auto inMainThread = [this](auto call) {
    QMetaObject::invokeMethod(this, std::move(call), Qt::QueuedConnection);
  };
  thread_ = std::make_unique<RecordingThread>(
      planOf(area_, request),
      RecordingThread::Events{
          .began = [this, inMainThread] { inMainThread([this, time = Clock::now()] { begin(time); }); },
          .ended = [this, inMainThread](
                       const std::optional<Error>& failure) { inMainThread([this, failure] { end(failure); }); }});
  exit_ = std::make_unique<UnexpectedExit>([this] { return thread_->finish() ? Failed : Done; });
}

void X11Recording::begin(Clock::time_point time) {
  if (isStopping_) return;
  if (subject_ == Subject::selection) {
    frame_ = std::make_unique<RegionFrame>(area_, static_cast<int>(frameThickness * qGuiApp->devicePixelRatio()));
  }
  control_ = std::make_unique<StopControl>(
      [time] { return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - time); });
  connect(control_.get(), &StopControl::stopRequested, this, &X11Recording::stop, Qt::QueuedConnection);
  control_->showBeside(area_);
}

void X11Recording::stop() {
  isStopping_ = true;
  takeAwaySigns();
  if (thread_) thread_->stop();
}

void X11Recording::takeAwaySigns() {
  control_.reset();
  frame_.reset();
}

void X11Recording::end(std::optional<Error> failure) {
  takeAwaySigns();
  if (const auto then = std::exchange(then_, nullptr)) then(std::move(failure));
}

void X11Recording::giveUp() {
  then_ = nullptr;
  isStopping_ = true;
  takeAwaySigns();
  exit_.reset();
  thread_.reset();
}

}  // namespace

std::unique_ptr<ScreenRecording> recordScreen(QObject* context, const QRect& area, const CaptureRequest& request,
                                              ScreenRecording::Then then) {
  return std::make_unique<X11Recording>(context, area, request, std::move(then));
}

}  // namespace Nimbrel::Screencapture
