#include "Analysis/PhraseFinder.h"

#include "Analysis/Phrases.h"
#include "Foundation/Text.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

namespace Nimbrel {
namespace {

TEST(PhraseFinder, FindsPhrasesWithinAndAfterOneAnother) {
  const std::array<std::string_view, 5> phrases{"she", "he", "hers", "his", "e"};
  const PhraseFinder finder(phrases);
  EXPECT_EQ(finder.find("ushers").to_string().substr(187), "10111");
  EXPECT_EQ(finder.find("hihis").to_string().substr(187), "01000");
  EXPECT_TRUE(finder.find("xyz").none());
  EXPECT_TRUE(finder.find("").none());
}

TEST(PhraseFinder, ComparesBytesOfAnyValue) {
  const std::array<std::string_view, 3> phrases{"shots •", std::string_view("a\0b", 3), "\xFF\xFE"};
  const PhraseFinder finder(phrases);
  EXPECT_TRUE(finder.find("7 shots • new").test(0));
  EXPECT_FALSE(finder.find("7 shots ·").test(0));
  EXPECT_TRUE(finder.find(std::string_view("xa\0b", 4)).test(1));
  EXPECT_TRUE(finder.find("\xFF\xFF\xFE").test(2));
}

TEST(PhraseFinder, FindsASamePhraseUnderBothItsNumbers) {
  const std::array<std::string_view, 2> phrases{"file", "file"};
  EXPECT_EQ(PhraseFinder(phrases).find("profile").count(), 2U);
}

TEST(PhraseFinder, FindsWhatASearchForEachPhraseFinds) {
  std::mt19937 random(5);
  const auto word = [&](std::size_t most) {
    std::string made;
    for (auto i = 1 + random() % most; i > 0; --i) made += static_cast<char>('a' + random() % 3);
    return made;
  };
  for (int round = 0; round < 300; ++round) {
    std::vector<std::string> made;
    for (int i = 0; i < 12; ++i) made.push_back(word(5));
    const std::vector<std::string_view> phrases(made.begin(), made.end());
    const PhraseFinder finder(phrases);
    for (int text = 0; text < 20; ++text) {
      const auto searched = word(25);
      const auto found = finder.find(searched);
      for (std::size_t i = 0; i < phrases.size(); ++i) {
        EXPECT_EQ(found.test(i), searched.find(phrases[i]) != std::string::npos) << phrases[i] << " in " << searched;
      }
    }
  }
}

TEST(Phrases, AreAllInLowerCaseAndNotEmpty) {
  std::size_t phrases = 0;
  for (std::size_t list = 0; list < static_cast<std::size_t>(PhraseList::count); ++list) {
    for (const auto phrase : phrasesOf(static_cast<PhraseList>(list))) {
      EXPECT_FALSE(phrase.empty());
      EXPECT_EQ(Text::lowered(phrase), phrase);
      ++phrases;
    }
  }
  EXPECT_LE(phrases, PhraseFinder::mostPhrases);
}

TEST(FoundPhrases, CountEachPhraseOfAListOnce) {
  const FoundPhrases found("history history, bookmarks");
  EXPECT_EQ(found.count(PhraseList::safariMenus), 2U);
  EXPECT_TRUE(found.any(PhraseList::safariMenus));
  EXPECT_FALSE(found.all(PhraseList::safariMenus));
  EXPECT_FALSE(found.any(PhraseList::errors));
  EXPECT_TRUE(FoundPhrases("help window bookmarks history").all(PhraseList::safariMenus));
}

TEST(FoundPhrases, KnowEveryPhraseOfEveryListByItself) {
  for (std::size_t number = 0; number < static_cast<std::size_t>(PhraseList::count); ++number) {
    const auto list = static_cast<PhraseList>(number);
    for (const auto phrase : phrasesOf(list)) {
      EXPECT_TRUE(FoundPhrases("x" + std::string(phrase) + "x").any(list)) << phrase;
    }
  }
}

}  // namespace
}  // namespace Nimbrel
