#pragma once

#include "Screencapture/Capture.h"
#include "Screencapture/CaptureRequest.h"

#include <memory>
#include <optional>
#include <string>

class QCoreApplication;

/// What the programs that take pictures and movies have in common.
namespace Nimbrel::Screencapture {

using Way = std::unique_ptr<Capture> (*)(const CaptureRequest& request, Capture::Then then);

/// How the thing is done in each kind of session; null where it is not.
struct Ways {
  Way onX11 = nullptr;
  Way onWayland = nullptr;
};

/// What kind of session the environment tells of.
[[nodiscard]] bool isWaylandSession();

/// What the arguments ask for; says how they are to be, and is absent, when they ask for nothing known.
[[nodiscard]] std::optional<CaptureRequest> requestOf(int argc, char** argv);

/// Says on standard error why the program ends.
void complain(const std::string& reason);

/// Runs the program to its end, interrupts included (see holdInterrupts()), and returns what it ends with.
[[nodiscard]] int carryOut(QCoreApplication& application, const CaptureRequest& request, const Ways& ways);

}  // namespace Nimbrel::Screencapture
