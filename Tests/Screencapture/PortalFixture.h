#pragma once

#include "Screencapture/Capture.h"
#include "Screencapture/PortalDouble.h"
#include "Support/SessionBus.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel::Testing {

/// A capture through a portal of the tests' own, in an empty folder for its file.
class PortalFixture : public ::testing::Test {
 protected:
  using Begin = std::unique_ptr<Screencapture::Capture> (*)(const Screencapture::CaptureRequest&,
                                                            Screencapture::Capture::Then);

  /// Begins one whose end is kept in outcome_.
  void start(Begin begin, Screencapture::CaptureRequest::Subject subject) {
    capture_ = begin({.subject = subject, .path = target_},
                     [this](const Screencapture::Outcome& outcome) { outcome_ = outcome; });
    EXPECT_FALSE(outcome_) << "before the event loop ran";
  }

  /// How it ended, with time for that to happen; fails the test when it does not end.
  Screencapture::Outcome outcome() {
    EXPECT_TRUE(waitUntil([this] { return outcome_.has_value(); }));
    return outcome_.value_or(Screencapture::Outcome{Screencapture::Misused, "it has not ended"});
  }

  void waitForCall(const PortalDouble& portal, const char* method) {
    EXPECT_TRUE(waitUntil([&] { return !portal.calls(QLatin1String(method)).empty(); })) << method;
  }

  /// The names of what stands in the folder of the file.
  [[nodiscard]] std::vector<std::string> written() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path("shots"))) {
      names.push_back(entry.path().filename().string());
    }
    std::ranges::sort(names);
    return names;
  }

  TemporaryFolder folder_;
  std::string target_ = folder_.makeFolder("shots") + "/Screenshot 1.png";
  std::optional<Screencapture::Outcome> outcome_;
  std::unique_ptr<Screencapture::Capture> capture_;
};

}  // namespace Nimbrel::Testing
