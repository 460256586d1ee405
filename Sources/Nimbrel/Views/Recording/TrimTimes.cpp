#include "Views/Recording/TrimTimes.h"

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr double shortestWindow = 0.1;
/// So that there is somewhere to go even in the shortest recording.
constexpr double shortestWay = 0.01;
constexpr qint64 secondsPerMinute = 60;
constexpr double longestTime = 1e12;

}  // namespace

TimeSpan TrimTimes::startSpan() const { return {.least = 0, .most = std::max(end - shortestWindow, shortestWay)}; }

TimeSpan TrimTimes::endSpan() const {
  return {.least = std::min(start + shortestWindow, duration), .most = std::max(duration, start + shortestWindow)};
}

QString timeText(double seconds) {
  const auto whole = static_cast<qint64>(std::clamp(seconds, 0.0, longestTime));
  return QStringLiteral("%1:%2").arg(whole / secondsPerMinute).arg(whole % secondsPerMinute, 2, 10, QLatin1Char('0'));
}

}  // namespace Nimbrel
