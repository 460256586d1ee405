#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace Nimbrel::Benchmarks {

namespace {

double wallTime() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

double cpuTime() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double secondsFor(const std::function<void()>& work, double (*clock)()) {
  const double start = clock();
  work();
  return clock() - start;
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

Comparison inTurn(std::string name, double target, int rounds, const std::function<void()>& ours,
                  const std::function<void()>& limit, double (*clock)()) {
  std::vector<double> oursTimes;
  std::vector<double> limitTimes;
  for (int round = 0; round < rounds; ++round) {
    limitTimes.push_back(secondsFor(limit, clock));
    oursTimes.push_back(secondsFor(ours, clock));
  }
  return {std::move(name), median(std::move(oursTimes)), median(std::move(limitTimes)), target};
}

}  // namespace

Comparison compare(std::string name, double target, int rounds, const std::function<void()>& ours,
                   const std::function<void()>& limit) {
  return inTurn(std::move(name), target, rounds, ours, limit, wallTime);
}

Comparison compareCpu(std::string name, double target, int rounds, const std::function<void()>& ours,
                      const std::function<void()>& limit) {
  return inTurn(std::move(name), target, rounds, ours, limit, cpuTime);
}

void use(std::size_t result) {
  static volatile std::size_t sink = 0;
  sink = sink + result;
}

int printTable(const std::vector<Comparison>& table, const std::string& unit) {
  std::printf("%-52s %14s %14s %7s %7s\n", ("in " + unit).c_str(), "ours", "limit", "ratio", "target");
  bool reached = true;
  for (const auto& row : table) {
    const double ratio = row.ours / row.limit;
    std::printf("%-52s %14.6g %14.6g %7.2f %7.2f%s\n", row.name.c_str(), row.ours, row.limit, ratio, row.target,
                ratio <= row.target ? "" : "  MISSED");
    reached = reached && ratio <= row.target;
  }
  return reached ? 0 : 1;
}

}  // namespace Nimbrel::Benchmarks
