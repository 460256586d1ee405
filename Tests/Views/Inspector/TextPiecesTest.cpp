#include "Views/Inspector/TextPieces.h"

#include <gmock/gmock.h>

#include <QStringList>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;

/// Each piece as it stands in the text and as it is shown are as long as each other.
void expectWhole(const QString& text) {
  const auto pieces = piecesOf(text);
  const auto shown = pieces.shown.split(QLatin1Char('\n'));
  ASSERT_EQ(shown.size(), pieces.starts.size());
  for (qsizetype i = 0; i < shown.size(); ++i) {
    EXPECT_LE(shown[i].size(), TextPieces::mostLength);
    EXPECT_EQ(text.mid(pieces.starts[i], shown[i].size()), shown[i]);
  }
}

TEST(TextPiecesTest, AreTheLinesHoweverTheyEnd) {
  const auto pieces = piecesOf(QStringLiteral("a\nbc\r\nd\re\u2029\nf"));
  EXPECT_EQ(pieces.shown, QStringLiteral("a\nbc\nd\ne\n\nf"));
  EXPECT_THAT(pieces.starts, ElementsAre(0, 2, 6, 8, 10, 11));
}

TEST(TextPiecesTest, AnEmptyTextIsOneEmptyPiece) {
  EXPECT_EQ(piecesOf({}).shown, QString());
  EXPECT_THAT(piecesOf({}).starts, ElementsAre(0));
  EXPECT_THAT(piecesOf(QStringLiteral("a\n")).starts, ElementsAre(0, 2));
}

TEST(TextPiecesTest, ALongLineIsCutBehindABlank) {
  QString text;
  while (text.size() < 10'000) text += QStringLiteral("word ");
  expectWhole(text);
  for (const auto& piece : piecesOf(text).shown.split(QLatin1Char('\n'))) {
    EXPECT_TRUE(piece.endsWith(QLatin1Char(' ')));
  }
}

TEST(TextPiecesTest, ALongLineWithoutBlanksIsCutBetweenCharacters) {
  QString text(QStringLiteral("x"));
  while (text.size() < 10'000) text += QString::fromUtf8("\xF0\x9F\x93\xB7");
  expectWhole(text);
  for (const auto& piece : piecesOf(text).shown.split(QLatin1Char('\n'))) {
    EXPECT_FALSE(piece.startsWith(QString::fromUtf8("\xF0\x9F\x93\xB7").right(1)));
  }
}

TEST(TextPiecesTest, WhatDocumentsUseThemselvesIsShownAsAReplacement) {
  const auto pieces = piecesOf(QStringLiteral("a") + QChar(0) + QChar(0xFDD0) + QChar(0xFFFC) + QChar(0xFDD1));
  EXPECT_EQ(pieces.shown, QStringLiteral("a\uFFFD\uFFFD\uFFFD\uFFFD"));
}

}  // namespace
}  // namespace Nimbrel
