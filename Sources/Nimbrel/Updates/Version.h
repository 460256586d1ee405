#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// The number of a release: numbers between dots, the weightiest first. What is missing at the end is zero, so that
/// 1.2 and 1.2.0 are the same. A plain value.
class Version {
 public:
  /// Absent for anything but up to eight numbers of up to nine digits.
  [[nodiscard]] static std::optional<Version> parse(std::string_view text);

  auto operator<=>(const Version&) const = default;

 private:
  explicit Version(std::vector<std::uint32_t> numbers);

  std::vector<std::uint32_t> numbers_;  ///< without zeros at the end
};

}  // namespace Nimbrel
