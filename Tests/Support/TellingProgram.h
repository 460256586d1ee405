#pragma once

#include <QByteArray>
#include <QProcess>
#include <QStringList>

#include <string>

namespace Nimbrel::Testing {

/// One of our programs on the display that the environment names, which tells how far it is, line by line. Killed with
/// this object, if it still runs then.
class TellingProgram {
 public:
  TellingProgram(const std::string& name, const QStringList& arguments);
  ~TellingProgram();
  TellingProgram(const TellingProgram&) = delete;
  TellingProgram& operator=(const TellingProgram&) = delete;

  /// Whether that line has come.
  [[nodiscard]] bool hasTold(const QByteArray& line);
  /// Waits for that line; fails the test when it does not come.
  void expectLine(const QByteArray& line);
  void endInput() { process_.closeWriteChannel(); }
  /// Waits for its end; whether that came, and by itself.
  [[nodiscard]] bool hasEnded();
  [[nodiscard]] bool isRunning() const { return process_.state() == QProcess::Running; }

 private:
  QProcess process_;
  QByteArray told_;
};

}  // namespace Nimbrel::Testing
