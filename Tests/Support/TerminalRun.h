#pragma once

#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"

#include <QProcessEnvironment>
#include <QStringList>

#include <string>
#include <string_view>

#include <sys/types.h>

namespace Nimbrel::Testing {

/// One of our programs on a terminal of its own, with a test at the keys. Its standard streams lead elsewhere, as in a
/// pipe, unless it is to read the terminal. Killed with this object, if it still runs then.
class TerminalRun {
 public:
  enum class Input { Nothing, Terminal };

  TerminalRun(const std::string& name, const QStringList& arguments, const QProcessEnvironment& environment,
              Input input = Input::Nothing);
  ~TerminalRun();
  TerminalRun(const TerminalRun&) = delete;
  TerminalRun& operator=(const TerminalRun&) = delete;

  /// Waits until the terminal shows the text; returns whether it came.
  [[nodiscard]] bool shows(std::string_view text);
  void type(std::string_view keys) const;
  void signal(int number) const;
  /// Whether the terminal shows what is typed.
  [[nodiscard]] bool echoes() const;

  /// Waits for the end. Fails the test when it does not come.
  [[nodiscard]] ProgramOutput result();
  /// All that the terminal has shown.
  [[nodiscard]] const std::string& screen() const { return screen_; }

 private:
  void look();

  TemporaryFolder folder_;
  pid_t child_ = -1;
  int terminal_ = -1;
  int slave_ = -1;  ///< held open, so that the terminal outlives the program
  std::string screen_;
};

}  // namespace Nimbrel::Testing
