#pragma once

#include "Foundation/Timestamp.h"

namespace Nimbrel {

/// The moment that the system tells of a file; its two kinds of time have the same members.
template <class SystemTime>
[[nodiscard]] Timestamp momentOf(const SystemTime& time) {
  return timestamp(static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9);
}

}  // namespace Nimbrel
