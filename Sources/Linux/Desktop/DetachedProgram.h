#pragma once

#include <string>
#include <vector>

namespace Nimbrel {

/// Starts a program of the search path that may outlive this one. Its arguments are bytes, as the names of files are.
/// False, with a line in the log, when it cannot be started. Any thread.
[[nodiscard]] bool startDetached(const std::string& program, std::vector<std::string> arguments);

}  // namespace Nimbrel
