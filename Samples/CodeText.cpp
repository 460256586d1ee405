#include "Samples/CodeText.h"

#include <algorithm>

namespace Nimbrel::Samples {

namespace {

bool belongsToWord(QChar character) { return character.isLetterOrNumber() || character == u'_'; }

bool isQuote(QChar character) { return character == u'"' || character == u'\'' || character == u'`'; }

qsizetype endOfString(QStringView line, qsizetype start) {
  const auto end = line.indexOf(line[start], start + 1);
  return end < 0 ? line.size() : end + 1;
}

qsizetype endOfWord(QStringView line, qsizetype start) {
  auto end = start;
  while (end < line.size() && belongsToWord(line[end])) ++end;
  return end;
}

QColor colorOfWord(QStringView word, const CodeLanguage& language, const CodeColors& colors) {
  if (std::ranges::find(language.keywords, word) != language.keywords.end()) return colors.keyword;
  if (word.front().isDigit()) return colors.number;
  return word.front().isUpper() ? colors.type : colors.text;
}

struct Part {
  qsizetype end = 0;
  QColor color;
};

Part partAt(QStringView line, qsizetype start, const CodeLanguage& language, const CodeColors& colors) {
  if (line.sliced(start).startsWith(language.comment)) return {line.size(), colors.comment};
  if (isQuote(line[start])) return {endOfString(line, start), colors.string};
  if (belongsToWord(line[start])) {
    const auto end = endOfWord(line, start);
    return {end, colorOfWord(line.sliced(start, end - start), language, colors)};
  }
  // One at a time, for a comment may begin at any of them.
  return {start + 1, colors.text};
}

}  // namespace

void codeLine(Canvas& canvas, QPointF baseline, QStringView line, int size, const CodeLanguage& language,
              const CodeColors& colors) {
  auto x = baseline.x();
  for (qsizetype start = 0; start < line.size();) {
    const auto part = partAt(line, start, language, colors);
    x = canvas.text(x, baseline.y(), line.sliced(start, part.end - start),
                    {.size = size, .color = part.color, .face = Face::mono});
    start = part.end;
  }
}

}  // namespace Nimbrel::Samples
