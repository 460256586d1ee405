#pragma once

#include <QImage>

#include <cstdint>
#include <optional>
#include <string>

/// Pictures as HEIC files. Any thread, no state.
namespace Nimbrel::HeicEncoder {

/// The whole file for a picture in sRGB, with its transparency: nothing goes in but its pixels, colour at full
/// resolution, since text on coloured ground suffers otherwise. `quality` is from 0 to 1; at 1 nothing is lost beyond
/// the rounding between colour systems.
///
/// Absent when the file would not stay below `limit` bytes, and when the picture cannot be encoded here. An encoder
/// cannot be told to stop, so of a picture that does not look as if it stayed below the limit a few bands are tried
/// first, and when these foretell one and a half times the limit, the rest is spared.
[[nodiscard]] std::optional<std::string> encode(const QImage& picture, double quality, std::int64_t limit);

}  // namespace Nimbrel::HeicEncoder
