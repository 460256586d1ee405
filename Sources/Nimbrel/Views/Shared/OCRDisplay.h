#pragma once

#include <QBrush>
#include <QPalette>
#include <QString>
#include <QTextLayout>

/// What the inspector shows of a recognised text while the user looks for words in it. The query is taken without the
/// white space and line breaks at its ends; it is looked for as it stands, whatever its case, from left to right, each
/// time behind the last match. Pure functions.
namespace Nimbrel::OCRDisplay {

/// How often the query occurs; a blank one never does.
[[nodiscard]] qsizetype matchCount(const QString& text, const QString& query);

/// A text and the formats of stretches of it, as QTextLayout takes them.
struct AttributedText {
  QString text;
  QList<QTextLayout::FormatRange> formats;

  bool operator==(const AttributedText&) const = default;
};

/// The text, unchanged, with each match on the given background.
[[nodiscard]] AttributedText highlighted(const QString& text, const QString& query, const QBrush& background);

/// The background that matches have: the accent colour at a quarter of its strength.
[[nodiscard]] QBrush matchBackground(const QPalette& palette);

}  // namespace Nimbrel::OCRDisplay
