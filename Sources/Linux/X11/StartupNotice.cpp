#include "Linux/X11/StartupNotice.h"

#include <algorithm>
#include <charconv>

namespace Nimbrel {

std::uint32_t StartupNotice::timeOf(std::string_view identifier) {
  constexpr std::string_view mark = "_TIME";
  const auto place = identifier.rfind(mark);
  if (place == std::string_view::npos) return 0;
  const auto digits = identifier.substr(place + mark.size());
  std::uint32_t time = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), time);
  return error == std::errc() && end == digits.data() + digits.size() ? time : 0;
}

std::vector<std::array<std::uint8_t, 20>> StartupNotice::removal(std::string_view identifier) {
  std::string text = "remove: ID=\"";
  for (const char letter : identifier) {
    if (letter == '"' || letter == '\\') text += '\\';
    text += letter;
  }
  text += '"';
  text += '\0';
  std::vector<std::array<std::uint8_t, 20>> messages;
  for (std::size_t start = 0; start < text.size(); start += 20) {
    const auto piece = std::string_view(text).substr(start, 20);
    std::copy(piece.begin(), piece.end(), messages.emplace_back(std::array<std::uint8_t, 20>{}).begin());
  }
  return messages;
}

}  // namespace Nimbrel
