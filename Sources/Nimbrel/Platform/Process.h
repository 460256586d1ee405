#pragma once

#include <functional>

/// The life of this process. Main thread only, where nothing else is said.
namespace Nimbrel::Process {

/// From now on an interrupt, a hang-up or a request to terminate ends the event loop of the running QCoreApplication
/// with status 0, so that destructors run; one that comes while the loop does not run ends it as soon as it does. To be
/// called after the application object was made; again, it does nothing.
void quitOnSignals();

/// While it lives, an interrupt calls the action, in a turn of the event loop, and ends nothing: several that come
/// together are as one. The other signals do as before. One at a time, after quitOnSignals().
class OnInterrupt {
 public:
  explicit OnInterrupt(std::function<void()> action);
  ~OnInterrupt();
  OnInterrupt(const OnInterrupt&) = delete;
  OnInterrupt& operator=(const OnInterrupt&) = delete;
};

/// Whether a signal has come that ends the process: long work on the main thread then leaves the rest to the next
/// start.
[[nodiscard]] bool isEnding();

/// Sends the log to standard error and to the system log, under the given program name, which must outlive the process.
void logToSystem(const char* programName);

/// From now on the calling thread yields to whatever the user is doing. Any thread; may be called again.
void lowerThreadPriority();

}  // namespace Nimbrel::Process
