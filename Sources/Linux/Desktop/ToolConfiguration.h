#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Nimbrel {

/// The configuration file of another program: groups of keys with a value each.
class ToolConfiguration {
 public:
  /// Reads the file. One that cannot be read, or is larger than any such file can be, counts as empty.
  explicit ToolConfiguration(const std::string& path);

  /// The last value of the key in the group, with its escapes undone, and with environment variables filled in when the
  /// key is marked "[$e]". Absent when there is none, or when a variable is not set.
  [[nodiscard]] std::optional<std::string> value(std::string_view group, std::string_view key) const;

 private:
  std::string content_;
};

}  // namespace Nimbrel
