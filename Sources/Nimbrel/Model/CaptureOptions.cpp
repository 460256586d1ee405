#include "Model/CaptureOptions.h"

#include <cstddef>

namespace Nimbrel {

namespace {

struct ModeFacts {
  std::string_view rawValue;
  std::vector<std::string> arguments;
};

/// In the order of the modes.
const ModeFacts& factsOf(CaptureMode mode) {
  static const std::array<ModeFacts, allCaptureModes.size()> facts{{
      {"Selection", {"-i", "-s"}},
      {"Window", {"-i", "-w"}},
      {"Main Screen", {"-m"}},
      {"Record Selection", {"-v", "-i", "-Jvideo"}},
      {"Record Main Screen", {"-v", "-m"}},
  }};
  return facts.at(static_cast<std::size_t>(mode));
}

}  // namespace

std::string_view rawValue(CaptureMode mode) { return factsOf(mode).rawValue; }

bool isRecording(CaptureMode mode) { return mode == CaptureMode::recordArea || mode == CaptureMode::recordScreen; }

std::vector<std::string> captureArguments(CaptureMode mode, const std::string& path) {
  auto arguments = factsOf(mode).arguments;
  arguments.insert(arguments.end(), {"-d", path});
  return arguments;
}

std::string_view rawValue(CaptureDestination destination) {
  return destination == CaptureDestination::library ? "Library" : "Inbox";
}

}  // namespace Nimbrel
