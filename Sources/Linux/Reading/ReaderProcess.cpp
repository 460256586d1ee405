#include "Linux/Reading/ReaderProcess.h"

#include "Foundation/FilePath.h"
#include "Foundation/Log.h"
#include "Linux/Reading/AttemptJournal.h"
#include "Linux/Reading/ReaderChild.h"
#include "Linux/Reading/ReadingLanguages.h"
#include "Platform/Process.h"
#include "Platform/UserFolders.h"

#include <QCoreApplication>
#include <QFile>
#include <QPointer>
#include <QTimer>

#include <unistd.h>

#include <deque>
#include <optional>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int mostAttempts = 3;

class ReaderProcess final : public PictureReader {
 public:
  explicit ReaderProcess(ReaderProcessOptions options)
      : options_(std::move(options)), journal_(options_.journal), languages_(readingLanguages()) {
    limit_.setSingleShot(true);
    rest_.setSingleShot(true);
    QObject::connect(&limit_, &QTimer::timeout, &limit_, [this] { loseChild(); });
    QObject::connect(&rest_, &QTimer::timeout, &rest_, [this] { child_.reset(); });
  }
  ~ReaderProcess() override {
    if (current_) journal_.takeBack(current_->request.path);
  }
  ReaderProcess(const ReaderProcess&) = delete;
  ReaderProcess& operator=(const ReaderProcess&) = delete;

  void read(QObject* context, const std::string& path, Wanted wanted, Then then) override {
    queue_.push_back({context, {path, wanted, languages_}, std::move(then)});
    proceed();
  }

 private:
  struct Order {
    QPointer<QObject> context;
    Reader::Request request;
    Then then;
  };

  /// Begins with the next picture, if none is being read.
  void proceed() {
    if (current_) return;
    dropWhatNeedsNoReading();
    if (queue_.empty()) {
      if (child_ && !rest_.isActive()) rest_.start(options_.restAfter);
      return;
    }
    rest_.stop();
    if (!child_) {
      startChild();
    } else if (isReady_) {
      begin();
    }
  }

  void dropWhatNeedsNoReading() {
    for (; !queue_.empty(); queue_.pop_front()) {
      const auto& next = queue_.front();
      if (!next.context) continue;
      if (journal_.attempts(next.request.path) < mostAttempts) return;
      answer(next, PictureReading());
    }
  }

  void startChild() {
    isReady_ = false;
    limit_.start(options_.timeLimit);
    child_ = std::make_unique<ReaderChild>(
        options_.program, ReaderChild::Events{.ready = [this] { setReady(); },
                                              .answered = [this](auto reading) { take(std::move(reading)); },
                                              .ended = [this] { loseChild(); }});
  }

  void setReady() {
    isReady_ = true;
    limit_.stop();
    proceed();
  }

  void begin() {
    current_ = std::make_unique<Order>(std::move(queue_.front()));
    queue_.pop_front();
    journal_.begin(current_->request.path);
    limit_.start(options_.timeLimit);
    child_->ask(current_->request);
  }

  void take(std::optional<PictureReading> reading) {
    if (!current_) return;
    limit_.stop();
    if (!reading) tellOnce("Nimbrel: no model of Tesseract is installed; no text is read");
    journal_.finish(current_->request.path);
    answer(*std::exchange(current_, nullptr), std::move(reading));
    proceed();
  }

  /// The child is no more, or not to be waited for any longer.
  void loseChild() {
    limit_.stop();
    child_.reset();
    if (Process::isEnding()) return giveBackAll();
    if (current_) {
      answer(*std::exchange(current_, nullptr), PictureReading());
    } else if (!isReady_) {
      tellOnce("Nimbrel: " + options_.program + " cannot be started; no picture is read");
      return giveBackAll();
    }
    proceed();
  }

  /// Nothing can be read now.
  void giveBackAll() {
    if (current_) {
      journal_.takeBack(current_->request.path);
      answer(*std::exchange(current_, nullptr), std::nullopt);
    }
    for (; !queue_.empty(); queue_.pop_front()) answer(queue_.front(), std::nullopt);
  }

  void tellOnce(const std::string& line) {
    if (!std::exchange(told_, true)) Log::write(line);
  }

  /// In a turn of the event loop of its own: whoever is told may do anything, to this object as well.
  void answer(const Order& order, std::optional<PictureReading> reading) {
    if (!order.context) return;
    QMetaObject::invokeMethod(
        order.context,
        [alive = std::weak_ptr(alive_), then = order.then, reading = std::move(reading)] {
          if (!alive.expired()) then(reading);
        },
        Qt::QueuedConnection);
  }

  ReaderProcessOptions options_;
  AttemptJournal journal_;
  std::vector<std::string> languages_;
  std::deque<Order> queue_;
  std::unique_ptr<Order> current_;
  QTimer limit_;  ///< for the picture that is being read, or for the start
  QTimer rest_;
  std::shared_ptr<const int> alive_ = std::make_shared<const int>(0);
  bool isReady_ = false;
  bool told_ = false;
  std::unique_ptr<ReaderChild> child_;
};

std::string programBesideThisOne() {
  const auto folder = QFile::encodeName(QCoreApplication::applicationDirPath()).toStdString();
  auto beside = FilePath::join(folder, "nimbrel-reader");
  if (::access(beside.c_str(), X_OK) == 0) return beside;
  return FilePath::join(FilePath::folder(folder), "libexec/nimbrel/nimbrel-reader");
}

}  // namespace

std::unique_ptr<PictureReader> makeReaderProcess(ReaderProcessOptions options) {
  return std::make_unique<ReaderProcess>(std::move(options));
}

std::unique_ptr<PictureReader> makeReaderProcess() {
  const auto folders = UserFolders::ofCurrentUser();
  if (!folders) return std::make_unique<NullPictureReader>();
  return makeReaderProcess(
      {.program = programBesideThisOne(), .journal = FilePath::join(folders->caches, "reading-attempts.json")});
}

}  // namespace Nimbrel
