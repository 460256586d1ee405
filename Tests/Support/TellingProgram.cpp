#include "Support/TellingProgram.h"

#include "Support/ProgramRun.h"
#include "Support/Waiting.h"

#include <gtest/gtest.h>

#include <QProcessEnvironment>

namespace Nimbrel::Testing {

TellingProgram::TellingProgram(const std::string& name, const QStringList& arguments) {
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
  process_.setProcessEnvironment(environment);
  process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process_.start(programPath(name), arguments);
  EXPECT_TRUE(process_.waitForStarted()) << name;
}

TellingProgram::~TellingProgram() {
  process_.kill();
  process_.waitForFinished();
}

bool TellingProgram::hasTold(const QByteArray& line) {
  told_ += process_.readAllStandardOutput();
  return told_.startsWith(line + '\n') || told_.contains('\n' + line + '\n');
}

void TellingProgram::expectLine(const QByteArray& line) {
  EXPECT_TRUE(waitUntil([&] { return hasTold(line); })) << line.toStdString() << " is not among\n"
                                                        << told_.toStdString();
}

bool TellingProgram::hasEnded() {
  return waitUntil([&] { return process_.state() == QProcess::NotRunning; }) &&
         process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0;
}

}  // namespace Nimbrel::Testing
