#pragma once

#include "Support/TemporaryFolder.h"

#include <QProcess>
#include <QStringList>

#include <memory>
#include <string>
#include <vector>

namespace Nimbrel::Testing {

/// Runs programs under strace, in a network of their own where the machine lets us make one: it has the loopback device
/// alone, and that is down. Follows what they start.
class SystemCallTrace {
 public:
  /// Starts a program without display in that home; it is killed with the result, if it still runs then.
  [[nodiscard]] std::unique_ptr<QProcess> start(const std::string& program, const QStringList& arguments,
                                                const std::string& home);

  /// The programs that have begun, by their file names, in order.
  [[nodiscard]] std::vector<std::string> programs() const;

  /// Each call so far that makes or connects a socket which could reach another machine. Those of the machine itself,
  /// and those to the kernel, are none.
  [[nodiscard]] std::vector<std::string> connections() const;

  /// Whether everything that was started has ended, and is on record.
  [[nodiscard]] bool isOver() const;

 private:
  [[nodiscard]] std::vector<std::string> lines() const;

  TemporaryFolder folder_;
  int started_ = 0;
};

}  // namespace Nimbrel::Testing
