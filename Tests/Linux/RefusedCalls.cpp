#include "RefusedCalls.h"

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <ucontext.h>
#include <unistd.h>

#include <csignal>
#include <cstddef>
#include <type_traits>

namespace Nimbrel::Testing {

namespace {

constexpr int refusalFailed = 255;

/// A call, and what the system does instead of it.
struct Rule {
  long number = 0;
  unsigned action = 0;
};

bool obey(const std::vector<Rule>& rules) {
  std::vector<sock_filter> filter{{BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)}};
  for (const auto& rule : rules) {
    filter.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 1, static_cast<__u32>(rule.number)});
    filter.push_back({BPF_RET | BPF_K, 0, 0, rule.action});
  }
  filter.push_back({BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW});
  const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

int inChild(const std::vector<Rule>& rules, const std::function<int()>& body) {
  const auto child = fork();
  if (child == 0) _exit(obey(rules) ? body() : refusalFailed);
  int status = 0;
  if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status)) return refusalFailed;
  return WEXITSTATUS(status);
}

/// Where a call leaves its result.
auto& resultIn(ucontext_t& context) {
#if defined(__x86_64__)
  return context.uc_mcontext.gregs[REG_RAX];
#elif defined(__aarch64__)
  return context.uc_mcontext.regs[0];
#endif
}

std::function<long()> answerOfTest;

/// The system stops the thread in the middle of the call and comes here; so the thread holds nothing that is needed.
void answerCall(int, siginfo_t*, void* context) {
  const long result = answerOfTest();
  using Register = std::remove_reference_t<decltype(resultIn(*static_cast<ucontext_t*>(context)))>;
  resultIn(*static_cast<ucontext_t*>(context)) = static_cast<Register>(result);
}

}  // namespace

int withRefusedCalls(const std::vector<RefusedCall>& calls, const std::function<int()>& body) {
  std::vector<Rule> rules;
  for (const auto& [number, error] : calls) rules.push_back({number, SECCOMP_RET_ERRNO | static_cast<unsigned>(error)});
  return inChild(rules, body);
}

int withAnsweredCall(long number, const std::function<long()>& answer, const std::function<int()>& body) {
  return inChild({{number, SECCOMP_RET_TRAP}}, [&] {
    answerOfTest = answer;
    struct sigaction action {};
    action.sa_sigaction = answerCall;
    action.sa_flags = SA_SIGINFO;
    return sigaction(SIGSYS, &action, nullptr) == 0 ? body() : refusalFailed;
  });
}

}  // namespace Nimbrel::Testing
