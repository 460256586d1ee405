#pragma once

#include "Platform/HttpsFetcher.h"
#include "Updates/UpdateOffer.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Nimbrel {

/// What a look for updates goes by.
struct UpdateSource {
  std::string feedURL;
  Crypto::PublicKey key{};  ///< that downloads are signed with
  Version running;          ///< that this program is
  std::string skipped;      ///< a version that counts as nothing new; empty for none
};

/// A release together with its download, which is known to come from whoever holds the key.
struct VerifiedUpdate {
  UpdateOffer offer;
  std::shared_ptr<const std::string> download;
};

/// Absent when there is nothing new.
using UpdateOutcome = Result<std::optional<VerifiedUpdate>>;

/// Fetches the feed, chooses from it, fetches what was chosen and verifies its signature, and calls `then` with what
/// came of that; the error is in words for the status line. Nothing is written to the disk. Gives up, and calls
/// nothing, once `context` is gone; the fetcher must outlive that. Main thread.
void lookForUpdate(HttpsFetcher& fetcher, UpdateSource source, QObject* context,
                   std::function<void(UpdateOutcome outcome)> then);

}  // namespace Nimbrel
