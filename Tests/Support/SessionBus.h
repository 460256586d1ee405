#pragma once

#include "Support/DesktopSession.h"
#include "Support/TemporaryFolder.h"

#include <memory>
#include <string>

namespace Nimbrel::Testing {

/// A session bus of its own with nobody on it, for programs and connections that are made while it lives: it names
/// itself in the environment. Needs no event loop. Qt's own session bus remembers the first one of a process, so
/// connect by the address.
class SessionBus {
 public:
  /// It can start what the service files in that folder name; without one, nothing.
  explicit SessionBus(const std::string& services = {});
  ~SessionBus();
  SessionBus(const SessionBus&) = delete;
  SessionBus& operator=(const SessionBus&) = delete;

  /// As the environment names it.
  [[nodiscard]] const std::string& address() const { return address_; }

  /// The bus goes away without a word to anybody.
  void kill() { daemon_->end(); }

 private:
  TemporaryFolder folder_;
  std::string address_;
  std::unique_ptr<DesktopClient> daemon_;
};

}  // namespace Nimbrel::Testing
