#include "Sync/SyncWatch.h"

#include "Sync/SyncErrors.h"

namespace Nimbrel {

SyncWatch::SyncWatch(const EncryptedSync::Progress& progress, const std::stop_token& stop)
    : progress_(progress), stop_(stop) {}

void SyncWatch::expect(std::size_t files) {
  all_ += files;
  tell();
}

void SyncWatch::pass() {
  ++done_;
  tell();
}

std::optional<Error> SyncWatch::reasonToEnd() const {
  if (stop_.stop_requested()) return SyncErrors::stopped();
  return std::nullopt;
}

void SyncWatch::tell() const {
  if (progress_) progress_(done_, all_);
}

}  // namespace Nimbrel
