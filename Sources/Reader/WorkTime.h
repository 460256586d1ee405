#pragma once

#include <chrono>
#include <ctime>

namespace Nimbrel::Reader {

/// How long this process has worked, all its threads together, since the object was made. While others have the
/// processor no time goes by: a busy machine makes no picture a hard one.
class WorkTime {
 public:
  [[nodiscard]] std::chrono::microseconds spent() const {
    static_assert(CLOCKS_PER_SEC == 1'000'000);
    return std::chrono::microseconds(std::clock() - begin_);
  }

 private:
  std::clock_t begin_ = std::clock();
};

}  // namespace Nimbrel::Reader
