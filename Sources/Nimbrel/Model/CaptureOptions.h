#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// What a capture takes: a picture of a chosen area, of a chosen window or of the main screen, or a recording.
enum class CaptureMode { area, window, screen, recordArea, recordScreen };

inline constexpr std::array allCaptureModes{CaptureMode::area, CaptureMode::window, CaptureMode::screen,
                                            CaptureMode::recordArea, CaptureMode::recordScreen};

/// The text that identifies the mode.
[[nodiscard]] std::string_view rawValue(CaptureMode mode);

/// Whether the mode takes a recording, which goes on until it is stopped, and not a picture.
[[nodiscard]] bool isRecording(CaptureMode mode);

/// What the program that takes captures is told, in this order: what to take, then the file to write.
[[nodiscard]] std::vector<std::string> captureArguments(CaptureMode mode, const std::string& path);

/// Where a capture made by the program goes.
enum class CaptureDestination { inbox, library };

inline constexpr std::array allCaptureDestinations{CaptureDestination::inbox, CaptureDestination::library};

/// The text by which the settings store it.
[[nodiscard]] std::string_view rawValue(CaptureDestination destination);

}  // namespace Nimbrel
