#pragma once

#include "Platform/Hotkeys.h"

#include <set>
#include <string>
#include <vector>

/// What the machine and the desktop session offer of what Nimbrel can make use of.
namespace Nimbrel::Checkup {

/// One thing that was looked for.
struct Finding {
  std::string name;  ///< the same on every machine, but for what there are several of: "language deu"
  bool isPresent = false;
  std::string advice;  ///< what to do where it is missing; else what there is, or nothing

  bool operator==(const Finding&) const = default;
};

/// Looks for everything. `wanted` are the hotkeys that are switched on: those may be held by a process of ours. Blocks
/// for some seconds where services have to be started to be asked. Needs a QCoreApplication. Main thread.
[[nodiscard]] std::vector<Finding> run(const std::set<HotkeyAction>& wanted);

}  // namespace Nimbrel::Checkup
