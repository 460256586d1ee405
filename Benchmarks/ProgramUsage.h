#pragma once

#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {

/// What a program took until its end.
struct Usage {
  double wall = 0;    ///< seconds
  double cpu = 0;     ///< seconds, of all its threads
  double memory = 0;  ///< bytes, at most
};

/// Runs a program, found like a shell finds it; ends the benchmark with a message when it cannot be run or fails.
[[nodiscard]] Usage usageOf(std::vector<std::string> words);

}  // namespace Nimbrel::Benchmarks
