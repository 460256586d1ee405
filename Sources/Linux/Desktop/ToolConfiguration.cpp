#include "Linux/Desktop/ToolConfiguration.h"

#include "Foundation/Text.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace Nimbrel {

namespace {

constexpr std::uintmax_t largestFile = 1 << 20;

std::string readAll(const std::string& path) {
  std::error_code error;
  // Of a pipe the end might never come.
  if (!std::filesystem::is_regular_file(path, error)) return {};
  const auto size = std::filesystem::file_size(path, error);
  if (error || size > largestFile) return {};
  std::string content(size, '\0');
  std::ifstream file(path, std::ios::binary);
  file.read(content.data(), static_cast<std::streamsize>(size));
  content.resize(static_cast<std::size_t>(file.gcount()));
  return content;
}

/// A key with what its file says about it in brackets.
struct Key {
  std::string_view name;
  bool takesVariables = false;
};

Key parsedKey(std::string_view text) {
  const auto bracket = text.find("[$");
  if (bracket == std::string_view::npos) return {text, false};
  const auto marks = text.substr(bracket + 2, text.find(']', bracket) - bracket - 2);
  return {Text::trimmed(text.substr(0, bracket)), marks.find('e') != std::string_view::npos};
}

char unescaped(char letter) {
  switch (letter) {
    case 's':
      return ' ';
    case 't':
      return '\t';
    case 'n':
      return '\n';
    case 'r':
      return '\r';
    default:
      return letter;
  }
}

std::string withoutEscapes(std::string_view value) {
  std::string result;
  for (std::size_t at = 0; at < value.size(); ++at) {
    const bool isEscape = value[at] == '\\' && at + 1 < value.size();
    result += isEscape ? unescaped(value[++at]) : value[at];
  }
  return result;
}

bool isNameCharacter(char character) {
  return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
         (character >= '0' && character <= '9') || character == '_';
}

/// The name of the variable at the start of a text behind a dollar sign, in braces or bare.
struct Variable {
  std::string name;
  std::size_t length = 0;
};

Variable variableAt(std::string_view text) {
  if (text.starts_with('{')) {
    const auto end = text.find('}');
    if (end == std::string_view::npos) return {};
    return {std::string(text.substr(1, end - 1)), end + 1};
  }
  std::size_t length = 0;
  while (length < text.size() && isNameCharacter(text[length])) ++length;
  return {std::string(text.substr(0, length)), length};
}

std::optional<std::string> withVariables(std::string_view value) {
  std::string result;
  for (std::size_t at = 0; at < value.size(); ++at) {
    if (value[at] != '$') {
      result += value[at];
      continue;
    }
    const auto variable = variableAt(value.substr(at + 1));
    const char* content = variable.name.empty() ? nullptr : std::getenv(variable.name.c_str());
    if (content == nullptr) return std::nullopt;
    result += content;
    at += variable.length;
  }
  return result;
}

}  // namespace

ToolConfiguration::ToolConfiguration(const std::string& path) : content_(readAll(path)) {}

std::optional<std::string> ToolConfiguration::value(std::string_view group, std::string_view key) const {
  std::optional<std::string> found;
  bool isInGroup = false;
  for (const auto line : Text::lines(content_)) {
    const auto text = Text::trimmed(line);
    if (text.starts_with('[')) {
      isInGroup = text.ends_with(']') && text.substr(1, text.size() - 2) == group;
      continue;
    }
    const auto equals = text.find('=');
    if (!isInGroup || equals == std::string_view::npos) continue;
    const auto [name, takesVariables] = parsedKey(Text::trimmed(text.substr(0, equals)));
    if (name != key) continue;
    const auto value = withoutEscapes(Text::trimmed(text.substr(equals + 1)));
    found = takesVariables ? withVariables(value) : value;
  }
  return found;
}

}  // namespace Nimbrel
