#include "Support/TerminalRun.h"

#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>

#include <array>
#include <vector>

namespace Nimbrel::Testing {

namespace {

/// The form that the system takes lists of texts in; borrows them.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (auto& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> texts(const QStringList& list) {
  std::vector<std::string> result;
  for (const auto& text : list) result.push_back(text.toStdString());
  return result;
}

/// Where the standard streams of a program lead; null for the terminal.
struct Streams {
  const char* input = nullptr;
  const char* output = nullptr;
  const char* errors = nullptr;
};

[[noreturn]] void become(const char* program, char* const* arguments, char* const* environment, int slave,
                         const Streams& streams) {
  ::login_tty(slave);
  if (streams.input != nullptr) ::dup2(::open(streams.input, O_RDONLY), STDIN_FILENO);
  ::dup2(::open(streams.output, O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
  ::dup2(::open(streams.errors, O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
  ::execve(program, arguments, environment);
  ::_exit(127);
}

}  // namespace

TerminalRun::TerminalRun(const std::string& name, const QStringList& arguments, const QProcessEnvironment& environment,
                         Input input) {
  const auto program = programPath(name).toStdString();
  auto words = texts(QStringList{programPath(name)} + arguments);
  auto variables = texts(environment.toStringList());
  const auto wordList = pointersTo(words);
  const auto variableList = pointersTo(variables);
  const auto output = folder_.path("output");
  const auto errors = folder_.path("errors");
  const Streams streams{
      .input = input == Input::Nothing ? "/dev/null" : nullptr, .output = output.c_str(), .errors = errors.c_str()};
  EXPECT_EQ(::openpty(&terminal_, &slave_, nullptr, nullptr, nullptr), 0);
  ::fcntl(terminal_, F_SETFL, O_NONBLOCK);
  ::fcntl(terminal_, F_SETFD, FD_CLOEXEC);
  child_ = ::fork();
  if (child_ == 0) {
    become(program.c_str(), wordList.data(), variableList.data(), ::dup(slave_), streams);
  }
  EXPECT_GT(child_, 0);
}

TerminalRun::~TerminalRun() {
  if (child_ > 0) {
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
  }
  ::close(slave_);
  ::close(terminal_);
}

void TerminalRun::look() {
  std::array<char, 1000> piece{};
  for (ssize_t count = 0; (count = ::read(terminal_, piece.data(), piece.size())) > 0;) {
    screen_.append(piece.data(), static_cast<std::size_t>(count));
  }
}

bool TerminalRun::shows(std::string_view text) {
  return waitUntil([&] {
    look();
    return screen_.find(text) != std::string::npos;
  });
}

void TerminalRun::type(std::string_view keys) const {
  EXPECT_EQ(::write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
}

void TerminalRun::signal(int number) const { EXPECT_EQ(::kill(child_, number), 0); }

bool TerminalRun::echoes() const {
  termios mode{};
  EXPECT_EQ(::tcgetattr(slave_, &mode), 0);
  return (mode.c_lflag & ECHO) != 0;
}

ProgramOutput TerminalRun::result() {
  int status = 0;
  EXPECT_TRUE(waitUntil([&] { return ::waitpid(child_, &status, WNOHANG) == child_; })) << "does not end";
  child_ = -1;
  look();
  ProgramOutput result;
  if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
  result.output = contentOf(folder_.path("output"));
  result.errors = contentOf(folder_.path("errors"));
  return result;
}

}  // namespace Nimbrel::Testing
