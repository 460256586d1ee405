#include "Support/SystemCallTrace.h"

#include "Foundation/FilePath.h"
#include "Support/ProgramRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <set>

namespace Nimbrel::Testing {

namespace {

/// What makes a network of its own and becomes another program in it; empty, which it says, where that is refused.
QStringList networkOfItsOwn() {
  for (const auto& way : {QStringList{QStringLiteral("unshare"), QStringLiteral("--net"), QStringLiteral("--")},
                          QStringList{QStringLiteral("unshare"), QStringLiteral("--map-root-user"),
                                      QStringLiteral("--net"), QStringLiteral("--")}}) {
    if (QProcess::execute(way.front(), way.mid(1) + QStringList{QStringLiteral("true")}) == 0) return way;
  }
  std::cout << "No network of its own can be made here: the trace alone shows what connects\n";
  return {};
}

/// The text between the first quotes of a line.
std::string quoted(const std::string& line) {
  const auto begin = line.find('"');
  const auto end = line.find('"', begin + 1);
  return begin == std::string::npos || end == std::string::npos ? std::string()
                                                                : line.substr(begin + 1, end - begin - 1);
}

bool contains(const std::string& line, std::string_view part) { return line.find(part) != std::string::npos; }

}  // namespace

std::unique_ptr<QProcess> SystemCallTrace::start(const std::string& program, const QStringList& arguments,
                                                 const std::string& home) {
  static const auto network = networkOfItsOwn();
  const auto record = QString::fromStdString(folder_.path("trace." + std::to_string(started_++)));
  // The tracer stands aside, so that the process is the program's own.
  auto command = network + QStringList{QStringLiteral("strace"),
                                       QStringLiteral("--daemonize"),
                                       QStringLiteral("--follow-forks"),
                                       QStringLiteral("--quiet=attach,personality"),
                                       QStringLiteral("--trace=execve,socket,connect"),
                                       QStringLiteral("--output"),
                                       record,
                                       QStringLiteral("--"),
                                       programPath(program)};
  command += arguments;
  auto process = std::make_unique<QProcess>();
  auto environment = environmentOf(home);
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  process->setProcessEnvironment(environment);
  process->setWorkingDirectory(QString::fromStdString(home));
  process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process->start(command.front(), command.mid(1));
  EXPECT_TRUE(process->waitForStarted()) << process->errorString().toStdString();
  return process;
}

std::vector<std::string> SystemCallTrace::programs() const {
  std::vector<std::string> programs;
  for (const auto& line : lines()) {
    if (contains(line, " execve(") && !contains(line, " = -1 ")) {
      programs.emplace_back(FilePath::lastComponent(quoted(line)));
    }
  }
  return programs;
}

std::vector<std::string> SystemCallTrace::connections() const {
  std::vector<std::string> connections;
  for (const auto& line : lines()) {
    const bool isSocket = contains(line, " socket(") || contains(line, " connect(");
    const bool staysHere = contains(line, "AF_UNIX") || contains(line, "AF_NETLINK");
    if (isSocket && !staysHere) connections.push_back(line);
  }
  return connections;
}

bool SystemCallTrace::isOver() const {
  std::set<std::string> running;
  const auto record = lines();
  for (const auto& line : record) {
    const auto process = line.substr(0, line.find(' '));
    // A thread that becomes another program takes over the process.
    const bool hasEnded =
        contains(line, " +++ exited ") || contains(line, " +++ killed ") || contains(line, " +++ superseded ");
    if (hasEnded) {
      running.erase(process);
    } else {
      running.insert(process);
    }
  }
  return !record.empty() && running.empty();
}

std::vector<std::string> SystemCallTrace::lines() const {
  std::vector<std::string> lines;
  for (int i = 0; i < started_; ++i) {
    std::ifstream record(folder_.path("trace." + std::to_string(i)));
    for (std::string line; std::getline(record, line);) lines.push_back(line);
  }
  return lines;
}

}  // namespace Nimbrel::Testing
