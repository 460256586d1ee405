#include "RunningProgram.h"

#include <unistd.h>

#include <fstream>
#include <sstream>
#include <string>
#include <thread>

namespace Nimbrel::Benchmarks {

using namespace std::chrono_literals;

RunningUsage runningUsage(qint64 process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string line;
  std::getline(file, line);
  // The name of the program stands in brackets and may hold blanks.
  std::istringstream fields(line.substr(line.rfind(')') + 1));
  constexpr int userTicks = 12;
  constexpr int pages = 22;
  std::string field;
  RunningUsage usage;
  for (int number = 1; fields >> field; ++number) {
    if (number == userTicks || number == userTicks + 1) {
      usage.processor += std::stod(field) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    if (number == pages) usage.resident = std::stod(field) * static_cast<double>(sysconf(_SC_PAGESIZE));
  }
  return usage;
}

void waitUntilQuiet(qint64 process, std::chrono::seconds quiet) {
  auto since = std::chrono::steady_clock::now();
  for (double used = -1; std::chrono::steady_clock::now() - since < quiet; std::this_thread::sleep_for(100ms)) {
    const auto now = runningUsage(process).processor;
    if (now - used < 0.02) continue;
    used = now;
    since = std::chrono::steady_clock::now();
  }
}

}  // namespace Nimbrel::Benchmarks
