#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace Nimbrel::Benchmarks {

/// One line of a table: our work beside the limit or the peer that it is held against.
struct Comparison {
  std::string name;
  double ours = 0;    ///< seconds or bytes
  double limit = 0;   ///< the same of the limit or the peer
  double target = 0;  ///< how many times the limit ours may take
};

/// Runs both in turn, so that both meet the same machine, and takes the median of the rounds: wall time in seconds.
[[nodiscard]] Comparison compare(std::string name, double target, int rounds, const std::function<void()>& ours,
                                 const std::function<void()>& limit);

/// The same in CPU time of all threads of the process, which other programs do not disturb.
[[nodiscard]] Comparison compareCpu(std::string name, double target, int rounds, const std::function<void()>& ours,
                                    const std::function<void()>& limit);

/// Makes a result count, so that the compiler does not leave out the work that led to it.
void use(std::size_t result);

/// Prints the table and returns 0 when every target is reached, else 1. `unit` names what is compared.
[[nodiscard]] int printTable(const std::vector<Comparison>& table, const std::string& unit);

}  // namespace Nimbrel::Benchmarks
