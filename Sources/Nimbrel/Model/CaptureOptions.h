#pragma once

#include <array>
#include <string_view>

namespace Nimbrel {

/// Where a capture made by the program goes.
enum class CaptureDestination { inbox, library };

inline constexpr std::array allCaptureDestinations{CaptureDestination::inbox, CaptureDestination::library};

/// The text by which the settings store it.
[[nodiscard]] std::string_view rawValue(CaptureDestination destination);

}  // namespace Nimbrel
