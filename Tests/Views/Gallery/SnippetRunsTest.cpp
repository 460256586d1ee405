#include "Views/Gallery/SnippetRuns.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

SnippetRun plain(std::string text) { return {std::move(text), false}; }
SnippetRun match(std::string text) { return {std::move(text), true}; }

TEST(SnippetRuns, WhatTheSearchFoundIsEmphasised) {
  EXPECT_THAT(highlighted("a \x02"
                          "word\x03 of it"),
              ElementsAre(plain("a "), match("word"), plain(" of it")));
}

TEST(SnippetRuns, ATextWithoutMarksIsPlain) { EXPECT_THAT(highlighted("words"), ElementsAre(plain("words"))); }

TEST(SnippetRuns, AnEmptyTextHasNoRuns) { EXPECT_THAT(highlighted(""), IsEmpty()); }

TEST(SnippetRuns, MarksWithNothingBetweenThemAddNothing) {
  EXPECT_THAT(highlighted("\x02\x03"), IsEmpty());
  EXPECT_THAT(highlighted("\x02one\x03\x02two\x03"), ElementsAre(match("one"), match("two")));
}

TEST(SnippetRuns, AMatchThatIsNotEndedStillShows) {
  EXPECT_THAT(highlighted("a \x02"
                          "cut"),
              ElementsAre(plain("a "), match("cut")));
}

TEST(SnippetRuns, AMatchEndsWhereTheNextBegins) {
  EXPECT_THAT(highlighted("\x02one\x02two\x03"), ElementsAre(match("one"), match("two")));
}

TEST(SnippetRuns, AnEndWithoutABeginningLeavesTheTextPlain) {
  EXPECT_THAT(highlighted("one\x03two"), ElementsAre(plain("one"), plain("two")));
}

TEST(SnippetRuns, LineBreaksBecomeBlanksEverywhere) {
  EXPECT_THAT(highlighted("a\nb\x02"
                          "c\nd\x03\n"),
              ElementsAre(plain("a b"), match("c d"), plain(" ")));
}

TEST(SnippetRuns, OtherLettersStayWhole) {
  EXPECT_THAT(highlighted("\x02Übergröße\x03 €"), ElementsAre(match("Übergröße"), plain(" €")));
}

}  // namespace
}  // namespace Nimbrel
