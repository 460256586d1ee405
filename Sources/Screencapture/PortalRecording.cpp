#include "Screencapture/PortalRecording.h"

#include "Foundation/Background.h"
#include "Screencapture/FrameRoll.h"
#include "Screencapture/PipeWireFrames.h"
#include "Screencapture/PortalScreenCast.h"
#include "Screencapture/StopControl.h"
#include "Screencapture/UnexpectedExit.h"

#include <chrono>
#include <csignal>
#include <utility>

namespace Nimbrel::Screencapture {

using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto longestWaitForSound = 500ms;

class PortalRecording final : public QObject, public Capture {
 public:
  PortalRecording(CaptureRequest request, Then then);
  ~PortalRecording() override;

  void begin();
  void interrupt() override;

 private:
  void hear(const ScreenCastAnswer& answer);
  void record(const ScreenCastStream& stream);
  void look(const QImage& frame);
  void showControl();
  int finishAtExit();
  void stop(const Outcome& withoutMovie);
  void finish();
  void end(Outcome outcome);

  CaptureRequest request_;
  Then then_;
  std::unique_ptr<PortalBus> bus_;
  std::unique_ptr<PortalScreenCast> cast_;
  QRect area_;                              ///< of the screens that is shown; empty when unknown
  std::shared_ptr<FrameRoll> roll_;         ///< belongs to the thread of the frames while there is one
  std::unique_ptr<PipeWireFrames> frames_;  ///< while recording
  std::unique_ptr<StopControl> control_;
  std::unique_ptr<UnexpectedExit> exit_;
};

PortalRecording::PortalRecording(CaptureRequest request, Then then)
    : request_(std::move(request)), then_(std::move(then)) {
  // A display that has just gone away is written to once more.
  std::signal(SIGPIPE, SIG_IGN);
}

PortalRecording::~PortalRecording() { frames_.reset(); }

void PortalRecording::begin() {
  auto bus = PortalBus::open();
  if (!bus) return end({Refused, bus.error().message});
  bus_ = std::move(bus).value();
  cast_ = std::make_unique<PortalScreenCast>(
      *bus_, request_.subject,
      PortalScreenCast::Events{.answered = [this](const auto& answer) { hear(answer); },
                               .closed =
                                   [this] {
                                     stop({Failed, "The desktop ended the recording before it began"});
                                   }});
}

void PortalRecording::interrupt() {
  if (frames_) return stop({});
  // Either nothing has begun, or the movie is being finished.
  if (!roll_) end({});
}

void PortalRecording::hear(const ScreenCastAnswer& answer) {
  if (!then_) return;
  if (answer.outcome == PortalAnswer::Outcome::cancelled) return end({});
  if (!answer.stream) return end({Refused, answer.reason});
  record(*answer.stream);
}

void PortalRecording::record(const ScreenCastStream& stream) {
  roll_ =
      std::make_shared<FrameRoll>(request_.path, stream.kind, [] { return SoundSource::open(longestWaitForSound); });
  auto ended = [this](const std::string& reason) {
    QMetaObject::invokeMethod(
        this,
        [this, reason] {
          stop({Failed, reason});
        },
        Qt::QueuedConnection);
  };
  auto frames = PipeWireFrames::open(stream.remote.fileDescriptor(), stream.node,
                                     {.look = [this](const QImage& frame) { look(frame); }, .ended = std::move(ended)});
  if (!frames) return end({Failed, frames.error().message});
  frames_ = std::move(frames).value();
  area_ = stream.area;
  exit_ = std::make_unique<UnexpectedExit>([this] { return finishAtExit(); });
}

/// In the thread of the frames.
void PortalRecording::look(const QImage& frame) {
  const bool hadBegun = roll_->hasBegun();
  const auto failure = roll_->look(frame, Clock::now());
  if (failure) {
    QMetaObject::invokeMethod(
        this,
        [this, failure] {
          stop({Failed, failure->message});
        },
        Qt::QueuedConnection);
  } else if (!hadBegun && roll_->hasBegun()) {
    QMetaObject::invokeMethod(
        this, [this] { showControl(); }, Qt::QueuedConnection);
  }
}

void PortalRecording::showControl() {
  if (!frames_) return;
  control_ = std::make_unique<StopControl>(
      [begun = Clock::now()] { return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begun); });
  connect(
      control_.get(), &StopControl::stopRequested, this, [this] { stop({}); }, Qt::QueuedConnection);
  control_->showBeside(area_);
}

/// The windows' display has gone, of which the stop control is all that there is.
int PortalRecording::finishAtExit() {
  frames_.reset();
  // It may be about to be finished there.
  QThreadPool::globalInstance()->waitForDone();
  return roll_ && roll_->hasBegun() && !roll_->finish(Clock::now()) ? Done : Failed;
}

void PortalRecording::stop(const Outcome& withoutMovie) {
  if (!frames_) return;
  frames_.reset();
  control_.reset();
  cast_.reset();
  if (roll_->hasBegun()) return finish();
  end(withoutMovie);
}

void PortalRecording::finish() {
  inBackground(
      this, *QThreadPool::globalInstance(), [roll = roll_, now = Clock::now()] { return roll->finish(now); },
      [this](const std::optional<Error>& failure) {
        roll_.reset();
        end(failure ? Outcome{Failed, failure->message} : Outcome{});
      });
}

void PortalRecording::end(Outcome outcome) {
  if (!then_) return;
  cast_.reset();
  // Whoever hears of it may delete this object, and is still about to make it when there is no bus.
  const auto tell = [then = std::exchange(then_, nullptr), outcome = std::move(outcome)] { then(outcome); };
  QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

}  // namespace

std::unique_ptr<Capture> recordPortalScreenCast(const CaptureRequest& request, Capture::Then then) {
  auto recording = std::make_unique<PortalRecording>(request, std::move(then));
  recording->begin();
  return recording;
}

}  // namespace Nimbrel::Screencapture
