#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <memory>
#include <string>

namespace Nimbrel::Testing {

/// What a program that has ended printed, and how it ended.
struct ProgramOutput {
  int status = -1;  ///< -1 when it did not end by itself
  std::string output;
  std::string errors;
};

/// Where one of our programs was built. Here and below, an absolute path names any other program.
[[nodiscard]] QString programPath(const std::string& name);

/// The environment of a user whose home is `home` and who has nothing set.
[[nodiscard]] QProcessEnvironment environmentOf(const std::string& home);

/// Runs one of our programs to its end. Fails the test when it cannot be started or does not end.
[[nodiscard]] ProgramOutput runProgram(const std::string& name, const QStringList& arguments, const std::string& home,
                                       const QByteArray& input = {});

/// Starts one of our programs; it is killed with the result, if it still runs then.
[[nodiscard]] std::unique_ptr<QProcess> startProgram(const std::string& name, const QStringList& arguments,
                                                     const std::string& home);

/// Whether a running program handles a signal of that number by now, as the kernel tells.
[[nodiscard]] bool catchesSignal(const QProcess& process, int number);

}  // namespace Nimbrel::Testing
