#include "Store/LibraryName.h"

#include "Foundation/FilePath.h"
#include "Foundation/Formats.h"
#include "Foundation/Text.h"

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr std::string_view forbiddenInTitles = "/\\:*?\"<>|";
constexpr std::size_t longestTitle = 44;
constexpr std::string_view separator = " — ";

bool isControl(char character) { return static_cast<unsigned char>(character) < 0x20 || character == 0x7F; }

template <class Test>
std::string blanked(std::string_view text, Test isForbidden) {
  std::string result(text);
  std::ranges::replace_if(result, isForbidden, ' ');
  return result;
}

std::string titleFor(std::string_view text) {
  const auto clean = blanked(text, [](char character) {
    return isControl(character) || forbiddenInTitles.find(character) != std::string_view::npos;
  });
  const auto title = Text::trimmedWithLineBreaks(clean);
  return std::string(Text::trimmed(Text::firstCharacters(title, longestTitle)));
}

/// Applications may be called what they like, but for what no name can hold.
std::string applicationFor(std::string_view text) {
  return blanked(text, [](char character) { return isControl(character) || character == '/'; });
}

/// A dot at the start of a name hides the file.
std::string_view withoutDotsAhead(std::string_view name) {
  const auto start = name.find_first_not_of(". ");
  return start == std::string_view::npos ? std::string_view() : name.substr(start);
}

std::string joined(std::string_view application, std::string_view title) {
  std::string name(withoutDotsAhead(application));
  if (name.empty()) return std::string(withoutDotsAhead(title));
  if (!title.empty()) name += separator;
  return name.append(title);
}

}  // namespace

std::optional<std::string> libraryName(const LibraryNameParts& parts) {
  const auto shown = joined(applicationFor(parts.application), titleFor(parts.title));
  auto ending = std::string(separator) + Formats::date(parts.date, u"yyyy-MM-dd") + ".";
  ending += parts.extension;
  if (shown.empty() || ending.size() >= FilePath::longestName) return std::nullopt;
  const auto fitting = Text::fittingIn(FilePath::longestName - ending.size(), shown);
  return std::string(Text::trimmed(fitting)) + ending;
}

}  // namespace Nimbrel
