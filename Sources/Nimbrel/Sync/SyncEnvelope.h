#pragma once

#include "Foundation/Timestamp.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace Nimbrel {

/// The payload of a vault file: one picture with its place and its date. Its texts are borrowed from the payload, since
/// each of them can be as long as that.
struct SyncEnvelope {
  std::string_view relativePath;  ///< below the library, with "/" between the pieces
  Seconds modified{};             ///< of the file, since 2001-01-01 00:00:00 UTC
  std::string_view data;          ///< its bytes in base64: most are never looked at
};

/// The two ways to count. Between moments near our time nothing is lost but what the system's clock does not tell.
[[nodiscard]] Seconds sinceReferenceDate(Timestamp moment);
[[nodiscard]] Timestamp momentAfterReferenceDate(Seconds seconds);

/// Reads a payload: a JSON object with the members "relativePath", "modified" and "data" in any order; others are
/// ignored, and of those that come twice the last one counts. Absent when it is anything else. The bytes are changed
/// where texts are escaped, and the envelope borrows from them.
[[nodiscard]] std::optional<SyncEnvelope> readEnvelope(std::span<char> payload);

/// What stands before the base64 of a payload, and behind it. The path is UTF-8.
[[nodiscard]] std::string envelopeStart(std::string_view relativePath, Seconds modified);
inline constexpr std::string_view envelopeEnd = "\"}";

}  // namespace Nimbrel
