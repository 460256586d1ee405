#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Text is UTF-8 throughout. Bytes that are not valid UTF-8 are carried along untouched and belong to no class.
/// Views returned borrow from the argument.
namespace Nimbrel::Text {

/// Whether a code point is horizontal white space: blank, tab and the Unicode space separators, no line break.
[[nodiscard]] bool isHorizontalSpace(char32_t character);

/// Without the horizontal white space at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text);

/// Without the white space and line breaks at both ends.
[[nodiscard]] std::string_view trimmedWithLineBreaks(std::string_view text);

/// Without those of the characters that stand at both ends.
[[nodiscard]] std::string_view trimmedOf(std::string_view text, std::u32string_view characters);

/// The non-empty pieces between Unicode line breaks: line feed, vertical tab, form feed, carriage return, next line,
/// line separator, paragraph separator. Only so many, from the first.
[[nodiscard]] std::vector<std::string_view> lines(std::string_view text, std::size_t most = std::string_view::npos);

/// How many non-empty pieces there are between white space and line breaks. Stops counting at `most`.
[[nodiscard]] std::size_t wordCount(std::string_view text, std::size_t most);

/// The number of characters as a reader counts them (grapheme clusters).
[[nodiscard]] std::size_t characterCount(std::string_view text);

/// The first characters of a text, as a reader counts them, or all of it when it has no more.
[[nodiscard]] std::string_view firstCharacters(std::string_view text, std::size_t count);

/// As many whole characters as so many bytes can hold. A character that is too long by itself is cut between its code
/// points.
[[nodiscard]] std::string_view fittingIn(std::size_t bytes, std::string_view text);

enum class EmptyPieces { Keep, Drop };

/// The pieces between the separators. An empty text has no piece when they are dropped, one when they are kept.
[[nodiscard]] std::vector<std::string> split(std::string_view text, char separator, EmptyPieces emptyPieces);

[[nodiscard]] std::string joined(const std::vector<std::string>& pieces, char separator);

/// Whether `text` is what joined(pieces, separator) would return, found out without building it.
[[nodiscard]] bool isJoined(std::string_view text, const std::vector<std::string>& pieces, char separator);

/// Conversions for libraries that speak UTF-16; what is not valid becomes U+FFFD.
[[nodiscard]] std::u16string toUtf16(std::string_view text);
[[nodiscard]] std::string toUtf8(std::u16string_view text);

/// The text in lower case by the rules of Unicode, the same in every locale.
[[nodiscard]] std::string lowered(std::string_view text);

/// The text with the letters A to Z in lower case and all else unchanged: for file extensions and other ASCII names.
[[nodiscard]] std::string asciiLowered(std::string_view text);

}  // namespace Nimbrel::Text
