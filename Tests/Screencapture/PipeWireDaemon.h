#pragma once

#include "Support/DesktopSession.h"
#include "Support/TemporaryFolder.h"

#include <memory>
#include <string>

namespace Nimbrel::Testing {

/// PipeWire with nothing in it and nobody who links anything.
class PipeWireDaemon {
 public:
  PipeWireDaemon();

  /// A new connection, the caller's to close.
  [[nodiscard]] int connect() const;

  void kill() { daemon_->end(); }

 private:
  TemporaryFolder folder_;
  std::string socket_ = folder_.path("pipewire-0");
  std::unique_ptr<DesktopClient> daemon_;
};

}  // namespace Nimbrel::Testing
