#include "Sync/Base64Text.h"

#include <cstdint>

namespace Nimbrel {

namespace {

/// 0 or 1, without a jump, so that the compiler can look at many letters at once.
std::uint8_t isLetter(std::uint8_t c) {
  const auto lowered = static_cast<std::uint8_t>(c | 0x20);
  return static_cast<std::uint8_t>(static_cast<std::uint8_t>(lowered - 'a') < 26) |
         static_cast<std::uint8_t>(static_cast<std::uint8_t>(c - '0') < 10) | static_cast<std::uint8_t>(c == '+') |
         static_cast<std::uint8_t>(c == '/');
}

// All of a vault comes through here in each run: for processors that look at twice as many letters at once there is a
// second version.
#ifdef __x86_64__
__attribute__((target_clones("avx2", "default")))
#endif
bool areLetters(std::string_view text) {
  std::uint8_t all = 1;
  for (const char c : text) all &= isLetter(static_cast<std::uint8_t>(c));
  return all != 0;
}

}  // namespace

bool isBase64(std::string_view text) {
  if (text.size() % 4 != 0) return false;
  for (int padding = 0; padding < 2 && text.ends_with('='); ++padding) text.remove_suffix(1);
  return areLetters(text);
}

}  // namespace Nimbrel
