#include "RefusedCalls.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>

namespace Nimbrel::Testing {

namespace {

constexpr int refusalFailed = 255;

bool refuse(const std::vector<RefusedCall>& calls) {
  std::vector<sock_filter> filter{{BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)}};
  for (const auto& call : calls) {
    filter.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 1, static_cast<__u32>(call.number)});
    filter.push_back({BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | static_cast<__u32>(call.error)});
  }
  filter.push_back({BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW});
  const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

}  // namespace

int withRefusedCalls(const std::vector<RefusedCall>& calls, const std::function<int()>& body) {
  const auto child = fork();
  if (child == 0) _exit(refuse(calls) ? body() : refusalFailed);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return refusalFailed;
  return WEXITSTATUS(status);
}

}  // namespace Nimbrel::Testing
