#include "Platform/Terminal.h"

#include "Foundation/Wipe.h"
#include "Linux/Files/FileDescriptor.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace Nimbrel {

namespace {

/// What a terminal holds of a line at most.
constexpr std::size_t longestLine = 4096;

/// How a terminal reads lines, for as long as this lives. The interrupt key ends a line like the line feed does, so
/// that it is read and no signal ends the process while the terminal hides what is typed.
class LineMode {
 public:
  LineMode(int terminal, Terminal::Echo echo) : terminal_(terminal), echo_(echo) {
    isKnown_ = ::tcgetattr(terminal_, &former_) == 0;
    auto mode = former_;
    mode.c_lflag |= ICANON;
    mode.c_lflag &= ~static_cast<tcflag_t>(ISIG);
    if (echo == Terminal::Echo::Off) mode.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL);
    mode.c_cc[VEOL] = mode.c_cc[VINTR];
    if (isKnown_) ::tcsetattr(terminal_, TCSAFLUSH, &mode);
  }
  ~LineMode() {
    if (isKnown_) ::tcsetattr(terminal_, TCSADRAIN, &former_);
  }
  LineMode(const LineMode&) = delete;
  LineMode& operator=(const LineMode&) = delete;

  [[nodiscard]] char interruptKey() const { return static_cast<char>(former_.c_cc[VINTR]); }
  [[nodiscard]] bool showsTyping() const { return echo_ == Terminal::Echo::On; }

 private:
  int terminal_;
  Terminal::Echo echo_;
  bool isKnown_;
  termios former_{};
};

class ControllingTerminal final : public Terminal {
 public:
  explicit ControllingTerminal(FileDescriptor terminal)
      : terminal_(std::move(terminal)), notifier_(terminal_.number(), QSocketNotifier::Read) {
    notifier_.setEnabled(false);
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] { read(); });
  }
  ~ControllingTerminal() override { wipe(line_); }

  void write(std::string_view text) override;
  void ask(std::string_view question, Echo echo, Line then) override;

 private:
  void read();
  void finish(std::optional<std::string> line);

  FileDescriptor terminal_;
  QSocketNotifier notifier_;
  std::unique_ptr<LineMode> mode_;  ///< while a line is awaited
  std::string line_;                ///< as far as it has come
  Line then_;
};

void ControllingTerminal::write(std::string_view text) {
  while (!text.empty()) {
    const auto written = ::write(terminal_.number(), text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    // A terminal that has gone away says so when it is read.
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void ControllingTerminal::ask(std::string_view question, Echo echo, Line then) {
  mode_ = std::make_unique<LineMode>(terminal_.number(), echo);
  then_ = std::move(then);
  line_.reserve(longestLine);
  write(question);
  notifier_.setEnabled(true);
}

void ControllingTerminal::read() {
  char piece[secretRoom];
  const auto count = ::read(terminal_.number(), piece, sizeof piece);
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (count <= 0) return finish(std::nullopt);
  const std::string_view text(piece, static_cast<std::size_t>(count));
  const char last = text.back();
  const bool isEnded = last == '\n' || last == mode_->interruptKey();
  // No line is longer than the room; growing would leave copies behind.
  const auto room = line_.capacity() - line_.size();
  line_ += text.substr(0, std::min(room, text.size() - (isEnded ? 1 : 0)));
  ::explicit_bzero(piece, sizeof piece);
  if (!isEnded) return;
  if (last == '\n') return finish(std::move(line_));
  finish(std::nullopt);
}

void ControllingTerminal::finish(std::optional<std::string> line) {
  notifier_.setEnabled(false);
  // The user's own line end stands there only if it was shown.
  if (!line || !mode_->showsTyping()) write("\n");
  mode_.reset();
  wipe(line_);
  std::exchange(then_, {})(std::move(line));
}

}  // namespace

bool Terminal::isStandardInput() { return ::isatty(STDIN_FILENO) == 1; }

std::unique_ptr<Terminal> Terminal::open() {
  FileDescriptor terminal(::open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (!terminal.isOpen()) return nullptr;
  return std::make_unique<ControllingTerminal>(std::move(terminal));
}

}  // namespace Nimbrel
