#pragma once

#include "Reader/Protocol.h"

#include <QByteArray>
#include <QProcess>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace Nimbrel {

/// One run of nimbrel-reader, which ends with this object at the latest. Each event comes in a turn of the event loop
/// of its own, and never once the object is gone, which an event may cause. Main thread.
class ReaderChild {
 public:
  struct Events {
    std::function<void()> ready;                                  ///< once
    std::function<void()> begun;                                  ///< the child is about to look at the picture
    std::function<void(std::optional<PictureReading>)> answered;  ///< for each request
    std::function<void()> ended;                                  ///< once; also when the program could not be started
  };

  ReaderChild(const std::string& program, Events events);
  ~ReaderChild();
  ReaderChild(const ReaderChild&) = delete;
  ReaderChild& operator=(const ReaderChild&) = delete;

  /// Only when ready, and when the former request was answered.
  void ask(const Reader::Request& request);

  /// Whether an event is under way: it has been read off the child, now at the latest, and comes with the next turns.
  [[nodiscard]] bool hasNews();

  /// How long the child has worked so far, all its threads together.
  [[nodiscard]] std::chrono::nanoseconds workTime() const;

 private:
  void takeLines();
  void take(std::string_view line);
  void tell(std::function<void()> event);

  Events events_;
  std::unique_ptr<QProcess> process_;
  QByteArray pending_;
  bool isReady_ = false;
  bool hasEnded_ = false;
  std::shared_ptr<int> untold_ = std::make_shared<int>(0);  ///< events under way; they know by it whether this is alive
};

}  // namespace Nimbrel
