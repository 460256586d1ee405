#include "Screencapture/X11Movie.h"

#include "Platform/FileSystem.h"
#include "Screencapture/AreaChooser.h"
#include "Screencapture/PixelMemory.h"
#include "Screencapture/ScreenRecording.h"
#include "Screencapture/X11Display.h"
#include "Screencapture/X11Monitors.h"
#include "Screencapture/X11Windows.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

using namespace std::chrono_literals;

/// So long a compositor may still show an overlay that is gone.
constexpr auto fadingOfOverlay = 150ms;

class X11Movie final : public Capture {
 public:
  X11Movie(CaptureRequest request, Then then) : request_(std::move(request)), then_(std::move(then)) {
    QTimer::singleShot(0, &context_, [this] { begin(); });
  }

  void interrupt() override {
    if (recording_) return recording_->stop();
    chooser_.reset();
    QTimer::singleShot(0, &context_, [this] { end({}); });
  }

 private:
  void begin() {
    if (!then_) return;
    if (FileSystem::isTaken(request_.path)) return end({Failed, "something stands at the file's path"});
    auto display = X11Display::open();
    if (!display) return end({Failed, display.error().message});
    display_ = std::move(display).value();
    if (request_.subject == CaptureRequest::Subject::mainScreen) {
      return record(mainMonitor(monitorsOf(*display_)).area);
    }
    choose();
  }

  void choose() {
    auto frozen = screenPixels(*display_, display_->bounds());
    if (!frozen) return end({Failed, frozen.error().message});
    frozen_ = std::move(frozen).value();
    chooser_ = chooseArea(
        *display_, desktopLayout(*display_), frozen_->image(), request_.subject, [](const StackedWindow&) {},
        [this](const AreaChooser::Choice& choice) { recordChosen(choice); });
  }

  void recordChosen(const AreaChooser::Choice& choice) {
    if (!choice.chosen) return end(choice.outcome);
    chooser_.reset();
    frozen_.reset();
    QTimer::singleShot(fadingOfOverlay, &context_, [this, area = choice.chosen->area & display_->bounds()] {
      if (then_) record(area);
    });
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
  std::unique_ptr<X11Display> display_;
  std::unique_ptr<PixelMemory> frozen_;
  std::unique_ptr<AreaChooser> chooser_;
  QObject context_;
  std::unique_ptr<ScreenRecording> recording_;
};

}  // namespace

std::unique_ptr<Capture> recordMovieOnX11(const CaptureRequest& request, Capture::Then then) {
  return std::make_unique<X11Movie>(request, std::move(then));
}

}  // namespace Nimbrel::Screencapture
