#include "Reader/Restraint.h"

#include "Platform/Process.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <csignal>
#include <fstream>

namespace Nimbrel::Reader {

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr rlim_t memoryLimit = RLIM_INFINITY;
#else
constexpr rlim_t memoryLimit = rlim_t{4} << 30;
#endif

/// Of 1000: when memory runs out the kernel takes this process before what the user works in, and Nimbrel starts
/// another.
constexpr int outOfMemoryScore = 500;

void limit(__rlimit_resource resource, rlim_t value) {
  rlimit current{};
  if (::getrlimit(resource, &current) != 0) return;
  if (current.rlim_max != RLIM_INFINITY && current.rlim_max < value) value = current.rlim_max;
  const rlimit wanted{value, value};
  ::setrlimit(resource, &wanted);
}

}  // namespace

void restrain() {
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  // What a terminal or the end of a session sends goes to the parent as well, which decides: a reader that dies by
  // itself counts against the picture.
  for (const int number : {SIGINT, SIGQUIT, SIGTERM, SIGHUP}) std::signal(number, SIG_IGN);
  Process::lowerThreadPriority();
  // Not the address space, of which each thread reserves far more than it uses.
  limit(RLIMIT_DATA, memoryLimit);
  limit(RLIMIT_CORE, 0);
  std::ofstream("/proc/self/oom_score_adj") << outOfMemoryScore;
}

}  // namespace Nimbrel::Reader
