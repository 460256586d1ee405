#include "RecognitionScore.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <numeric>

namespace Nimbrel::Benchmarks {

namespace {

using Counts = QHash<QString, int>;

QString plain(QString text) {
  for (auto& character : text) {
    if (QStringView(u"“”„«»″").contains(character)) character = u'"';
    if (QStringView(u"‘’‚`´′").contains(character)) character = u'\'';
    if (QStringView(u"–—−‐‑").contains(character)) character = u'-';
  }
  return text;
}

QStringList wordsOf(const QString& text) {
  static const QRegularExpression blanks(QStringLiteral("\\s+"));
  return plain(text).split(blanks, Qt::SkipEmptyParts);
}

QStringList tokensOf(const QString& text) {
  static const QRegularExpression rest(QStringLiteral("[^\\p{L}\\p{N}]+"));
  auto tokens = text.toCaseFolded().split(rest, Qt::SkipEmptyParts);
  tokens.removeIf([](const QString& token) { return token.size() < 2; });
  return tokens;
}

Counts countsOf(const QStringList& list) {
  Counts counts;
  for (const auto& text : list) ++counts[text];
  return counts;
}

Found foundIn(const QStringList& wanted, const QStringList& given) {
  Found found{static_cast<int>(wanted.size()), static_cast<int>(given.size()), 0};
  const auto there = countsOf(given);
  const auto counts = countsOf(wanted);
  for (auto it = counts.begin(); it != counts.end(); ++it) found.both += std::min(it.value(), there.value(it.key()));
  return found;
}

QString textOf(const Page& page) {
  QStringList lines;
  for (const auto& line : page.lines) lines << line.text;
  return lines.join(u'\n');
}

/// The least number of changes that make `line` out of any part of `read`.
int slipsOf(const QString& line, const QString& read) {
  std::vector<int> costs(static_cast<std::size_t>(line.size()) + 1);
  std::iota(costs.begin(), costs.end(), 0);
  int best = costs.back();
  for (const auto character : read) {
    int diagonal = costs[0];
    for (std::size_t i = 1; i < costs.size(); ++i) {
      const int changed = diagonal + (line[static_cast<qsizetype>(i) - 1] == character ? 0 : 1);
      diagonal = costs[i];
      costs[i] = std::min({changed, costs[i] + 1, costs[i - 1] + 1});
    }
    best = std::min(best, costs.back());
  }
  return best;
}

QStringList surplus(const QStringList& of, const QStringList& over) {
  auto left = countsOf(over);
  QStringList result;
  for (const auto& text : of) {
    if (--left[text] < 0) result << text;
  }
  return result;
}

}  // namespace

Found& Found::operator+=(const Found& other) {
  wanted += other.wanted;
  given += other.given;
  both += other.both;
  return *this;
}

Score& Score::operator+=(const Score& other) {
  words += other.words;
  tokens += other.tokens;
  smallWords += other.smallWords;
  longWords += other.longWords;
  characters += other.characters;
  slips += other.slips;
  return *this;
}

Score scoreOf(const Page& page, const QString& read) {
  Score score;
  const auto given = wordsOf(read);
  const auto wanted = wordsOf(textOf(page));
  score.words = foundIn(wanted, given);
  score.tokens = foundIn(tokensOf(textOf(page)), tokensOf(read));
  QStringList small;
  const auto flat = given.join(u' ');
  for (const auto& line : page.lines) {
    const auto text = wordsOf(line.text).join(u' ');
    if (line.pixels <= 11) small << wordsOf(line.text);
    score.characters += static_cast<int>(text.size());
    score.slips += slipsOf(text, flat);
  }
  score.smallWords = foundIn(small, given);
  auto longOnes = wanted;
  longOnes.removeIf([](const QString& word) { return word.size() <= 20; });
  score.longWords = foundIn(longOnes, given);
  return score;
}

Misses missesOf(const Page& page, const QString& read) {
  const auto wanted = wordsOf(textOf(page));
  const auto given = wordsOf(read);
  return {surplus(wanted, given), surplus(given, wanted)};
}

}  // namespace Nimbrel::Benchmarks
