#include "CommandLine.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace Nimbrel::Ctl {

namespace {

struct Word {
  std::string_view name;
  std::optional<std::string_view> value;
};

Word splitAtEquals(std::string_view word) {
  const auto equals = word.find('=');
  if (equals == std::string_view::npos) return {word, std::nullopt};
  return {word.substr(0, equals), word.substr(equals + 1)};
}

}  // namespace

std::optional<std::string_view> CommandLine::value(std::string_view option) const {
  const auto found = options.find(option);
  if (found == options.end()) return std::nullopt;
  return found->second.back();
}

std::span<const std::string> CommandLine::values(std::string_view option) const {
  const auto found = options.find(option);
  return found == options.end() ? std::span<const std::string>() : found->second;
}

Result<CommandLine> parseCommandLine(std::span<const std::string_view> words, std::span<const OptionSpec> options) {
  CommandLine line;
  bool optionsEnded = false;
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (optionsEnded || !word->starts_with('-') || *word == "-") {
      line.arguments.emplace_back(*word);
      continue;
    }
    if (*word == "--") {
      optionsEnded = true;
      continue;
    }
    auto [name, value] = splitAtEquals(*word);
    const auto spec = std::ranges::find(options, name, &OptionSpec::name);
    if (spec == options.end()) return Error{"unknown option " + std::string(name)};
    if (spec->valueName.empty() && value) return Error{"option " + std::string(name) + " takes no value"};
    if (!spec->valueName.empty() && !value) {
      if (++word == words.end()) return Error{"option " + std::string(name) + " needs a value"};
      value = *word;
    }
    line.options[std::string(name)].emplace_back(value.value_or(""));
  }
  return line;
}

std::optional<std::int64_t> decimal(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || text.empty()) return std::nullopt;
  return number;
}

std::optional<double> decimalFraction(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

}  // namespace Nimbrel::Ctl
