#include "Views/Recording/RemainingTime.h"

#include <QCoreApplication>

#include <cmath>

namespace Nimbrel {

namespace {

constexpr double enoughTime = 1;
constexpr double enoughShare = 0.005;
constexpr double minute = 60;
constexpr double hour = 3600;

QString words(const char* text) { return QCoreApplication::translate("RemainingTime", text); }

}  // namespace

void RemainingTime::add(double elapsed, double share) {
  last_ = {.elapsed = elapsed, .share = share};
  if (!first_ && share > 0) first_ = last_;
}

std::optional<double> RemainingTime::seconds() const {
  if (!first_) return std::nullopt;
  const double passed = last_.elapsed - first_->elapsed;
  const double done = last_.share - first_->share;
  if (passed < enoughTime || done < enoughShare) return std::nullopt;
  return (1 - last_.share) * passed / done;
}

QString remainingWords(double seconds) {
  if (seconds < 1.5) return words("Almost done");
  if (std::round(seconds) < minute) return words("About %1 seconds left").arg(std::lround(seconds));
  if (seconds < 1.5 * minute) return words("About a minute left");
  if (std::round(seconds / minute) * minute < hour)
    return words("About %1 minutes left").arg(std::lround(seconds / minute));
  if (seconds < 1.5 * hour) return words("About an hour left");
  return words("About %1 hours left").arg(std::lround(seconds / hour));
}

}  // namespace Nimbrel
