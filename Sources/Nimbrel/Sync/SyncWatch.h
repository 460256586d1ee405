#pragma once

#include "Foundation/Result.h"
#include "Sync/EncryptedSync.h"

#include <cstddef>
#include <optional>
#include <stop_token>

namespace Nimbrel {

/// How far a run is, and whether it is to go on. One thread.
class SyncWatch {
 public:
  /// Both are borrowed.
  SyncWatch(const EncryptedSync::Progress& progress, const std::stop_token& stop);

  /// So many files more are to be looked at.
  void expect(std::size_t files);
  /// One of them is done.
  void pass();
  /// Why the run is not to go on with the next, if it is not.
  [[nodiscard]] std::optional<Error> reasonToEnd() const;

 private:
  void tell() const;

  const EncryptedSync::Progress& progress_;
  const std::stop_token& stop_;
  std::size_t done_ = 0;
  std::size_t all_ = 0;
};

}  // namespace Nimbrel
