#pragma once

#include "Model/Models.h"
#include "Store/HeicEncodings.h"

#include <QObject>
#include <QThreadPool>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace Nimbrel {

/// How far the shots are that are being shrunk.
struct ShrinkProgress {
  std::size_t done = 0;
  std::size_t total = 0;  ///< shots that are no HEIC yet

  bool operator==(const ShrinkProgress&) const = default;
};

/// Takes shots in their order through the encoder, which works a few pictures ahead in the background. Main thread.
class ShrinkRun {
 public:
  /// Puts the new file in the place of the shot's old one; false when that stays.
  using Replace = std::function<bool(const Shot& shot, const std::string& heic)>;

  /// What came of it so far.
  struct Outcome {
    struct OldFile {
      std::string path;
      FileState state;  ///< that the new file was made of
    };
    std::vector<OldFile> oldFiles;  ///< that are no shot's any more
    std::int64_t bytesSaved = 0;
  };

  /// Shots that are HEIC by their name are passed over. The pool is borrowed and must outlive what is encoded in it.
  ShrinkRun(QThreadPool& pool, const ShotList& shots, double quality, Replace replace);

  /// Nothing is left, or the process is to end.
  [[nodiscard]] bool isOver() const;
  [[nodiscard]] ShrinkProgress progress() const { return {.done = done_, .total = shots_.size()}; }
  [[nodiscard]] const Outcome& outcome() const { return outcome_; }

  /// Deals with the next shot, and waits for its picture where it must. Only while it is not over.
  void takeNext();
  /// Calls `then` in a later turn of the event loop, once takeNext() would not wait; never once `context` is gone.
  void whenReady(QObject* context, std::function<void()> then) const;

 private:
  ShotList shots_;
  HeicEncodings encodings_;
  Replace replace_;
  std::size_t done_ = 0;
  Outcome outcome_;
};

}  // namespace Nimbrel
