#pragma once

#include "Foundation/Result.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// More than any feed needs, in bytes.
inline constexpr std::size_t mostFeedBytes = std::size_t{1} << 20;

/// What a feed says of one release, as it says it: nothing is checked yet, and what it does not say is empty.
struct FeedItem {
  std::string version;
  std::string notes;      ///< what is new, as HTML
  std::string url;        ///< where the download lies
  std::string length;     ///< of the download, in bytes
  std::string signature;  ///< of the download, as base64

  bool operator==(const FeedItem&) const = default;
};

/// The items of a feed of releases, in its order: RSS 2.0 whose items have a description and an enclosure with "url",
/// "length", "version" and "edSignature", the last two in any namespace; the version may also be an element of the
/// item. What else there is does not matter. An error when that is no XML from beginning to end, or no RSS. Any thread.
[[nodiscard]] Result<std::vector<FeedItem>> parseFeed(std::string_view xml);

}  // namespace Nimbrel
