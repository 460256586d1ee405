#pragma once

#include "Foundation/Timestamp.h"
#include "Platform/FrontApplication.h"

#include <string>
#include <vector>

namespace Nimbrel {

/// Remembers for three minutes which applications came to the front, so that a file can be told the one it was taken
/// of. Our own windows are no answer, and hide what was in front before them. Main thread.
class FrontmostTracker {
 public:
  /// Begins with the application in front now. `front` is borrowed and must outlive the tracker.
  FrontmostTracker(FrontApplication& front, Clock clock);
  ~FrontmostTracker();
  FrontmostTracker(const FrontmostTracker&) = delete;
  FrontmostTracker& operator=(const FrontmostTracker&) = delete;

  /// The application that was in front when a file of that date was made; both texts are empty when that is not known,
  /// or when the date is 120 seconds or more in the past or 5 or more in the future.
  [[nodiscard]] Application appForCaptureAt(Timestamp date) const;

 private:
  struct Activation {
    Timestamp date;
    std::string name;
    std::string bundleID;
  };
  void note(const Application& application);

  FrontApplication& front_;
  Clock clock_;
  std::vector<Activation> activations_;  ///< in order of arrival
};

}  // namespace Nimbrel
