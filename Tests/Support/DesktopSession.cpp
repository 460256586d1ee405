#include "Support/DesktopSession.h"

#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>

namespace Nimbrel::Testing {

namespace {

constexpr int longestStartMilliseconds = 30'000;

/// Starts a program found in the path; what it prints is nobody's.
pid_t start(std::vector<std::string> command) {
  std::vector<char*> words;
  for (auto& word : command) words.push_back(word.data());
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  ::posix_spawn_file_actions_init(&actions);
  ::posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
  ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t process = -1;
  const int error = ::posix_spawnp(&process, words.front(), &actions, nullptr, words.data(), environ);
  ::posix_spawn_file_actions_destroy(&actions);
  EXPECT_EQ(error, 0) << "cannot start " << command.front();
  return error == 0 ? process : -1;
}

void stop(pid_t& process, int signal) {
  if (process <= 0) return;
  ::kill(process, signal);
  ::waitpid(process, nullptr, 0);
  process = -1;
}

/// The line that comes through a pipe; empty when the time is up before.
std::string lineFrom(int pipe) {
  std::string line;
  pollfd source{pipe, POLLIN, 0};
  while (::poll(&source, 1, longestStartMilliseconds) > 0) {
    char character = 0;
    if (::read(pipe, &character, 1) <= 0 || character == '\n') break;
    line += character;
  }
  return line;
}

}  // namespace

DesktopSession::DesktopSession(int depth) {
  startServer(depth);
  qputenv("DISPLAY", display_.c_str());
  qunsetenv("WAYLAND_DISPLAY");
  qunsetenv("XDG_SESSION_TYPE");
  startWindowManager();
}

DesktopSession::~DesktopSession() {
  stop(windowManager_, SIGTERM);
  stop(server_, SIGTERM);
  qunsetenv("DISPLAY");
}

void DesktopSession::startServer(int depth) {
  std::array<int, 2> pipe{};
  ASSERT_EQ(::pipe2(pipe.data(), 0), 0);
  ::fcntl(pipe[0], F_SETFD, FD_CLOEXEC);
  server_ = start({"Xvfb", "-displayfd", std::to_string(pipe[1]), "-screen", "0", "1280x800x" + std::to_string(depth),
                   "-nolisten", "tcp", "-noreset", "-auth", folder_.write("authority", "")});
  ::close(pipe[1]);
  // It writes its number once it takes clients.
  display_ = ":" + lineFrom(pipe[0]);
  ::close(pipe[0]);
  ASSERT_GT(display_.size(), 1U) << "there is no display";
}

void DesktopSession::startWindowManager() {
  // Windows that come while it starts would not get the focus; this it runs when it has.
  const auto started = folder_.path("started");
  windowManager_ = start({"openbox", "--sm-disable", "--startup", "touch " + started});
  ASSERT_TRUE(waitUntil([&] { return std::filesystem::exists(started); })) << "there is no window manager";
}

void DesktopSession::kill() { stop(server_, SIGKILL); }

DesktopClient::DesktopClient(const std::vector<std::string>& command) : process_(start(command)) {}

DesktopClient::~DesktopClient() { end(); }

void DesktopClient::end() { stop(process_, SIGKILL); }

void installDesktopEntry(const std::string& dataHome, const std::string& id, const std::string& lines) {
  const auto folder = std::filesystem::path(dataHome) / "applications";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / (id + ".desktop")) << "[Desktop Entry]\nType=Application\n" << lines;
}

void bringToFront(const std::string& windowClass) {
  QProcess tool;
  tool.start(
      QStringLiteral("xdotool"),
      {QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"), QStringLiteral("--class"),
       QString::fromStdString("^" + windowClass + "$"), QStringLiteral("windowactivate"), QStringLiteral("--sync")});
  EXPECT_TRUE(tool.waitForFinished() && tool.exitCode() == 0) << "no window of the class " << windowClass;
}

}  // namespace Nimbrel::Testing
