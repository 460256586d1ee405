#pragma once

#include <string>
#include <string_view>

/// Names as the user's locale compares them. Bytes that are not UTF-8 stand for a character of their own, which is like
/// no other. Any thread.
namespace Nimbrel::NameOrder {

/// Negative, 0 or positive, as a file manager orders names: digits by their value, upper and lower case alike unless
/// nothing else differs. 0 also for names that only spell the same characters or numbers differently.
[[nodiscard]] int compare(std::string_view a, std::string_view b);

/// Bytes that compare as the name does; for sorting long lists.
[[nodiscard]] std::string sortKey(std::string_view name);

/// Whether the text contains the words as a person would say so: case does not matter, accents do, and one character
/// spelled in two ways is the same. Empty words are in no text.
[[nodiscard]] bool containsIgnoringCase(std::string_view text, std::string_view words);

/// A text made ready for many searches, or words that are looked for in many texts: making it costs more than the
/// search. A plain value.
class FoldedText {
 public:
  explicit FoldedText(std::string_view text);

  /// What containsIgnoringCase() says of the texts that the two were made of.
  [[nodiscard]] bool contains(const FoldedText& words) const;

 private:
  std::string folded_;  ///< UTF-8 in which equal characters have equal bytes, whatever their case and spelling
};

}  // namespace Nimbrel::NameOrder
