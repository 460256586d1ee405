#pragma once

#include <optional>
#include <string>

namespace Nimbrel {

/// The screenshot tool that the desktop brings along. Main thread only.
class ScreenshotTool {
 public:
  virtual ~ScreenshotTool() = default;

  /// The folder into which the user has set the tool to save; absent when nothing is set. May begin with "~".
  [[nodiscard]] virtual std::optional<std::string> configuredFolder() const = 0;
};

/// For desktops without a tool whose settings we can read.
class NullScreenshotTool final : public ScreenshotTool {
 public:
  [[nodiscard]] std::optional<std::string> configuredFolder() const override { return std::nullopt; }
};

}  // namespace Nimbrel
