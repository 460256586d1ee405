#include "ProgramUsage.h"

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace Nimbrel::Benchmarks {

namespace {

double seconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

}  // namespace

Usage usageOf(std::vector<std::string> words) {
  std::vector<char*> arguments;
  for (auto& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const auto start = std::chrono::steady_clock::now();
  pid_t child = 0;
  int status = 0;
  rusage used{};
  if (::posix_spawnp(&child, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0 ||
      ::wait4(child, &status, 0, &used) != child || status != 0) {
    std::fprintf(stderr, "%s failed\n", words.front().c_str());
    std::exit(EXIT_FAILURE);
  }
  return {.wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(),
          .cpu = seconds(used.ru_utime) + seconds(used.ru_stime),
          .memory = static_cast<double>(used.ru_maxrss) * 1024};
}

}  // namespace Nimbrel::Benchmarks
