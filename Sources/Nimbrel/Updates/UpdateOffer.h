#pragma once

#include "Foundation/Result.h"
#include "Platform/Crypto.h"
#include "Updates/Feed.h"
#include "Updates/Version.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Nimbrel {

/// More than any download has, in bytes: it is held in memory until its signature is known to be good.
inline constexpr std::uint64_t mostDownloadBytes = std::uint64_t{256} << 20;

/// A release that a feed has for us, with all that is needed to fetch and to verify it. A plain value.
struct UpdateOffer {
  std::string version;  ///< numbers and dots
  std::string notes;    ///< what is new, as HTML that nobody has signed
  std::string url;      ///< https
  std::uint64_t length = 0;
  Crypto::Signature signature{};
};

/// The newest of the releases that are newer than the running one; absent when there is none. Of two of the same
/// version the first counts. An error, in words for the status line, when the newest cannot be fetched or verified: an
/// older one in its place would only help whoever has tampered with it. Any thread.
[[nodiscard]] Result<std::optional<UpdateOffer>> chooseUpdate(const std::vector<FeedItem>& items,
                                                              const Version& running);

}  // namespace Nimbrel
