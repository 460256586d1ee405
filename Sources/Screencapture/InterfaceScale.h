#pragma once

#include <QByteArray>

#include <string_view>

namespace Nimbrel::Screencapture {

/// What the user has said about the size of things on the screen; empty and 0 for nothing.
struct ScaleWishes {
  QByteArray factor;         ///< QT_SCALE_FACTOR: a number
  QByteArray screenFactors;  ///< QT_SCREEN_SCALE_FACTORS: "2;1.5" in the order of the monitors, or "DP-1=2;DP-2=1.5"
  double dotsPerInch = 0;    ///< of type, where 96 means a scale of 1
};

/// How much larger than usual labels and the like are drawn on a monitor: from 1 to 4. What cannot be understood counts
/// as not said.
[[nodiscard]] double interfaceScale(const ScaleWishes& wishes, std::string_view monitorName, int monitorIndex);

/// The resolution of type among X resources, lines such as "Xft.dpi: 192"; 0 when it is not among them.
[[nodiscard]] double typeResolution(std::string_view resources);

}  // namespace Nimbrel::Screencapture
