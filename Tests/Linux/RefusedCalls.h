#pragma once

#include <functional>
#include <vector>

namespace Nimbrel::Testing {

/// A call that the system refuses, with the error that it gives.
struct RefusedCall {
  long number = 0;
  int error = 0;
};

/// Runs `body` in a child process for which the system refuses these calls, as older file systems do, and returns its
/// exit status: what `body` returns, or 255 when the calls could not be refused. The body must report by its result
/// alone: expectations in it are not seen.
[[nodiscard]] int withRefusedCalls(const std::vector<RefusedCall>& calls, const std::function<int()>& body);

/// The same for a call that `answer` answers instead of the system, in the thread that makes it: with the result, or an
/// error with a minus. So something can happen at a moment that is known. The answer must not make that call itself.
[[nodiscard]] int withAnsweredCall(long number, const std::function<long()>& answer, const std::function<int()>& body);

}  // namespace Nimbrel::Testing
