#include "Unprivileged.h"

#include <gtest/gtest.h>

#include <sys/syscall.h>
#include <unistd.h>

namespace Nimbrel::Testing {

Unprivileged::Unprivileged() {
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  EXPECT_EQ(::syscall(SYS_capget, &header, former_.data()), 0);
  auto reduced = former_;
  reduced[0].effective &= ~((1U << CAP_DAC_OVERRIDE) | (1U << CAP_DAC_READ_SEARCH));
  EXPECT_EQ(::syscall(SYS_capset, &header, reduced.data()), 0);
}

Unprivileged::~Unprivileged() {
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  EXPECT_EQ(::syscall(SYS_capset, &header, former_.data()), 0);
}

}  // namespace Nimbrel::Testing
