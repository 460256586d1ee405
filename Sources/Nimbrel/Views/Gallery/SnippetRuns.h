#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// A stretch of a snippet in one style.
struct SnippetRun {
  std::string text;           ///< UTF-8, never empty
  bool isEmphasised = false;  ///< stands out from the rest, as what the search has found

  bool operator==(const SnippetRun&) const = default;
};

/// A snippet in the styles it is shown in. A match begins at U+0002 and ends at U+0003, or at the next U+0002, or with
/// the text; line breaks become blanks. Pure.
[[nodiscard]] std::vector<SnippetRun> highlighted(std::string_view snippet);

}  // namespace Nimbrel
