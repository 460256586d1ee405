#include "Analysis/DetectedDates.h"

#include "Analysis/DateReader.h"
#include "Foundation/Text.h"

namespace Nimbrel::DetectedDates {

DetectedFindings dates(std::u16string_view text, Timestamp now) {
  const auto words = DateWords::ofUser();
  const auto tokens = dateTokens(text, *words);
  DetectedFindings findings;
  std::size_t end = 0;
  for (std::size_t place = 0; place < tokens.size();) {
    const auto date = readDate(tokens, *words, place, end);
    const auto moment = date ? momentOf(date->expression, now) : std::nullopt;
    if (!moment) {
      ++place;
      continue;
    }
    const auto start = tokens[place].range.start;
    const TextRange range{start, tokens[date->end - 1].range.end() - start};
    findings.push_back({range,
                        {.kind = DetectedItem::Kind::date,
                         .text = Text::toUtf8(text.substr(range.start, range.length)),
                         .url = {},
                         .date = moment}});
    place = end = date->end;
  }
  return findings;
}

}  // namespace Nimbrel::DetectedDates
