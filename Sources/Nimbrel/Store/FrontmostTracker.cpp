#include "Store/FrontmostTracker.h"

#include "Model/AppIdentity.h"

#include <chrono>
#include <ranges>
#include <utility>

namespace Nimbrel {

using namespace std::chrono_literals;

namespace {

constexpr Seconds remembered = 180s;
constexpr Seconds oldestCapture = 120s;
constexpr Seconds furthestCapture = 5s;
// A file's date may be a little earlier than the news of the application that made way for it.
constexpr Seconds activationTolerance = 500ms;

}  // namespace

FrontmostTracker::FrontmostTracker(FrontApplication& front, Clock clock) : front_(front), clock_(std::move(clock)) {
  if (const auto current = front_.current()) note(*current);
  front_.observe([this](const Application& application) { note(application); });
}

FrontmostTracker::~FrontmostTracker() { front_.observe({}); }

void FrontmostTracker::note(const Application& application) {
  if (application.name.empty()) return;
  const bool isOurs = application.bundleID == AppIdentity::bundleIdentifier();
  const auto now = clock_();
  activations_.push_back({now, isOurs ? std::string() : application.name, application.bundleID});
  std::erase_if(activations_, [&](const Activation& activation) { return now - activation.date > remembered; });
}

Application FrontmostTracker::appForCaptureAt(Timestamp date) const {
  const auto age = clock_() - date;
  if (age >= oldestCapture || -age >= furthestCapture) return {};
  for (const auto& activation : std::views::reverse(activations_)) {
    if (activation.date > date + activationTolerance) continue;
    if (activation.name.empty()) return {};
    return {activation.name, activation.bundleID};
  }
  return {};
}

}  // namespace Nimbrel
