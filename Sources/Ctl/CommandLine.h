#pragma once

#include "Foundation/Result.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel::Ctl {

struct OptionSpec {
  std::string_view name;       ///< with its dashes
  std::string_view valueName;  ///< as the usage shows it; empty for an option without value
  bool isRequired = false;     ///< as the usage shows it; whether it is there is for the command to see
};

/// The words behind the name of a command, taken apart.
struct CommandLine {
  std::vector<std::string> arguments;
  std::map<std::string, std::vector<std::string>, std::less<>> options;  ///< the values of each, in their order

  [[nodiscard]] bool has(std::string_view option) const { return options.contains(option); }
  /// The value given last; absent without any.
  [[nodiscard]] std::optional<std::string_view> value(std::string_view option) const;
  /// All values, of an option that may be given more than once.
  [[nodiscard]] std::span<const std::string> values(std::string_view option) const;
};

/// Tells options, which may stand anywhere, from arguments. "--" ends the options; "--name=value" is "--name value".
/// The error names the word that is wrong.
[[nodiscard]] Result<CommandLine> parseCommandLine(std::span<const std::string_view> words,
                                                   std::span<const OptionSpec> options);

/// A whole number in decimal; absent when the text is anything else or out of range.
[[nodiscard]] std::optional<std::int64_t> decimal(std::string_view text);

/// A number in decimal, with a point before its fraction if it has one, in every language of the user; absent when the
/// text is anything else.
[[nodiscard]] std::optional<double> decimalFraction(std::string_view text);

}  // namespace Nimbrel::Ctl
