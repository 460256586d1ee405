#include "Analysis/TextTable.h"

#include "Foundation/Pattern.h"
#include "Foundation/Text.h"

#include <cstddef>

namespace Nimbrel::TextTable {

namespace {

std::string withTabsForGaps(std::string_view line) {
  static const Pattern gap = Pattern::constant(uR"(\s{2,})");
  const auto text = Text::toUtf16(line);
  std::u16string row;
  std::size_t end = 0;
  for (const auto& match : gap.matches(text)) {
    row.append(text, end, match.start - end);
    row += u'\t';
    end = match.end();
  }
  row.append(text, end);
  return Text::toUtf8(row);
}

}  // namespace

std::vector<std::string> rowsIn(std::string_view text) {
  std::vector<std::string> rows;
  for (const auto line : Text::lines(text)) {
    const auto row = withTabsForGaps(line);
    const auto trimmed = Text::trimmedWithLineBreaks(row);
    if (trimmed.find('\t') != std::string_view::npos) rows.emplace_back(trimmed);
  }
  return rows;
}

}  // namespace Nimbrel::TextTable
