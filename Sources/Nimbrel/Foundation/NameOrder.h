#pragma once

#include <string>
#include <string_view>

/// Names as the user's locale compares them. Any thread.
namespace Nimbrel::NameOrder {

/// Negative, 0 or positive, as a file manager orders names: digits by their value, upper and lower case alike unless
/// nothing else differs.
[[nodiscard]] int compare(std::string_view a, std::string_view b);

/// Bytes that compare as the name does; for sorting long lists.
[[nodiscard]] std::string sortKey(std::string_view name);

/// Whether the text contains the words as a person would say so: case does not matter. Empty words are in no text.
[[nodiscard]] bool containsIgnoringCase(std::string_view text, std::string_view words);

}  // namespace Nimbrel::NameOrder
