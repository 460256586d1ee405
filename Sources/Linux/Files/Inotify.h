#pragma once

#include "Linux/Files/FileDescriptor.h"

#include <QSocketNotifier>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace Nimbrel {

/// The kernel's queue of file events. It is opened with the first watch. Main thread only.
class Inotify {
 public:
  struct Event {
    int watch;
    std::uint32_t mask;
    /// The entry that the event is about; empty when it is the watched folder itself. Valid during the call only.
    std::string_view name;
  };

  /// A watch, or the error number for which there is none.
  struct Added {
    int watch = -1;
    int error = 0;
  };

  enum class Links { Follow, Refuse };

  /// `onReadable` is called from the event loop while there are events to read.
  explicit Inotify(std::function<void()> onReadable) : onReadable_(std::move(onReadable)) {}

  /// Watches a folder for the events in `mask`, beside those that it is watched for already. Each path to the same
  /// folder gives the same watch.
  [[nodiscard]] Added add(const std::string& folder, std::uint32_t mask, Links links);
  void remove(int watch);

  /// One call for each of the events that wait, or for some hundreds if there are more.
  void read(const std::function<void(const Event& event)>& visit);

  /// Gives up all watches, and the events that wait.
  void close();

 private:
  /// 0, or the error number.
  int open();

  std::function<void()> onReadable_;
  FileDescriptor queue_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace Nimbrel
