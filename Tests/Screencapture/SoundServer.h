#pragma once

#include "Support/DesktopSession.h"
#include "Support/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"

#include <memory>
#include <string>

namespace Nimbrel::Testing {

/// A sound server of the tests' own, which hears what is played into it, for programs and connections that are started
/// while it lives: it names itself in the environment.
class SoundServer {
 public:
  SoundServer();

  /// Plays a tone into it from now on.
  void playTone();
  /// The server goes away.
  void end() { server_.end(); }

 private:
  TemporaryFolder folder_;
  EnvironmentVariable address_;
  DesktopClient server_;
  std::unique_ptr<DesktopClient> player_;
};

/// As if there were no server: none is where it is looked for.
class NoSoundServer {
 private:
  EnvironmentVariable address_{"PULSE_SERVER", "unix:/nonexistent/pulse"};
};

}  // namespace Nimbrel::Testing
