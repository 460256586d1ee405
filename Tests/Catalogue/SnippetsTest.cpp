#include "Catalogue/Database.h"
#include "Catalogue/Snippets.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <array>
#include <random>

namespace Nimbrel {
namespace {

using ::testing::Eq;
using ::testing::Optional;

Shot shotWith(ShotID id, std::string text) {
  Shot shot;
  shot.id = id;
  shot.name = "shot.png";
  shot.ocr = std::move(text);
  return shot;
}

class SnippetsTest : public ::testing::Test {
 protected:
  Snippets snippets_;
};

TEST_F(SnippetsTest, MarkTheirHits) {
  snippets_.search("qui fox");
  EXPECT_THAT(snippets_.of(shotWith(1, "the quick brown fox")), Optional(Eq("the \x02quick\x03 brown \x02"
                                                                            "fox\x03")));
}

TEST_F(SnippetsTest, AreAbsentWithoutAHitInTheText) {
  auto shot = shotWith(1, "some text");
  shot.name = "invoice.png";
  snippets_.search("invoice");
  EXPECT_EQ(snippets_.of(shot), std::nullopt);
}

TEST_F(SnippetsTest, AreAbsentForAShotThatTheQueryDoesNotFind) {
  snippets_.search("quick zebra");
  EXPECT_EQ(snippets_.of(shotWith(1, "the quick brown fox")), std::nullopt);
}

TEST_F(SnippetsTest, AreAbsentWithoutAQuery) {
  EXPECT_EQ(snippets_.of(shotWith(1, "text")), std::nullopt);
  snippets_.search("text");
  EXPECT_NE(snippets_.of(shotWith(1, "text")), std::nullopt);
  snippets_.search(" \t ");
  EXPECT_EQ(snippets_.of(shotWith(1, "text")), std::nullopt);
}

TEST_F(SnippetsTest, NeedNoSpellingThatIsFreeOfQuotes) {
  snippets_.search("say \"hello");
  EXPECT_THAT(snippets_.of(shotWith(1, "they say \"hello\"")), Optional(Eq("they \x02say\x03 \"\x02hello\x03\"")));
}

TEST_F(SnippetsTest, StayAsTheyWereFirstAnsweredUntilTheNextSearch) {
  snippets_.search("red");
  EXPECT_THAT(snippets_.of(shotWith(1, "red car")), Optional(Eq("\x02red\x03 car")));
  EXPECT_THAT(snippets_.of(shotWith(1, "red house")), Optional(Eq("\x02red\x03 car")));
  snippets_.search("red");
  EXPECT_THAT(snippets_.of(shotWith(1, "red house")), Optional(Eq("\x02red\x03 house")));
}

TEST_F(SnippetsTest, OfOneShotDoNotShowUpInAnother) {
  snippets_.search("car");
  EXPECT_NE(snippets_.of(shotWith(1, "red car")), std::nullopt);
  EXPECT_EQ(snippets_.of(shotWith(2, "red house")), std::nullopt);
}

/// Texts of few words, so that each is found often and in many places.
std::string madeText(std::mt19937& random) {
  static constexpr std::array words{"red", "redder", "car",  "Carthage", "über",  "UBER", "line\n",
                                    "a-b", "42",     "4242", "…",        "\x02x", "end.", "日本"};
  std::string text;
  for (auto count = random() % 60; count > 0; --count) text += std::string(words[random() % words.size()]) + " ";
  return text;
}

TEST_F(SnippetsTest, AreThoseOfTheCatalogue) {
  const Testing::TemporaryFolder folder;
  const auto database = Database::open(folder.path("nimbrel.sqlite")).value();
  const Database::QuickCommits quickly(*database);
  std::mt19937 random(1);
  for (int i = 0; i < 60; ++i) {
    Shot shot;
    shot.path = "/s/red " + std::to_string(i) + ".png";
    shot.name = "red " + std::to_string(i) + ".png";
    const auto id = database->insert(shot);
    database->setOCR(id, madeText(random), {});
    database->setNote(id, madeText(random));
    if (i % 3 == 0) database->setTags(id, {"car", "end"});
  }
  for (const std::string query : {"red", "re ca", "car red 42", "uber", "a-b", "日", "end x", "r", "\"", "red 7"}) {
    const auto expected = database->searchSnippets(query);
    snippets_.search(query);
    for (const auto& shot : database->allShots({})) {
      const auto known = expected.find(shot->id);
      EXPECT_EQ(snippets_.of(*shot), known == expected.end() ? std::nullopt : std::optional(known->second)) << query;
    }
  }
}

}  // namespace
}  // namespace Nimbrel
