#pragma once

#include "Linux/Files/InotifyFileEvents.h"
#include "Support/LogRecorder.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Nimbrel::Testing {

/// Real watching of a temporary folder, with short times between slow looks.
class FileEventsFixture : public ::testing::Test {
 protected:
  static InotifyOptions quickOptions() { return {Seconds(0.02), Seconds(0.04), nullptr}; }

  void watch(std::vector<WatchedFolder> folders, Seconds latency = Seconds(0)) {
    events_->watch(std::move(folders), latency, [this] { ++calls_; });
  }
  void watchFlat(const std::string& folder) { watch({{folder, WatchDepth::Flat}}); }
  void watchBelow(const std::string& folder) { watch({{folder, WatchDepth::Recursive}}); }

  /// Lets all that has happened so far have its effect.
  void settle() {
    runEventLoopFor(pause_);
    calls_ = 0;
  }

  /// Whether what `change` does is told.
  template <class Change>
  [[nodiscard]] bool isTold(Change change) {
    settle();
    change();
    return waitUntil([this] { return calls_ > 0; });
  }

  template <class Change>
  [[nodiscard]] bool isNotTold(Change change) {
    settle();
    change();
    runEventLoopFor(pause_);
    return calls_ == 0;
  }

  /// Whether a new file in the folder is told; it is removed again.
  [[nodiscard]] bool isWatched(const std::string& name) {
    const bool told = isTold([&] { folder_.write(name + "/probe", "content"); });
    std::filesystem::remove(folder_.path(name + "/probe"));
    settle();
    return told;
  }

  /// How many folders this process watches, as the kernel counts.
  static int watchCount() {
    int count = 0;
    for (const auto& descriptor : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
      std::ifstream facts(descriptor.path());
      for (std::string line; std::getline(facts, line);) count += line.starts_with("inotify ") ? 1 : 0;
    }
    return count;
  }

  void rename(std::string_view from, std::string_view to) const {
    std::filesystem::rename(folder_.path(from), folder_.path(to));
  }
  void remove(std::string_view name) const { std::filesystem::remove_all(folder_.path(name)); }

  void TearDown() override {
    events_.reset();
    // Qt does not remove a name that is not valid UTF-8.
    std::error_code error;
    std::filesystem::remove_all(folder_.path(), error);
  }

  /// Long enough for what has happened: events are there at once, slow looks come later.
  std::chrono::milliseconds pause_{30};
  TemporaryFolder folder_;
  LogRecorder log_;
  int calls_ = 0;
  std::unique_ptr<FileEvents> events_ = makeInotifyFileEvents(quickOptions());
};

}  // namespace Nimbrel::Testing
