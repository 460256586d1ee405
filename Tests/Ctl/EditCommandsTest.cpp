#include "CtlFixture.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EditCommandsTest : public Testing::CtlFixture {
 protected:
  void SetUp() override { id_ = importPicture("a.png"); }
  [[nodiscard]] std::string word() const { return std::to_string(id_); }

  ShotID id_ = 0;
};

TEST_F(EditCommandsTest, SetsANote) {
  EXPECT_EQ(statusOf({"note", word(), "two\nlines"}), "");
  EXPECT_EQ(row(id_)->note, "two\nlines");
  EXPECT_EQ(statusOf({"note", word(), ""}), "");
  EXPECT_EQ(row(id_)->note, "");
}

TEST_F(EditCommandsTest, SetsTheSourceUnlessItIsBlank) {
  EXPECT_EQ(statusOf({"source", word(), " Safari \n"}), "");
  EXPECT_EQ(row(id_)->shownName, "Safari");
  EXPECT_EQ(statusOf({"source", word(), " \n"}), "");
  EXPECT_EQ(row(id_)->shownName, "Safari");
}

TEST_F(EditCommandsTest, StarsAndTakesStarsAway) {
  EXPECT_EQ(statusOf({"favorite", word()}), "");
  EXPECT_TRUE(row(id_)->favorite);
  EXPECT_EQ(statusOf({"favorite", word(), "--off"}), "");
  EXPECT_FALSE(row(id_)->favorite);
}

TEST_F(EditCommandsTest, AddsAndTakesAwayTags) {
  const auto other = importPicture("other.png");
  EXPECT_EQ(statusOf({"tag", word(), std::to_string(other), "--tag", "red,green"}), "");
  EXPECT_THAT(row(id_)->tags, ElementsAre("red green"));
  EXPECT_THAT(row(other)->tags, ElementsAre("red green"));
  EXPECT_EQ(statusOf({"untag", word(), "--tag", "red green"}), "");
  EXPECT_THAT(row(id_)->tags, IsEmpty());
  EXPECT_THAT(row(other)->tags, ElementsAre("red green"));
}

TEST_F(EditCommandsTest, TheUsageTellsOptionsThatAreRequired) {
  const auto firstLine = [&](const std::string& command) {
    const auto usage = ctl({command, "--help"}).output;
    return usage.substr(0, usage.find('\n'));
  };
  EXPECT_EQ(firstLine("tag"), "usage: nimbrelctl tag [--json] --tag T ID…");
  EXPECT_EQ(firstLine("untag"), "usage: nimbrelctl untag [--json] --tag T ID…");
  EXPECT_EQ(firstLine("project"), "usage: nimbrelctl project [--json] --name P ID…");
  EXPECT_EQ(firstLine("favorite"), "usage: nimbrelctl favorite [--json] [--off] ID…");
}

TEST_F(EditCommandsTest, PutsShotsIntoAProject) {
  EXPECT_EQ(statusOf({"project", word(), "--name", " Moon "}), "Added to Moon");
  EXPECT_THAT(row(id_)->tags, ElementsAre("project:Moon"));
  EXPECT_EQ(json({"settings", "projects"}).array(), QJsonArray{QStringLiteral("Moon")});
}

TEST_F(EditCommandsTest, AppliesTheRules) {
  home_.open(ProcessRole::tool)
      ->settings()
      .automationRules.set({{.id = QUuid::createUuid(), .containsText = "a.png", .tag = "ruled"}});
  EXPECT_EQ(statusOf({"rules", "apply"}), "Applied automatic rules");
  EXPECT_THAT(row(id_)->tags, ElementsAre("ruled"));
  EXPECT_EQ(statusOf({"rules", "apply"}), "");
}

TEST_F(EditCommandsTest, SavesAndRemovesASearch) {
  EXPECT_EQ(statusOf({"search", "save", " beta "}), "Saved \u201Cbeta\u201D");
  EXPECT_EQ(json({"settings", "savedSearches"}).array(), QJsonArray{QStringLiteral("beta")});
  EXPECT_EQ(statusOf({"search", "save", "beta"}), "");
  EXPECT_EQ(statusOf({"search", "remove", "beta"}), "");
  EXPECT_EQ(json({"settings", "savedSearches"}).array(), QJsonArray());
}

TEST_F(EditCommandsTest, NothingIsDoneWhenOneOfTheIdsIsUnknown) {
  EXPECT_EQ(ctl({"favorite", word(), "999"}).status, 1);
  EXPECT_FALSE(row(id_)->favorite);
}

TEST_F(EditCommandsTest, WhatIsMissingIsWrongUsage) {
  for (const auto& words : std::vector<std::vector<std::string>>{{"tag", word()},
                                                                 {"untag", word()},
                                                                 {"project", word()},
                                                                 {"note", word()},
                                                                 {"note", "x", "text"},
                                                                 {"rules", "list"},
                                                                 {"search", "find", "x"}}) {
    EXPECT_EQ(ctl(words).status, 2) << words.front();
  }
}

}  // namespace
}  // namespace Nimbrel
