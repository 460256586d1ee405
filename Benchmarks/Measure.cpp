#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace Nimbrel::Benchmarks {

namespace {

double secondsFor(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
  std::ranges::sort(values);
  return values[values.size() / 2];
}

}  // namespace

Comparison compare(std::string name, double target, int rounds, const std::function<void()>& ours,
                   const std::function<void()>& limit) {
  std::vector<double> oursTimes;
  std::vector<double> limitTimes;
  for (int round = 0; round < rounds; ++round) {
    limitTimes.push_back(secondsFor(limit));
    oursTimes.push_back(secondsFor(ours));
  }
  return {std::move(name), median(std::move(oursTimes)), median(std::move(limitTimes)), target};
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
