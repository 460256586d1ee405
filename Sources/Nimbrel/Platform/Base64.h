#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

/// Base64 in the standard alphabet of RFC 4648, with padding and without line breaks. Any thread, no state.
namespace Nimbrel::Base64 {

/// The letters that so many bytes become.
[[nodiscard]] constexpr std::size_t encodedSize(std::size_t bytes) { return (bytes + 2) / 3 * 4; }

/// What encode() needs: it writes a zero behind the letters.
[[nodiscard]] constexpr std::size_t encodingRoom(std::size_t bytes) { return encodedSize(bytes) + 1; }

/// Writes the letters to the room and returns how many they are. All pieces of a text but the last have a multiple of
/// three bytes, and none more than a gigabyte.
[[nodiscard]] std::size_t encode(std::string_view bytes, std::span<char> room);

/// Writes the bytes to the room, three for four letters, and returns how many they are; absent when that is not base64.
/// All pieces of a text have a multiple of four letters, and none more than a gigabyte; padding ends the last.
[[nodiscard]] std::optional<std::size_t> decode(std::string_view letters, std::span<char> room);

}  // namespace Nimbrel::Base64
