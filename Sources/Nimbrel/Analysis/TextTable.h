#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Tables in recognised text, which knows no cells but the gaps between them. Any thread, no state.
namespace Nimbrel::TextTable {

/// The lines that have at least two cells, each with a tab between its cells. A cell ends at a tab or at two or more
/// blanks; blanks at the ends of a line are none. Columns are neither aligned nor counted.
[[nodiscard]] std::vector<std::string> rowsIn(std::string_view text);

}  // namespace Nimbrel::TextTable
