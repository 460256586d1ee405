#include "Linux/Files/TrashInfo.h"

#include <array>

namespace Nimbrel {

namespace {

constexpr std::string_view plainCharacters = "/-._~0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view hexDigits = "0123456789ABCDEF";

std::string percentEncoded(std::string_view path) {
  std::string encoded;
  for (const char character : path) {
    if (plainCharacters.find(character) != std::string_view::npos) {
      encoded += character;
      continue;
    }
    const auto byte = static_cast<unsigned char>(character);
    encoded += {'%', hexDigits[byte >> 4], hexDigits[byte & 0xF]};
  }
  return encoded;
}

std::string localTime(std::time_t moment) {
  std::tm parts{};
  ::localtime_r(&moment, &parts);
  std::array<char, 32> text{};
  return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &parts)};
}

}  // namespace

std::string trashInfo(std::string_view originalPath, std::time_t deletion) {
  return "[Trash Info]\nPath=" + percentEncoded(originalPath) + "\nDeletionDate=" + localTime(deletion) + "\n";
}

}  // namespace Nimbrel
