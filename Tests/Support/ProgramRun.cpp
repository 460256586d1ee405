#include "Support/ProgramRun.h"

#include <gtest/gtest.h>

#include <fstream>

namespace Nimbrel::Testing {

namespace {

constexpr int limitMilliseconds = 60'000;

}  // namespace

QString programPath(const std::string& name) {
  const auto path = QString::fromStdString(name);
  return name.starts_with('/') ? path : QStringLiteral(NIMBREL_BIN "/") + path;
}

QProcessEnvironment environmentOf(const std::string& home) {
  auto environment = QProcessEnvironment::systemEnvironment();
  const auto folder = QString::fromStdString(home);
  environment.insert(QStringLiteral("HOME"), folder);
  environment.insert(QStringLiteral("XDG_DATA_HOME"), folder + QLatin1String("/.local/share"));
  environment.insert(QStringLiteral("XDG_CONFIG_HOME"), folder + QLatin1String("/.config"));
  environment.insert(QStringLiteral("XDG_CACHE_HOME"), folder + QLatin1String("/.cache"));
  environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder);
  environment.remove(QStringLiteral("XDG_CURRENT_DESKTOP"));
  return environment;
}

std::unique_ptr<QProcess> startProgram(const std::string& name, const QStringList& arguments, const std::string& home) {
  auto process = std::make_unique<QProcess>();
  process->setProcessEnvironment(environmentOf(home));
  process->setWorkingDirectory(QString::fromStdString(home));
  process->start(programPath(name), arguments);
  EXPECT_TRUE(process->waitForStarted()) << process->errorString().toStdString();
  return process;
}

ProgramOutput runProgram(const std::string& name, const QStringList& arguments, const std::string& home,
                         const QByteArray& input) {
  const auto process = startProgram(name, arguments, home);
  process->write(input);
  process->closeWriteChannel();
  EXPECT_TRUE(process->waitForFinished(limitMilliseconds)) << name << " does not end";
  ProgramOutput result;
  if (process->exitStatus() == QProcess::NormalExit) result.status = process->exitCode();
  result.output = process->readAllStandardOutput().toStdString();
  result.errors = process->readAllStandardError().toStdString();
  return result;
}

bool catchesSignal(const QProcess& process, int number) {
  std::ifstream status("/proc/" + std::to_string(process.processId()) + "/status");
  const std::string key = "SigCgt:";
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(key)) return (std::stoull(line.substr(key.size()), nullptr, 16) >> (number - 1) & 1) != 0;
  }
  return false;
}

}  // namespace Nimbrel::Testing
