#pragma once

#include "Analysis/Detected.h"
#include "Foundation/Pattern.h"

#include <vector>

namespace Nimbrel {

/// An item with its place in the UTF-16 text that it was found in.
struct DetectedFinding {
  TextRange range;
  DetectedItem item;

  bool operator==(const DetectedFinding&) const = default;
};

using DetectedFindings = std::vector<DetectedFinding>;

}  // namespace Nimbrel
