#include "Linux/Reading/ReaderProcess.h"

#include "Foundation/FilePath.h"
#include "Foundation/Log.h"
#include "Linux/Desktop/ProgramFile.h"
#include "Linux/Reading/AttemptJournal.h"
#include "Linux/Reading/ReaderChild.h"
#include "Linux/Reading/ReadingLanguages.h"
#include "Platform/Process.h"
#include "Platform/UserFolders.h"

#include <QPointer>
#include <QTimer>

#include <sys/stat.h>
#include <sys/types.h>

#include <chrono>
#include <deque>
#include <optional>
#include <utility>

namespace Nimbrel {

namespace {

constexpr int mostAttempts = 3;
/// How often the time limit is started once more where the child could not make use of it.
constexpr int mostExtensions = 2;

/// What tells one state of a file from another. Not when its status changed: its name may, while it is read.
struct FileVersion {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  time_t seconds = 0;
  long nanoseconds = 0;

  bool operator==(const FileVersion&) const = default;
};

std::optional<FileVersion> versionOf(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) return std::nullopt;
  return FileVersion{facts.st_dev, facts.st_ino, facts.st_size, facts.st_mtim.tv_sec, facts.st_mtim.tv_nsec};
}

class ReaderProcess final : public PictureReader {
 public:
  explicit ReaderProcess(ReaderProcessOptions options)
      : options_(std::move(options)), journal_(options_.journal), languages_(readingLanguages()) {
    limit_.setSingleShot(true);
    rest_.setSingleShot(true);
    QObject::connect(&limit_, &QTimer::timeout, &limit_, [this] { endLimit(); });
    QObject::connect(&rest_, &QTimer::timeout, &rest_, [this] { child_.reset(); });
  }
  ~ReaderProcess() override { takeBackBegin(); }
  ReaderProcess(const ReaderProcess&) = delete;
  ReaderProcess& operator=(const ReaderProcess&) = delete;

  void read(QObject* context, const std::string& path, Wanted wanted, Then then) override {
    queue_.push_back({.context = context, .request = {path, wanted, languages_}, .then = std::move(then)});
    proceed();
  }

 private:
  struct Order {
    QPointer<QObject> context;
    Reader::Request request;
    Then then;
    std::optional<FileVersion> version{};  ///< of the picture, before the child could look at it
    bool isBegun = false;                  ///< the child may have looked at it
    bool isRepeated = false;
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
    child_ = std::make_unique<ReaderChild>(
        options_.program, ReaderChild::Events{.ready = [this] { setReady(); },
                                              .begun = [this] { setBegun(); },
                                              .answered = [this](auto reading) { take(std::move(reading)); },
                                              .ended = [this] { loseChild(); }});
    startLimit();
  }

  void setReady() {
    isReady_ = true;
    limit_.stop();
    proceed();
  }

  void begin() {
    current_ = std::make_unique<Order>(std::move(queue_.front()));
    queue_.pop_front();
    current_->version = versionOf(current_->request.path);
    current_->isBegun = false;
    startLimit();
    child_->ask(current_->request);
  }

  void setBegun() {
    if (!current_) return;
    current_->isBegun = true;
    lostBeginnings_ = 0;
    journal_.begin(current_->request.path);
    startLimit();
  }

  void take(std::optional<PictureReading> reading) {
    if (!current_) return;
    limit_.stop();
    lostBeginnings_ = 0;
    if (reading) {
      journal_.finish(current_->request.path);
      if (isReplaced()) return repeat();
    } else {
      tellOnce("Nimbrel: no model of Tesseract can be loaded; no text is read");
    }
    answer(*std::exchange(current_, nullptr), std::move(reading));
    proceed();
  }

  /// Another picture lies there now than when the child was asked, or more of it. Said of an order once.
  [[nodiscard]] bool isReplaced() const {
    if (current_->isRepeated) return false;
    const auto version = versionOf(current_->request.path);
    return version && version != current_->version;
  }

  /// What was read is of a picture that is no more.
  void repeat() {
    current_->isRepeated = true;
    putBack();
    proceed();
  }

  void putBack() { queue_.push_front(std::move(*std::exchange(current_, nullptr))); }

  void startLimit() {
    extensions_ = 0;
    extendLimit();
  }

  void extendLimit() {
    limitBegin_ = std::chrono::steady_clock::now();
    workBefore_ = child_->workTime();
    limit_.start(options_.timeLimit);
  }

  void endLimit() {
    if (child_->hasNews()) return;
    if (extensions_ == mostExtensions || !wasLimitHindered()) return loseChild();
    ++extensions_;
    extendLimit();
  }

  /// Whether this process did not run at the time (so that the child may not have run either), or the child got less
  /// than half of a processor.
  [[nodiscard]] bool wasLimitHindered() const {
    const std::chrono::nanoseconds limit = options_.timeLimit;
    const auto late = std::chrono::steady_clock::now() - limitBegin_ - limit;
    return late > limit / 12 || child_->workTime() - workBefore_ < limit / 2;
  }

  /// The child is no more, or not to be waited for any longer.
  void loseChild() {
    limit_.stop();
    child_.reset();
    if (Process::isEnding()) return giveBackAll();
    if (current_ && current_->isBegun) {
      loseCurrent();
    } else if (!isReady_ || (current_ && ++lostBeginnings_ > 1)) {
      tellOnce("Nimbrel: " + options_.program + " cannot be started; no picture is read");
      return giveBackAll();
    } else if (current_) {
      putBack();
    }
    proceed();
  }

  void loseCurrent() {
    if (isReplaced()) {
      journal_.takeBack(current_->request.path);
      return repeat();
    }
    answer(*std::exchange(current_, nullptr), PictureReading());
  }

  void takeBackBegin() {
    if (current_ && current_->isBegun) journal_.takeBack(current_->request.path);
  }

  /// Nothing can be read now.
  void giveBackAll() {
    lostBeginnings_ = 0;
    takeBackBegin();
    if (current_) answer(*std::exchange(current_, nullptr), std::nullopt);
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
  std::chrono::steady_clock::time_point limitBegin_;
  std::chrono::nanoseconds workBefore_{0};  ///< of the child, when the limit was started
  int extensions_ = 0;
  int lostBeginnings_ = 0;  ///< children in a row that ended before they looked at a picture
  QTimer rest_;
  std::shared_ptr<const int> alive_ = std::make_shared<const int>(0);
  bool isReady_ = false;
  bool told_ = false;
  std::unique_ptr<ReaderChild> child_;
};

}  // namespace

std::unique_ptr<PictureReader> makeReaderProcess(ReaderProcessOptions options) {
  return std::make_unique<ReaderProcess>(std::move(options));
}

std::unique_ptr<PictureReader> makeReaderProcess() {
  const auto folders = UserFolders::ofCurrentUser();
  if (!folders) return std::make_unique<NullPictureReader>();
  return makeReaderProcess({.program = helperProgram("nimbrel-reader"),
                            .journal = FilePath::join(folders->caches, "reading-attempts.json")});
}

}  // namespace Nimbrel
