#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace Nimbrel {

/// The terminal that the process was started from, wherever its standard streams lead. Main thread only.
class Terminal {
 public:
  enum class Echo { Off, On };
  /// The line without its end; absent when the user has cancelled with the interrupt key or ended the input.
  using Line = std::function<void(std::optional<std::string> line)>;

  /// Whether the standard input is a terminal, so that somebody types what is read from it.
  [[nodiscard]] static bool isStandardInput();

  /// Absent when the process has no terminal.
  [[nodiscard]] static std::unique_ptr<Terminal> open();

  /// Puts the terminal back as it was; a line that is awaited never comes.
  virtual ~Terminal() = default;

  virtual void write(std::string_view text) = 0;

  /// Shows the question, drops what was typed before it, and calls `then` in a later turn of the event loop with what
  /// is typed then. The interrupt key only cancels. One line at a time.
  virtual void ask(std::string_view question, Echo echo, Line then) = 0;
};

}  // namespace Nimbrel
