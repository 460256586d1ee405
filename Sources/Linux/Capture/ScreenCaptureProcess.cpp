#include "Linux/Capture/ScreenCaptureProcess.h"

#include "Foundation/FilePath.h"
#include "Linux/Desktop/ProgramFile.h"

#include <QFile>
#include <QPointer>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <optional>
#include <set>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int startLimitMilliseconds = 5000;
/// What shells add to the number of the signal that ended a program.
constexpr int endedBySignal = 128;

QStringList texts(const std::vector<std::string>& arguments) {
  QStringList list;
  for (const auto& argument : arguments) list << QFile::decodeName(argument.c_str());
  return list;
}

bool isRecording(const std::vector<std::string>& arguments) {
  return std::ranges::find(arguments, "-v") != arguments.end();
}

/// A shell that starts us in the background has interrupts ignored, and a program inherits that.
void heedSignals() {
  for (const int number : {SIGINT, SIGTERM}) ::signal(number, SIG_DFL);
}

class Run;

/// All runs under way. Outlives everything: a QProcess takes its program with it when it is destroyed.
std::set<Run*>& runs() {
  static auto* const underWay = new std::set<Run*>;
  return *underWay;
}

/// One run of the program, for as long as that takes: it deletes itself once the program has ended.
class Run final : public QObject {
 public:
  Run(const ScreenCaptureProcessOptions& options, const std::vector<std::string>& arguments)
      : patience_(isRecording(arguments) ? options.patienceWithRecordings : options.patience),
        lastPatience_(options.lastPatience) {
    process_.setProgram(QFile::decodeName(options.program.c_str()));
    process_.setArguments(texts(arguments));
    process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process_.setStandardInputFile(QProcess::nullDevice());
    process_.setStandardOutputFile(QProcess::nullDevice());
    process_.setChildProcessModifier(heedSignals);
    limit_.setSingleShot(true);
    connect(&limit_, &QTimer::timeout, this, &Run::insist);
  }
  ~Run() override { runs().erase(this); }
  Run(const Run&) = delete;
  Run& operator=(const Run&) = delete;

  /// Why the program could not be started, and then this can be deleted.
  [[nodiscard]] std::optional<Error> start() {
    process_.start();
    if (!process_.waitForStarted(startLimitMilliseconds)) {
      const auto program = QFile::encodeName(process_.program()).toStdString();
      return Error{std::string(FilePath::lastComponent(program)) +
                   " cannot be started: " + process_.errorString().toStdString()};
    }
    return std::nullopt;
  }

  /// Only when started: from now on this belongs to itself.
  void callWhenEnded(QObject* context, ScreenCaptureTool::Then then) {
    runs().insert(this);
    connect(&process_, &QProcess::finished, context, [this, then = std::move(then)] { then(exitStatus()); });
    connect(&process_, &QProcess::finished, this, &QObject::deleteLater);
  }

  void interrupt() {
    if (isInterrupted_ || process_.state() == QProcess::NotRunning) return;
    isInterrupted_ = true;
    ::kill(static_cast<pid_t>(process_.processId()), SIGINT);
    limit_.start(patience_);
  }

 private:
  void insist() {
    if (std::exchange(isTerminated_, true)) return process_.kill();
    process_.terminate();
    limit_.start(lastPatience_);
  }

  [[nodiscard]] int exitStatus() const {
    return process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : endedBySignal + process_.exitCode();
  }

  QProcess process_;
  std::chrono::milliseconds patience_;
  std::chrono::milliseconds lastPatience_;
  QTimer limit_;
  bool isInterrupted_ = false;
  bool isTerminated_ = false;
};

class RunningProcess final : public RunningCapture {
 public:
  explicit RunningProcess(Run* run) : run_(run) {}
  void interrupt() override {
    if (run_) run_->interrupt();
  }

 private:
  QPointer<Run> run_;
};

class ScreenCaptureProcess final : public ScreenCaptureTool {
 public:
  explicit ScreenCaptureProcess(ScreenCaptureProcessOptions options) : options_(std::move(options)) {}

  [[nodiscard]] Result<std::unique_ptr<RunningCapture>> launch(QObject* context, std::vector<std::string> arguments,
                                                               Then then) override {
    auto run = std::make_unique<Run>(options_, arguments);
    if (auto failure = run->start()) return std::move(*failure);
    run->callWhenEnded(context, std::move(then));
    return std::unique_ptr<RunningCapture>(std::make_unique<RunningProcess>(run.release()));
  }

 private:
  ScreenCaptureProcessOptions options_;
};

}  // namespace

std::unique_ptr<ScreenCaptureTool> makeScreenCaptureProcess(ScreenCaptureProcessOptions options) {
  return std::make_unique<ScreenCaptureProcess>(std::move(options));
}

std::unique_ptr<ScreenCaptureTool> makeScreenCaptureProcess() {
  return makeScreenCaptureProcess({.program = helperProgram("nimbrel-screencapture")});
}

}  // namespace Nimbrel
