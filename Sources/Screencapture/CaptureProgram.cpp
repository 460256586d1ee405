#include "Screencapture/CaptureProgram.h"

#include "Screencapture/Interrupts.h"

#include <QCoreApplication>

#include <cstdio>
#include <string_view>
#include <utility>
#include <vector>

namespace Nimbrel::Screencapture {

bool isWaylandSession() {
  return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") || qgetenv("XDG_SESSION_TYPE") == "wayland";
}

std::optional<CaptureRequest> requestOf(int argc, char** argv) {
  const std::vector<std::string_view> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
  const auto request = captureRequest(arguments);
  if (request) return request.value();
  std::fprintf(stderr, "%s\n", request.error().message.c_str());
  return std::nullopt;
}

void complain(const std::string& reason) { std::fprintf(stderr, "nimbrel-screencapture: %s\n", reason.c_str()); }

int carryOut(QCoreApplication& application, const CaptureRequest& request, const Ways& ways) {
  const auto way = isWaylandSession() ? ways.onWayland : ways.onX11;
  if (way == nullptr) {
    complain("this desktop has no way to do that");
    return Refused;
  }
  Outcome outcome;
  const auto capture = way(request, [&outcome](Outcome ended) {
    outcome = std::move(ended);
    QCoreApplication::quit();
  });
  const Interrupts interrupts;
  QObject::connect(&interrupts, &Interrupts::came, &interrupts, [&capture] { capture->interrupt(); });
  application.exec();
  if (outcome.status != Done) complain(outcome.reason);
  return outcome.status;
}

}  // namespace Nimbrel::Screencapture
