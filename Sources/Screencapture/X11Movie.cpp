#include "Screencapture/X11Movie.h"

#include "Screencapture/ScreenRecording.h"
#include "Screencapture/X11Display.h"
#include "Screencapture/X11Monitors.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

class X11Movie final : public Capture {
 public:
  X11Movie(CaptureRequest request, Then then) : request_(std::move(request)), then_(std::move(then)) {
    QTimer::singleShot(0, &context_, [this] { begin(); });
  }

  void interrupt() override {
    if (recording_) return recording_->stop();
    QTimer::singleShot(0, &context_, [this] { end({}); });
  }

 private:
  void begin() {
    if (!then_) return;
    const auto display = X11Display::open();
    if (!display) return end({Failed, display.error().message});
    record(mainMonitor(monitorsOf(*display.value())).area);
  }

  void record(const QRect& area) {
    recording_ = recordScreen(&context_, area, request_, [this](const std::optional<Error>& failure) {
      end(failure ? Outcome{Failed, failure->message} : Outcome());
    });
  }

  void end(const Outcome& outcome) {
    if (const auto then = std::exchange(then_, nullptr)) then(outcome);
  }

  CaptureRequest request_;
  Then then_;
  QObject context_;
  std::unique_ptr<ScreenRecording> recording_;
};

}  // namespace

std::unique_ptr<Capture> recordMovieOnX11(const CaptureRequest& request, Capture::Then then) {
  return std::make_unique<X11Movie>(request, std::move(then));
}

}  // namespace Nimbrel::Screencapture
