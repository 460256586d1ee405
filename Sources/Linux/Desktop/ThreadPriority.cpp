#include "Platform/Process.h"

#include <sys/resource.h>

namespace Nimbrel::Process {

void lowerThreadPriority() {
  // On Linux the nice value belongs to the thread, not to the process, when the number of the thread is 0: the caller.
  constexpr int background = 10;
  setpriority(PRIO_PROCESS, 0, background);
}

}  // namespace Nimbrel::Process
