// nimbrel-screencapture: takes one picture or movie of the screen into a file, as its arguments tell.

#include "Screencapture/Capture.h"
#include "Screencapture/CaptureRequest.h"
#include "Screencapture/Interrupts.h"
#include "Screencapture/PortalScreenshot.h"
#include "Screencapture/X11Capture.h"

#include <QGuiApplication>

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace Nimbrel::Screencapture;

/// The ways to a picture and to a movie in one kind of session; null where there is none.
struct Ways {
  using Way = std::unique_ptr<Capture> (*)(const CaptureRequest& request, Capture::Then then);

  Way toPicture = nullptr;
  Way toMovie = nullptr;
};

constexpr Ways x11{.toPicture = takePictureOnX11};
constexpr Ways wayland{.toPicture = takePortalScreenshot};

bool isWaylandSession() {
  return qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
}

void complain(const std::string& reason) { std::fprintf(stderr, "%s\n", reason.c_str()); }

int run(QCoreApplication& application, Ways::Way way, const CaptureRequest& request) {
  Outcome outcome;
  const auto capture = way(request, [&outcome](Outcome ended) {
    outcome = std::move(ended);
    QCoreApplication::quit();
  });
  const Interrupts interrupts;
  QObject::connect(&interrupts, &Interrupts::came, &interrupts, [&capture] { capture->interrupt(); });
  application.exec();
  if (outcome.status != Done) complain("nimbrel-screencapture: " + outcome.reason);
  return outcome.status;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> arguments(argv + (argc > 0), argv + argc);
  const auto request = captureRequest(arguments);
  if (!request) {
    complain(request.error().message);
    return Misused;
  }
  holdInterrupts();

  const bool isWayland = isWaylandSession();
  const auto& ways = isWayland ? wayland : x11;
  const bool isPicture = request.value().kind == CaptureRequest::Kind::picture;
  const auto way = isPicture ? ways.toPicture : ways.toMovie;
  if (way == nullptr) {
    complain("nimbrel-screencapture: this session has no way to do that");
    return Refused;
  }
  // Who is told what to take a picture of, or has others ask, needs nothing that windows are made of.
  if (isPicture && (isWayland || request.value().subject == CaptureRequest::Subject::mainScreen)) {
    QCoreApplication application(argc, argv);
    return run(application, way, request.value());
  }
  QGuiApplication application(argc, argv);
  return run(application, way, request.value());
}
