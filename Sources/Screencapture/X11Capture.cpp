#include "Screencapture/X11Capture.h"

#include "Platform/FileSystem.h"
#include "Screencapture/AreaChooser.h"
#include "Screencapture/CoveredWindows.h"
#include "Screencapture/PictureFile.h"
#include "Screencapture/PixelMemory.h"
#include "Screencapture/X11Display.h"
#include "Screencapture/X11Monitors.h"
#include "Screencapture/X11Windows.h"

#include <QObject>
#include <QTimer>

#include <utility>

namespace Nimbrel::Screencapture {

namespace {

class X11Capture final : public Capture {
 public:
  X11Capture(CaptureRequest request, Then then) : request_(std::move(request)), then_(std::move(then)) {
    QTimer::singleShot(0, &context_, [this] { begin(); });
  }

  void interrupt() override { end({}); }

 private:
  void begin() {
    if (isEnded_) return;
    if (FileSystem::isTaken(request_.path)) return end({Failed, "something stands at the file's path"});
    auto display = X11Display::open();
    if (!display) return end({Failed, display.error().message});
    display_ = std::move(display).value();
    if (request_.subject == CaptureRequest::Subject::mainScreen) return takeMainScreen();
    choose();
  }

  void takeMainScreen() {
    const auto pixels = screenPixels(*display_, mainMonitor(monitorsOf(*display_)).area);
    if (!pixels) return end({Failed, pixels.error().message});
    write(pixels.value()->image());
  }

  void choose() {
    // First of all: what is on the screen now, open menus and all, is what the user wants a picture of.
    auto frozen = screenPixels(*display_, display_->bounds());
    if (!frozen) return end({Failed, frozen.error().message});
    frozen_ = std::move(frozen).value();
    layout_ = desktopLayout(*display_);
    covered_ = std::make_unique<CoveredWindows>(*display_);
    chooser_ = chooseArea(
        *display_, layout_, frozen_->image(), request_.subject,
        [this](const StackedWindow& window) { prepare(window); },
        [this](const AreaChooser::Choice& choice) { takeChosen(choice); });
  }

  void prepare(const StackedWindow& window) {
    if (!isWhollyVisible(layout_, window)) covered_->keep(window);
  }

  void takeChosen(const AreaChooser::Choice& choice) {
    if (!choice.chosen) return end(choice.outcome);
    const auto& [area, window] = *choice.chosen;
    const auto onScreen = area & layout_.bounds;
    if (!window || isWhollyVisible(layout_, *window)) return write(frozen_->image().copy(onScreen));
    covered_->read(*window, [this, onScreen](const std::optional<QImage>& pixels) {
      write(pixels ? *pixels : frozen_->image().copy(onScreen));
    });
  }

  void write(const QImage& picture) {
    if (isEnded_) return;
    const auto error = writePicture(picture, request_.subject, request_.path);
    end(error ? Outcome{Failed, error->message} : Outcome());
  }

  void end(Outcome outcome) {
    if (std::exchange(isEnded_, true)) return;
    chooser_.reset();
    QTimer::singleShot(0, &context_, [this, outcome = std::move(outcome)] { then_(outcome); });
  }

  CaptureRequest request_;
  Then then_;
  bool isEnded_ = false;
  std::unique_ptr<X11Display> display_;
  std::unique_ptr<PixelMemory> frozen_;
  DesktopLayout layout_;
  std::unique_ptr<CoveredWindows> covered_;
  std::unique_ptr<AreaChooser> chooser_;
  QObject context_;
};

}  // namespace

std::unique_ptr<Capture> takePictureOnX11(const CaptureRequest& request, Capture::Then then) {
  return std::make_unique<X11Capture>(request, std::move(then));
}

}  // namespace Nimbrel::Screencapture
