#pragma once

#include <QList>
#include <QString>

namespace Nimbrel {

/// A text in pieces that can be laid out one by one: its lines, and of a very long line several. Whatever the text
/// holds, a piece has no character that a document takes for more than a letter.
struct TextPieces {
  static constexpr qsizetype mostLength = 2000;

  QString shown;            ///< the pieces, with a line feed between each two
  QList<qsizetype> starts;  ///< where each piece stands in the text; never empty
};

/// Pure.
[[nodiscard]] TextPieces piecesOf(const QString& text);

}  // namespace Nimbrel
