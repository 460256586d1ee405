#include "Screencapture/X11Capture.h"

#include "Screencapture/PictureFile.h"
#include "Screencapture/PixelMemory.h"
#include "Screencapture/X11Display.h"
#include "Screencapture/X11Monitors.h"

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
    auto display = X11Display::open();
    if (!display) return end({Failed, display.error().message});
    display_ = std::move(display).value();
    takeMainScreen();
  }

  void takeMainScreen() {
    const auto pixels = screenPixels(*display_, mainMonitor(monitorsOf(*display_)).area);
    if (!pixels) return end({Failed, pixels.error().message});
    write(pixels.value()->image());
  }

  void write(const QImage& picture) {
    const auto error = writePicture(picture, request_.subject, request_.path);
    end(error ? Outcome{Failed, error->message} : Outcome());
  }

  void end(Outcome outcome) {
    if (std::exchange(isEnded_, true)) return;
    QTimer::singleShot(0, &context_, [this, outcome = std::move(outcome)] { then_(outcome); });
  }

  CaptureRequest request_;
  Then then_;
  bool isEnded_ = false;
  std::unique_ptr<X11Display> display_;
  QObject context_;
};

}  // namespace

std::unique_ptr<Capture> takePictureOnX11(const CaptureRequest& request, Capture::Then then) {
  return std::make_unique<X11Capture>(request, std::move(then));
}

}  // namespace Nimbrel::Screencapture
