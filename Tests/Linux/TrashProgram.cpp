#include "TrashProgram.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>

namespace Nimbrel::Testing {

namespace {

std::string outputOf(const std::string& dataHome, const QString& program, const QStringList& arguments,
                     const QByteArray& input) {
  auto environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("XDG_DATA_HOME"), QString::fromStdString(dataHome));
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
  QProcess process;
  process.setProcessEnvironment(environment);
  process.start(program, arguments);
  process.write(input);
  process.closeWriteChannel();
  EXPECT_TRUE(process.waitForFinished()) << process.errorString().toStdString();
  EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  return process.readAllStandardOutput().toStdString();
}

}  // namespace

std::string trashListed(const std::string& dataHome) {
  return outputOf(dataHome, QStringLiteral("trash-list"), {}, {});
}

void restoreFromTrash(const std::string& dataHome, const std::string& path) {
  const auto said =
      outputOf(dataHome, QStringLiteral("trash-restore"), {QString::fromStdString(path)}, QByteArrayLiteral("0\n"));
  EXPECT_NE(said.find("What file to restore"), std::string::npos) << said;
}

}  // namespace Nimbrel::Testing
