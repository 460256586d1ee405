#pragma once

#include <cstddef>
#include <string_view>

/// Walking UTF-8 by characters. Any thread.
namespace Nimbrel::Utf8 {

struct Character {
  char32_t code = 0;
  std::size_t length = 0;  ///< bytes
  bool isValid = false;    ///< false for bytes that are not UTF-8, which count as characters without a code
};

/// The first and the last character of a text that is not empty.
[[nodiscard]] Character first(std::string_view text);
[[nodiscard]] Character last(std::string_view text);

}  // namespace Nimbrel::Utf8
