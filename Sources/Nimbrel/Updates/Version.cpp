#include "Updates/Version.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace Nimbrel {

namespace {

constexpr std::size_t mostNumbers = 8;
constexpr std::size_t mostDigits = 9;

std::optional<std::uint32_t> numberFrom(std::string_view digits) {
  if (digits.size() > mostDigits) return std::nullopt;
  std::uint32_t number = 0;
  const auto* end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, number);
  return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

}  // namespace

Version::Version(std::vector<std::uint32_t> numbers) : numbers_(std::move(numbers)) {
  while (!numbers_.empty() && numbers_.back() == 0) numbers_.pop_back();
}

std::optional<Version> Version::parse(std::string_view text) {
  std::vector<std::uint32_t> numbers;
  while (numbers.size() < mostNumbers) {
    const auto dot = std::min(text.find('.'), text.size());
    const auto number = numberFrom(text.substr(0, dot));
    if (!number) return std::nullopt;
    numbers.push_back(*number);
    if (dot == text.size()) return Version(std::move(numbers));
    text.remove_prefix(dot + 1);
  }
  return std::nullopt;
}

}  // namespace Nimbrel
