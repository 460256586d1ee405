#include "Foundation/NameOrder.h"

#include "Support/EnvironmentVariable.h"

#include <gmock/gmock.h>

#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <functional>
#include <future>
#include <random>
#include <vector>

namespace Nimbrel::NameOrder {
namespace {

using ::testing::ElementsAreArray;

using Names = std::vector<std::string>;

Names sorted(Names names) {
  std::ranges::stable_sort(names, [](const auto& a, const auto& b) { return compare(a, b) < 0; });
  return names;
}

/// What comes out under another locale: each thread asks the environment when it first compares.
template <class Work>
auto under(const std::string& locale, Work work) {
  const Testing::EnvironmentVariable all("LC_ALL", locale);
  return std::async(std::launch::async, work).get();
}

int sign(int number) { return (number > 0) - (number < 0); }

/// Names of every sort that a folder can hold.
const Names& oddNames() {
  static const Names names{"",
                           "a",
                           "A",
                           "B",
                           "ä",
                           "a\u0308",
                           "z",
                           "Shot 2.png",
                           "Shot 10.png",
                           "shot 2.png",
                           "Shot 02.png",
                           "Shot 99999999999999999999999.png",
                           "Shot 100000000000000000000000.png",
                           "\xFF\xFE.png",
                           "\xE2\x82",
                           "a\xC3",
                           "a\nb",
                           "日本",
                           "😀.png",
                           " leading",
                           "a-b",
                           "a b",
                           "ab",
                           ".hidden"};
  return names;
}

TEST(NameOrder, DigitsGoByTheirValue) {
  EXPECT_LT(compare("Shot 2.png", "Shot 10.png"), 0);
  EXPECT_LT(compare("Shot 9", "Shot 99999999999999999999999"), 0);
  EXPECT_LT(compare("Shot 99999999999999999999999", "Shot 100000000000000000000000"), 0);
  EXPECT_LT(compare("Screenshot 2026-03-02 at 9.05.01", "Screenshot 2026-03-02 at 10.04.59"), 0);
}

TEST(NameOrder, LeadingZerosDoNotMatter) { EXPECT_EQ(compare("Shot 007.png", "Shot 7.png"), 0); }

TEST(NameOrder, CaseMattersOnlyWhenNothingElseDiffers) {
  const Names order{"alpha", "Alpha", "ALPHA 2", "beta", "Gamma", "zeta"};
  EXPECT_THAT(sorted({"zeta", "Gamma", "ALPHA 2", "Alpha", "beta", "alpha"}), ElementsAreArray(order));
}

TEST(NameOrder, AccentsMatterLessThanLetters) {
  const Names order{"Aerger", "Ärger 1", "Arger 2", "Ärger 3", "Zorn"};
  EXPECT_THAT(sorted({"Zorn", "Ärger 3", "Arger 2", "Ärger 1", "Aerger"}), ElementsAreArray(order));
}

TEST(NameOrder, OneCharacterInTwoSpellingsIsTheSame) {
  EXPECT_EQ(compare("Ärger", "A\u0308rger"), 0);
  EXPECT_EQ(sortKey("Ärger"), sortKey("A\u0308rger"));
}

TEST(NameOrder, BlanksAndDashesCount) {
  const Names order{"a b", "a-b", "ab"};
  EXPECT_THAT(sorted({"ab", "a-b", "a b"}), ElementsAreArray(order));
  EXPECT_THAT(under("th_TH.UTF-8", [] { return sorted({"ab", "a-b", "a b"}); }), ElementsAreArray(order));
}

TEST(NameOrder, IsThatOfTheUsersLocale) {
  EXPECT_LT(compare("ähnlich", "zebra"), 0);
  EXPECT_GT(under("sv_SE.UTF-8", [] { return compare("ähnlich", "zebra"); }), 0);
}

TEST(NameOrder, ALocaleThatNobodyKnowsIsAnsweredWithAnOrderAllTheSame) {
  EXPECT_LT(under("xx_YY.UTF-8", [] { return compare("Shot 2", "Shot 10"); }), 0);
}

TEST(NameOrder, SortKeysCompareAsTheNamesDo) {
  for (const auto& a : oddNames()) {
    for (const auto& b : oddNames()) {
      EXPECT_EQ(sign(compare(a, b)), sign(sortKey(a).compare(sortKey(b)))) << a << " and " << b;
    }
  }
}

TEST(NameOrder, NamesThatAreNoTextHaveAnOrderToo) {
  EXPECT_NE(compare("\xFF.png", "a.png"), 0);
  EXPECT_EQ(sign(compare("\xFF.png", "a.png")), -sign(compare("a.png", "\xFF.png")));
  EXPECT_EQ(compare("\xFF.png", "\xFF.png"), 0);
}

TEST(NameOrder, ALongNameHasAWholeKey) {
  const std::string name(5000, 'a');
  EXPECT_LT(sortKey(name + "a"), sortKey(name + "b"));
  EXPECT_LT(sortKey(std::string(5000, '7')), sortKey(std::string(5000, '8')));
}

TEST(NameOrder, IsTheSameInAllThreads) {
  std::vector<std::future<Names>> results;
  for (int i = 0; i < 4; ++i) results.push_back(std::async(std::launch::async, [] { return sorted(oddNames()); }));
  const auto expected = sorted(oddNames());
  for (auto& result : results) EXPECT_THAT(result.get(), ElementsAreArray(expected));
}

TEST(ContainsIgnoringCase, CaseDoesNotMatter) {
  EXPECT_TRUE(containsIgnoringCase("Your INVOICE of March", "invoice"));
  EXPECT_TRUE(containsIgnoringCase("your invoice of March", "OF MARCH"));
  EXPECT_FALSE(containsIgnoringCase("your invoice", "invoices"));
}

TEST(ContainsIgnoringCase, CaseIsThatOfAllScripts) {
  EXPECT_TRUE(containsIgnoringCase("ÜBERSICHT", "übersicht"));
  EXPECT_TRUE(containsIgnoringCase("ΟΔΥΣΣΕΥΣ", "οδυσσευς"));
  EXPECT_TRUE(containsIgnoringCase("Hauptstraße 5", "HAUPTSTRASSE"));
  EXPECT_TRUE(containsIgnoringCase("300 \u212A", "k"));  // the sign of Kelvin
}

TEST(ContainsIgnoringCase, AccentsMatter) {
  EXPECT_FALSE(containsIgnoringCase("résumé", "resume"));
  EXPECT_FALSE(containsIgnoringCase("resume", "résumé"));
}

TEST(ContainsIgnoringCase, OneCharacterInTwoSpellingsIsTheSame) {
  EXPECT_TRUE(containsIgnoringCase("CAFE\u0301", "café"));
  EXPECT_TRUE(containsIgnoringCase("café", "CAFE\u0301"));
}

TEST(ContainsIgnoringCase, ALetterIsNotFoundUnderAMark) {
  EXPECT_FALSE(containsIgnoringCase("cafe\u0301", "cafe"));
  EXPECT_FALSE(containsIgnoringCase("x\u0302", "x"));  // which has no spelling in one piece
  EXPECT_TRUE(containsIgnoringCase("x\u0302 and x", "x"));
}

TEST(ContainsIgnoringCase, EmptyWordsAreInNoText) {
  EXPECT_FALSE(containsIgnoringCase("text", ""));
  EXPECT_FALSE(containsIgnoringCase("", ""));
  EXPECT_FALSE(containsIgnoringCase("", "words"));
}

TEST(ContainsIgnoringCase, BytesThatAreNoTextAreNoHindrance) {
  EXPECT_TRUE(containsIgnoringCase("\xFF Invoice \xC3", "invoice"));
  EXPECT_FALSE(containsIgnoringCase("invoice", "\xFF"));
}

TEST(ContainsIgnoringCase, TheLettersIAreThoseOfTheUsersLanguage) {
  EXPECT_TRUE(containsIgnoringCase("FILE", "file"));
  EXPECT_TRUE(under("tr_TR.UTF-8", [] { return containsIgnoringCase("DİZİ", "dizi"); }));
  EXPECT_FALSE(under("tr_TR.UTF-8", [] { return containsIgnoringCase("FILE", "file"); }));
}

/// The same by the library's own search in characters, which folds both texts each time.
bool containsInCharacters(const std::string& text, const std::string& words) {
  UErrorCode status = U_ZERO_ERROR;
  const auto* composing = icu::Normalizer2::getNFCInstance(status);
  const auto folded = [&](const std::string& bytes) {
    const auto composed = composing->normalize(icu::UnicodeString::fromUTF8(bytes), status);
    return composing->normalize(icu::UnicodeString(composed).foldCase(), status);
  };
  const auto where = folded(text);
  const auto what = folded(words);
  if (what.isEmpty()) return false;
  for (auto hit = where.indexOf(what); hit >= 0; hit = where.indexOf(what, hit + 1)) {
    const auto end = hit + what.length();
    if (end >= where.length() || u_getCombiningClass(where.char32At(end)) == 0) return true;
  }
  return false;
}

TEST(FoldedText, AnswersAsASearchInFoldedCharactersDoes) {
  const std::vector<std::string> letters{"a",          "A",          "b",          "I",      "i",      "\u0131",
                                         "\u0130",     "k",          "\u212A",     "\u00DF", "s",      "S",
                                         "\u017F",     "\u00E9",     "e",          "\u0301", "\u0323", "x",
                                         "\u0302",     "\u03C3",     "\u03C2",     "\u03A3", "\uFB01", "f",
                                         "\U00010400", "\U00010428", "\U0001F600", "\xFF",   "\xC3",   "\xED\xA0\x80",
                                         " ",          "\n",         "\uAC00",     "\u1100", "\u1161"};
  std::mt19937 random(5);
  const auto someOf = [&](std::size_t most) {
    std::string text;
    for (auto left = random() % (most + 1); left > 0; --left) text += letters[random() % letters.size()];
    return text;
  };
  int found = 0;
  for (int i = 0; i < 20'000; ++i) {
    const auto text = someOf(12);
    const auto words = someOf(3);
    const bool contains = FoldedText(text).contains(FoldedText(words));
    EXPECT_EQ(contains, containsInCharacters(text, words)) << text << " / " << words;
    EXPECT_EQ(contains, containsIgnoringCase(text, words)) << text << " / " << words;
    found += contains ? 1 : 0;
  }
  EXPECT_GT(found, 1000);
}

TEST(FoldedText, IsMadeOnceForManySearches) {
  const FoldedText text("Überweisung nach Zürich");
  EXPECT_TRUE(text.contains(FoldedText("ZU\u0308RICH")));
  EXPECT_TRUE(text.contains(FoldedText("überweisung")));
  EXPECT_FALSE(text.contains(FoldedText("zurich")));
  EXPECT_FALSE(text.contains(FoldedText("")));
}

}  // namespace
}  // namespace Nimbrel::NameOrder
