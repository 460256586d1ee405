#pragma once

#include "Support/TemporaryFolder.h"

#include <sys/types.h>

#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// A display of its own with a window manager, for programs and connections that are started while it lives: it names
/// itself in the environment. Needs no event loop, so that a main() can have one before its application object.
class DesktopSession {
 public:
  /// Pixels have so many bits of colour.
  explicit DesktopSession(int depth = 24);
  ~DesktopSession();
  DesktopSession(const DesktopSession&) = delete;
  DesktopSession& operator=(const DesktopSession&) = delete;

  /// As the environment names it: ":7".
  [[nodiscard]] const std::string& display() const { return display_; }

  /// The server goes away without a word to anybody.
  void kill();

 private:
  void startServer(int depth);
  void startWindowManager();

  TemporaryFolder folder_;
  pid_t server_ = -1;
  pid_t windowManager_ = -1;
  std::string display_;
};

/// A program with windows, run on the display that the environment names and ended with this object.
class DesktopClient {
 public:
  explicit DesktopClient(const std::vector<std::string>& command);
  ~DesktopClient();
  DesktopClient(const DesktopClient&) = delete;
  DesktopClient& operator=(const DesktopClient&) = delete;

  [[nodiscard]] pid_t process() const { return process_; }
  void end();

 private:
  pid_t process_ = -1;
};

/// Makes an application known to the desktop: writes a desktop entry below `dataHome` ($XDG_DATA_HOME). Both without
/// ".desktop" and the group's head.
void installDesktopEntry(const std::string& dataHome, const std::string& id, const std::string& lines);

/// Brings the window of that class to the front, as a task bar would; fails the test when there is none.
void bringToFront(const std::string& windowClass);

}  // namespace Nimbrel::Testing
