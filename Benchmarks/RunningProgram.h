#pragma once

#include <QtGlobal>

#include <chrono>

namespace Nimbrel::Benchmarks {

/// What the kernel counts for a process that runs.
struct RunningUsage {
  double processor = 0;  ///< seconds of a core that it has used
  double resident = 0;   ///< bytes
};

[[nodiscard]] RunningUsage runningUsage(qint64 process);

/// Waits until the process has used no processor time for so long.
void waitUntilQuiet(qint64 process, std::chrono::seconds quiet);

}  // namespace Nimbrel::Benchmarks
