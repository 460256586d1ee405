#include "Catalogue/Database.h"
#include "Catalogue/SearchQuery.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

TEST(MatchExpression, EachWordIsAQuotedPrefixTerm) { EXPECT_EQ(matchExpression("red car"), R"("red"* "car"*)"); }

TEST(MatchExpression, OfBlanksIsEmpty) {
  EXPECT_EQ(matchExpression(""), "");
  EXPECT_EQ(matchExpression(" \t\u00A0 "), "");
}

TEST(MatchExpression, QuotesAreDoubled) { EXPECT_EQ(matchExpression("a\"b \""), R"("a""b"* """"*)"); }

TEST(MatchExpression, ATabInsideStaysInsideItsWord) { EXPECT_EQ(matchExpression("a\tb  c"), "\"a\tb\"* \"c\"*"); }

class SearchTest : public ::testing::Test {
 protected:
  SearchTest() : database_(Database::open(folder_.path("nimbrel.sqlite")).value()) {}

  ShotID insert(const std::string& name) {
    Shot shot;
    shot.path = "/s/" + name;
    shot.name = name;
    return database_->insert(shot);
  }

  Testing::TemporaryFolder folder_;
  std::unique_ptr<Database> database_;
};

TEST_F(SearchTest, OfBlanksTakesNoPlace) {
  insert("a.png");
  EXPECT_FALSE(database_->searchIDs("   "));
  EXPECT_THAT(database_->searchSnippets("  "), IsEmpty());
}

TEST_F(SearchTest, ForAWordThatOccursNowhereFindsNothing) {
  insert("a.png");
  ASSERT_TRUE(database_->searchIDs("zebra"));
  EXPECT_THAT(*database_->searchIDs("zebra"), IsEmpty());
}

TEST_F(SearchTest, ForALoneQuoteFindsNothingAndFails) {
  insert("a.png");
  EXPECT_THAT(database_->searchIDs("\""), ::testing::Optional(IsEmpty()));
}

TEST_F(SearchTest, TermsMayMatchInAnyColumnAndInDifferentOnes) {
  const auto byName = insert("invoice-2024.png");
  const auto byBoth = insert("inventory.png");
  database_->setOCR(byBoth, "from 2024", {});
  insert("invoice.png");
  EXPECT_THAT(*database_->searchIDs("inv 2024"), UnorderedElementsAre(byName, byBoth));
}

TEST_F(SearchTest, OperatorsAreWords) {
  const auto id = insert("cats OR dogs.png");
  insert("cats.png");
  EXPECT_THAT(*database_->searchIDs("cats OR dogs"), UnorderedElementsAre(id));
  EXPECT_THAT(*database_->searchIDs("name:cats"), IsEmpty());
  EXPECT_THAT(*database_->searchIDs("NEAR("), IsEmpty());
}

TEST_F(SearchTest, ANoteIsFoundAtOnce) {
  const auto id = insert("a.png");
  database_->setNote(id, "remember the milk");
  EXPECT_THAT(*database_->searchIDs("mil"), UnorderedElementsAre(id));
}

TEST_F(SearchTest, TagsAndTheAttributedApplicationAreFoundButNotItsOverride) {
  const auto id = insert("a.png");
  database_->setTags(id, {"urgent"});
  database_->setApp(id, "Terminal", "", Database::Trusted::Yes);
  database_->setShownName(id, "Console");
  EXPECT_THAT(*database_->searchIDs("urgent term"), UnorderedElementsAre(id));
  EXPECT_THAT(*database_->searchIDs("console"), IsEmpty());
}

TEST_F(SearchTest, AFavouriteLeavesTheIndexAlone) {
  const auto id = insert("a.png");
  const auto before = database_->ownChanges();
  database_->setFavorite(id, true);
  EXPECT_EQ(database_->ownChanges(), before + 1);
}

TEST_F(SearchTest, SnippetsMarkTheirHits) {
  const auto id = insert("a.png");
  database_->setOCR(id, "the quick brown fox", {});
  EXPECT_THAT(database_->searchSnippets("qui fox"), UnorderedElementsAre(std::pair(id,
                                                                                   "the \x02quick\x03 brown \x02"
                                                                                   "fox\x03")));
}

TEST_F(SearchTest, LongTextsAreCutToTenWordsAroundTheHit) {
  const auto id = insert("a.png");
  database_->setOCR(id, "1 2 3 4 5 6 7 8 9 10 11 12 hit 14 15 16 17 18 19 20 21 22 23 24 25", {});
  const auto snippet = database_->searchSnippets("hit").at(id);
  EXPECT_TRUE(snippet.starts_with("…") && snippet.ends_with("…")) << snippet;
  EXPECT_EQ(std::ranges::count(snippet, ' '), 9);
}

TEST_F(SearchTest, AShotThatMatchedElsewhereHasNoSnippet) {
  const auto id = insert("invoice.png");
  database_->setOCR(id, "some text", {});
  EXPECT_THAT(*database_->searchIDs("invoice"), UnorderedElementsAre(id));
  EXPECT_THAT(database_->searchSnippets("invoice"), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
