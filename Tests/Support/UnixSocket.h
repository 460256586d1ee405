#pragma once

#include <string>

namespace Nimbrel::Testing {

/// A connection to whoever listens at that path, the caller's to close; -1 when nobody does.
[[nodiscard]] int connectedSocket(const std::string& path);

/// Waits until somebody listens there; fails the test when nobody does in time.
void waitForListener(const std::string& path);

}  // namespace Nimbrel::Testing
