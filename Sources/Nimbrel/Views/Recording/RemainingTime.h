#pragma once

#include <QString>

#include <optional>

namespace Nimbrel {

/// Foretells when work ends from how fast it has come along since its first step.
class RemainingTime {
 public:
  /// How far the work is, from 0 to 1, so many seconds after it began. Times never go back.
  void add(double elapsed, double share);

  /// How many seconds are left at the time told last; absent as long as that would be a guess.
  [[nodiscard]] std::optional<double> seconds() const;

 private:
  struct Point {
    double elapsed = 0;
    double share = 0;
  };
  std::optional<Point> first_;  ///< what came before it says nothing of the speed
  Point last_;
};

/// "About 12 seconds left", in figures no finer than such a guess deserves.
[[nodiscard]] QString remainingWords(double seconds);

}  // namespace Nimbrel
