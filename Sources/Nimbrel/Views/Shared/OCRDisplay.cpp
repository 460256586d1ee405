#include "Views/Shared/OCRDisplay.h"

namespace Nimbrel::OCRDisplay {

namespace {

constexpr float matchOpacity = 0.25F;

/// Where the query stands, and how long it is.
struct Matches {
  QList<qsizetype> starts;
  qsizetype length = 0;
};

Matches matchesOf(const QString& query, const QString& text) {
  const auto words = query.trimmed();
  Matches matches{.starts = {}, .length = words.size()};
  if (words.isEmpty()) return matches;
  for (auto start = text.indexOf(words, 0, Qt::CaseInsensitive); start >= 0;
       start = text.indexOf(words, start + words.size(), Qt::CaseInsensitive)) {
    matches.starts.append(start);
  }
  return matches;
}

}  // namespace

qsizetype matchCount(const QString& text, const QString& query) { return matchesOf(query, text).starts.size(); }

AttributedText highlighted(const QString& text, const QString& query, const QBrush& background) {
  AttributedText result{.text = text, .formats = {}};
  QTextCharFormat format;
  format.setBackground(background);
  const auto matches = matchesOf(query, text);
  for (const auto start : matches.starts) {
    result.formats.append(
        {.start = static_cast<int>(start), .length = static_cast<int>(matches.length), .format = format});
  }
  return result;
}

QBrush matchBackground(const QPalette& palette) {
  auto colour = palette.color(QPalette::Highlight);
  colour.setAlphaF(matchOpacity);
  return colour;
}

}  // namespace Nimbrel::OCRDisplay
