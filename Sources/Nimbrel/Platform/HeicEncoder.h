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
/// Absent when the file would not stay below `limit` bytes, and when the picture cannot be encoded here. The first is
/// known in the end only: an encoder neither tells how far it is nor stops, and a guess would give up pictures that do
/// become smaller.
[[nodiscard]] std::optional<std::string> encode(const QImage& picture, double quality, std::int64_t limit);

}  // namespace Nimbrel::HeicEncoder
