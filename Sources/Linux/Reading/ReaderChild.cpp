#include "Linux/Reading/ReaderChild.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcessEnvironment>

#include <ctime>
#include <string_view>
#include <utility>

namespace Nimbrel {

namespace {

QProcessEnvironment environment() {
  auto variables = QProcessEnvironment::systemEnvironment();
  // The recognition is spread over threads line by line; more of them inside each cost twice as much as they gain.
  variables.insert(QStringLiteral("OMP_THREAD_LIMIT"), QStringLiteral("1"));
  return variables;
}

/// How long the kernel may take to end a process that was killed.
constexpr int lastMilliseconds = 1000;

}  // namespace

ReaderChild::ReaderChild(const std::string& program, Events events)
    : events_(std::move(events)), process_(std::make_unique<QProcess>()) {
  process_->setProgram(QFile::decodeName(program.c_str()));
  process_->setProcessEnvironment(environment());
  process_->setProcessChannelMode(QProcess::ForwardedErrorChannel);
  const auto end = [this] {
    if (!std::exchange(hasEnded_, true)) tell(events_.ended);
  };
  QObject::connect(process_.get(), &QProcess::readyReadStandardOutput, process_.get(), [this] { takeLines(); });
  QObject::connect(process_.get(), &QProcess::finished, process_.get(), end);
  QObject::connect(process_.get(), &QProcess::errorOccurred, process_.get(), [end](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart) end();
  });
  process_->start();
}

ReaderChild::~ReaderChild() {
  process_->disconnect();
  process_->kill();
  if (process_->state() == QProcess::NotRunning || process_->waitForFinished(lastMilliseconds)) return;
  // A disk that does not answer holds it; the destructor of QProcess would wait with it.
  auto* stuck = process_.release();
  QObject::connect(stuck, &QProcess::finished, stuck, &QObject::deleteLater);
}

void ReaderChild::ask(const Reader::Request& request) {
  process_->write(QByteArray::fromStdString(Reader::encoded(request) + '\n'));
}

bool ReaderChild::hasNews() {
  process_->waitForReadyRead(0);
  return *untold_ > 0;
}

std::chrono::nanoseconds ReaderChild::workTime() const {
  clockid_t clock{};
  timespec time{};
  const auto id = static_cast<pid_t>(process_->processId());
  if (id <= 0 || ::clock_getcpuclockid(id, &clock) != 0 || ::clock_gettime(clock, &time) != 0) return {};
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

void ReaderChild::takeLines() {
  pending_ += process_->readAllStandardOutput();
  for (auto end = pending_.indexOf('\n'); end >= 0; end = pending_.indexOf('\n')) {
    take({pending_.constData(), static_cast<std::size_t>(end)});
    pending_.remove(0, end + 1);
  }
}

void ReaderChild::take(std::string_view line) {
  if (!isReady_) {
    isReady_ = line == Reader::ready;
    if (isReady_) tell(events_.ready);
  } else if (line == Reader::begun) {
    tell(events_.begun);
  } else if (auto answer = Reader::decodedAnswer(line)) {
    tell([answered = events_.answered, reading = std::move(answer->reading)] { answered(reading); });
  }
}

void ReaderChild::tell(std::function<void()> event) {
  ++*untold_;
  // Not sent to the process itself, which the event may destroy.
  QMetaObject::invokeMethod(
      QCoreApplication::instance(),
      [untold = std::weak_ptr(untold_), event = std::move(event)] {
        if (const auto count = untold.lock()) {
          --*count;
        } else {
          return;
        }
        event();
      },
      Qt::QueuedConnection);
}

}  // namespace Nimbrel
