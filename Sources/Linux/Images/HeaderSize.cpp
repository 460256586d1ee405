#include "Linux/Images/HeaderSize.h"

#include "Linux/Images/PictureSource.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>

namespace Nimbrel::Images {

using ImageFile::PixelSize;

namespace {

unsigned big16(const std::uint8_t* bytes) { return bytes[0] * 256U + bytes[1]; }
unsigned little16(const std::uint8_t* bytes) { return bytes[1] * 256U + bytes[0]; }

int big32(const std::uint8_t* bytes) {
  const std::uint32_t value = (std::uint32_t{big16(bytes)} << 16) | big16(bytes + 2);
  return value <= std::uint32_t{std::numeric_limits<int>::max()} ? static_cast<int>(value) : 0;
}

bool isFrameHeader(std::uint8_t marker) {
  constexpr std::uint8_t huffmanTables = 0xC4;
  constexpr std::uint8_t extension = 0xC8;
  constexpr std::uint8_t arithmeticConditions = 0xCC;
  return marker >= 0xC0 && marker <= 0xCF && marker != huffmanTables && marker != extension &&
         marker != arithmeticConditions;
}

/// Markers that stand alone, without a length behind them.
bool standsAlone(std::uint8_t marker) { return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8); }

bool endsTheHeaders(std::uint8_t marker) { return marker == 0xD9 || marker == 0xDA; }

}  // namespace

PixelSize pngSize(std::FILE* file) {
  std::array<std::uint8_t, 24> bytes{};
  if (readAt(file, 0, bytes) < bytes.size() || std::memcmp(&bytes[12], "IHDR", 4) != 0) return {};
  return {.width = big32(&bytes[16]), .height = big32(&bytes[20])};
}

PixelSize jpegSize(std::FILE* file) {
  std::int64_t offset = 2;
  for (;;) {
    // Marker, length, precision, height, width; a segment that is shorter is followed by others.
    std::array<std::uint8_t, 9> bytes{};
    if (readAt(file, offset, bytes) < bytes.size() || bytes[0] != 0xFF) return {};
    const auto marker = bytes[1];
    if (marker == 0xFF) {
      ++offset;
    } else if (isFrameHeader(marker)) {
      return {.width = static_cast<int>(big16(&bytes[7])), .height = static_cast<int>(big16(&bytes[5]))};
    } else if (endsTheHeaders(marker)) {
      return {};
    } else {
      offset += standsAlone(marker) ? 2 : 2 + std::int64_t{big16(&bytes[2])};
    }
  }
}

PixelSize gifSize(std::FILE* file) {
  std::array<std::uint8_t, 10> bytes{};
  if (readAt(file, 0, bytes) < bytes.size()) return {};
  return {.width = static_cast<int>(little16(&bytes[6])), .height = static_cast<int>(little16(&bytes[8]))};
}

}  // namespace Nimbrel::Images
