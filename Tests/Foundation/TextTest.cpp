#include "Foundation/Text.h"

#include <gtest/gtest.h>

namespace Nimbrel::Text {
namespace {

using Views = std::vector<std::string_view>;
using Strings = std::vector<std::string>;

TEST(Trimmed, RemovesHorizontalWhiteSpaceAtBothEndsAndNothingElse) {
  EXPECT_EQ(trimmed(" \t a b\u00A0\u3000"), "a b");
  EXPECT_EQ(trimmed("\n a"), "\n a");
  EXPECT_EQ(trimmed(" \t "), "");
  EXPECT_EQ(trimmed(""), "");
}

TEST(Trimmed, LeavesBytesThatAreNotUtf8) {
  EXPECT_EQ(trimmed(" \xFF "), "\xFF");
  EXPECT_EQ(trimmed("\xE3\x80"), "\xE3\x80");
}

TEST(TrimmedWithLineBreaks, RemovesLineBreaksToo) {
  EXPECT_EQ(trimmedWithLineBreaks("\r\n \u2028a\nb\u0085\t"), "a\nb");
  EXPECT_EQ(trimmedWithLineBreaks("\n"), "");
}

TEST(Lowered, FollowsUnicodeInEveryLocale) {
  EXPECT_EQ(lowered("AÄİΣ"), "aäi\u0307ς");
  EXPECT_EQ(lowered("I AM \"Ascii\""), "i am \"ascii\"");
  EXPECT_EQ(lowered(std::string("A\0Ö", 4)), std::string("a\0ö", 4));
  EXPECT_EQ(lowered("Ö\xFF"), "ö\xFF");
}

TEST(Lines, EndAtEveryUnicodeLineBreakAndEmptyOnesAreDropped) {
  EXPECT_EQ(lines("a\nb\r\nc\x0B"
                  "d\x0C"
                  "e\u0085f\u2028g\u2029h\n\n"),
            (Views{"a", "b", "c", "d", "e", "f", "g", "h"}));
  EXPECT_TRUE(lines("").empty());
}

TEST(Lines, KeepBytesThatAreNotUtf8) { EXPECT_EQ(lines("a\xC2\nb"), (Views{"a\xC2", "b"})); }

TEST(Lines, AreNoMoreThanWanted) {
  EXPECT_EQ(lines("\na\n\nb\nc", 2), (Views{"a", "b"}));
  EXPECT_EQ(lines("a\nb", 2), (Views{"a", "b"}));
  EXPECT_EQ(lines("a\nb", 3), (Views{"a", "b"}));
  EXPECT_TRUE(lines("a\nb", 0).empty());
}

TEST(TrimmedOf, RemovesTheCharactersAtBothEndsAndNothingElse) {
  EXPECT_EQ(trimmedOf("•[·a•b·]", U"·•[]"), "a•b");
  EXPECT_EQ(trimmedOf(" [a]", U"[]"), " [a");
  EXPECT_EQ(trimmedOf("[[", U"[]"), "");
  EXPECT_EQ(trimmedOf("[\xFF]", U"[]"), "\xFF");
}

TEST(WordCount, CountsThePiecesBetweenWhiteSpace) {
  EXPECT_EQ(wordCount("", 9), 0U);
  EXPECT_EQ(wordCount(" \n\t\u00A0\u3000", 9), 0U);
  EXPECT_EQ(wordCount("a b\n\nc\u2003d\u2028e ", 9), 5U);
  EXPECT_EQ(wordCount("a,b \xFF", 9), 2U);
}

TEST(WordCount, StopsAtTheMostThatIsWanted) { EXPECT_EQ(wordCount("a b c d", 2), 2U); }

TEST(CharacterCount, CountsWhatAReaderSees) {
  EXPECT_EQ(characterCount("abc"), 3U);
  EXPECT_EQ(characterCount("e\u0301e\u0301"), 2U);
  EXPECT_EQ(characterCount("\U0001F468\u200D\U0001F469\u200D\U0001F467"), 1U);
  EXPECT_EQ(characterCount("\r\n"), 1U);
}

TEST(FirstCharacters, CutsBetweenWhatAReaderSees) {
  EXPECT_EQ(firstCharacters("abc", 2), "ab");
  EXPECT_EQ(firstCharacters("abc", 3), "abc");
  EXPECT_EQ(firstCharacters("abc", 0), "");
  EXPECT_EQ(firstCharacters("", 3), "");
  EXPECT_EQ(firstCharacters("e\u0301e\u0301x", 1), "e\u0301");
  EXPECT_EQ(firstCharacters("\xFF\xFE\xFF", 2), "\xFF\xFE");
}

TEST(FittingIn, KeepsWholeCharacters) {
  EXPECT_EQ(fittingIn(3, "abc"), "abc");
  EXPECT_EQ(fittingIn(2, "abc"), "ab");
  EXPECT_EQ(fittingIn(4, "ae\u0301x"), "ae\u0301");
  EXPECT_EQ(fittingIn(3, "ae\u0301x"), "a");
  EXPECT_EQ(fittingIn(0, "abc"), "");
}

TEST(FittingIn, CutsAnOverlongCharacterBetweenCodePoints) {
  EXPECT_EQ(fittingIn(4, "e\u0301\u0301"), "e\u0301");
  EXPECT_EQ(fittingIn(1, "\u0301"), "");
}

TEST(Split, KeepsOrDropsEmptyPieces) {
  EXPECT_EQ(split("a,,b", ',', EmptyPieces::Drop), (Strings{"a", "b"}));
  EXPECT_EQ(split("a,,b,", ',', EmptyPieces::Keep), (Strings{"a", "", "b", ""}));
  EXPECT_EQ(split("", ',', EmptyPieces::Drop), Strings{});
  EXPECT_EQ(split("", ',', EmptyPieces::Keep), Strings{""});
}

TEST(IsJoined, AgreesWithJoining) {
  for (const auto& pieces : {Strings{}, Strings{"a"}, Strings{"a", "b"}, Strings{"", ""}, Strings{"a,b"}}) {
    EXPECT_TRUE(isJoined(joined(pieces, ','), pieces, ','));
    EXPECT_FALSE(isJoined(joined(pieces, ',') + "x", pieces, ','));
  }
  EXPECT_FALSE(isJoined("a,b", {"a"}, ','));
  EXPECT_FALSE(isJoined("a", {"a", ""}, ','));
}

TEST(Utf16, RoundTripsAndReplacesWhatIsNotValid) {
  EXPECT_EQ(toUtf16("a\U0001F600"), u"a\U0001F600");
  EXPECT_EQ(toUtf8(u"a\U0001F600"), "a\U0001F600");
  EXPECT_EQ(toUtf16("a\xFF"), u"a\uFFFD");
  EXPECT_EQ(toUtf8(std::u16string{char16_t{0xD800}}), "\uFFFD");
  EXPECT_EQ(toUtf16(""), u"");
}

TEST(AsciiLowered, LeavesOtherLettersAlone) { EXPECT_EQ(asciiLowered("PNGÄ"), "pngÄ"); }

}  // namespace
}  // namespace Nimbrel::Text
