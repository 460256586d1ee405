#include "Views/Inspector/TextPieces.h"

#include <algorithm>

namespace Nimbrel {

namespace {

/// How far before its greatest length a piece may end for the sake of a blank.
constexpr qsizetype slack = 200;

bool endsLine(QChar letter) {
  return letter == QLatin1Char('\n') || letter == QLatin1Char('\r') || letter == QChar::ParagraphSeparator;
}

/// What documents use within themselves.
QChar harmless(QChar letter) {
  const auto code = letter.unicode();
  const bool isSpecial = code == 0 || code == 0xFDD0 || code == 0xFDD1 || code == QChar::ObjectReplacementCharacter;
  return isSpecial ? QChar(QChar::ReplacementCharacter) : letter;
}

/// Whether a letter belongs to the one before it.
bool joins(QChar letter) { return letter.isLowSurrogate() || letter.isMark() || letter.unicode() == 0x200D; }

/// The length of the first piece of a line.
qsizetype pieceLength(QStringView line) {
  if (line.size() <= TextPieces::mostLength) return line.size();
  for (auto length = TextPieces::mostLength; length > TextPieces::mostLength - slack; --length) {
    if (line[length - 1].isSpace()) return length;
  }
  for (auto length = TextPieces::mostLength; length > TextPieces::mostLength - slack; --length) {
    if (!joins(line[length])) return length;
  }
  return TextPieces::mostLength;
}

class Cutter {
 public:
  explicit Cutter(const QString& text) : text_(text) { pieces_.shown.reserve(text.size()); }

  void addLine(qsizetype start, qsizetype end) {
    do {
      const auto length = pieceLength(QStringView(text_).mid(start, end - start));
      if (!pieces_.starts.isEmpty()) pieces_.shown.append(QLatin1Char('\n'));
      pieces_.starts.append(start);
      for (qsizetype i = start; i < start + length; ++i) pieces_.shown.append(harmless(text_[i]));
      start += length;
    } while (start < end);
  }
  [[nodiscard]] TextPieces take() { return std::move(pieces_); }

 private:
  const QString& text_;
  TextPieces pieces_;
};

}  // namespace

TextPieces piecesOf(const QString& text) {
  Cutter cutter(text);
  qsizetype start = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (!endsLine(text[i])) continue;
    cutter.addLine(start, i);
    if (text[i] == QLatin1Char('\r') && i + 1 < text.size() && text[i + 1] == QLatin1Char('\n')) ++i;
    start = i + 1;
  }
  cutter.addLine(start, text.size());
  return cutter.take();
}

}  // namespace Nimbrel
