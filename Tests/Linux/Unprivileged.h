#pragma once

#include <linux/capability.h>

#include <array>

namespace Nimbrel::Testing {

/// Takes from this thread, and from those that it starts, the right to pass over permissions, for as long as it lives:
/// so that an unreadable file is unreadable for an administrator as well.
class Unprivileged {
 public:
  Unprivileged();
  ~Unprivileged();
  Unprivileged(const Unprivileged&) = delete;
  Unprivileged& operator=(const Unprivileged&) = delete;

 private:
  using Capabilities = std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3>;

  Capabilities former_{};
};

}  // namespace Nimbrel::Testing
