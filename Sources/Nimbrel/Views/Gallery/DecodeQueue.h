#pragma once

#include "Foundation/Background.h"

#include <QObject>
#include <QThreadPool>

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace Nimbrel {

/// Makes a `Value` of each file that is on the screen, in threads of its own. What came onto the screen last goes
/// first, from the top of what came together; what left it before its turn is not begun. A file is handled once for
/// each time it appears. Main thread; only `Make` runs elsewhere, and must not throw.
template <class Value>
class DecodeQueue {
 public:
  using Make = std::function<Value(const std::string& path)>;
  using Deliver = std::function<void(const std::string& path, Value value)>;

  /// `deliver` gets each value in a later turn of the event loop, also of a file that has left the screen meanwhile.
  DecodeQueue(int threads, Make make, Deliver deliver)
      : threads_(static_cast<std::size_t>(threads)), make_(std::move(make)), deliver_(std::move(deliver)) {
    pool_.setMaxThreadCount(threads);
  }
  /// Waits for what has begun, and drops it.
  ~DecodeQueue() {
    context_.reset();
    pool_.waitForDone();
  }
  DecodeQueue(const DecodeQueue&) = delete;
  DecodeQueue& operator=(const DecodeQueue&) = delete;

  /// From now on these paths are on the screen and no others. Those that were not before are made, unless `isKnown`.
  void show(const std::vector<std::string>& paths, const std::function<bool(const std::string&)>& isKnown) {
    const auto before = std::exchange(shown_, {paths.begin(), paths.end()});
    std::erase_if(waiting_, [&](const std::string& path) { return !shown_.contains(path); });
    std::vector<std::string> appeared;
    for (const auto& path : paths) {
      if (!before.contains(path) && !begun_.contains(path) && !isKnown(path)) appeared.push_back(path);
    }
    waiting_.insert(waiting_.begin(), appeared.begin(), appeared.end());
    begin();
  }

  [[nodiscard]] bool isShown(const std::string& path) const { return shown_.contains(path); }

 private:
  void begin() {
    while (begun_.size() < threads_ && !waiting_.empty()) {
      auto path = std::move(waiting_.front());
      waiting_.pop_front();
      if (!begun_.insert(path).second) continue;
      // By value: the queue may go before the work ends, though not before it is waited for.
      inBackground(
          context_.get(), pool_, [make = make_, path] { return make(path); },
          [this, path](Value value) {
            begun_.erase(path);
            begin();
            deliver_(path, std::move(value));
          });
    }
  }

  std::size_t threads_;
  Make make_;
  Deliver deliver_;
  std::unordered_set<std::string> shown_;
  std::deque<std::string> waiting_;
  std::unordered_set<std::string> begun_;
  std::unique_ptr<QObject> context_ = std::make_unique<QObject>();
  QThreadPool pool_;
};

}  // namespace Nimbrel
