#include "CtlFixture.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Testing::idsIn;
using ::testing::IsEmpty;

class ListCommandTest : public Testing::CtlFixture {
 protected:
  void SetUp() override {
    old_ = importPicture("Shot 10.png");
    middle_ = importPicture("Shot 2.png", 86'400);
    newest_ = importPicture("b.png", 2 * 86'400);
    const auto store = home_.open(ProcessRole::tool);
    store->database().setOCR(old_, "alpha beta", {});
    store->database().setOCR(middle_, "beta gamma", {});
    store->database().setTags(newest_, {"work", "project:Moon"});
    store->database().setFavorite(middle_, true);
  }

  [[nodiscard]] std::vector<ShotID> listed(const std::vector<std::string>& options) const {
    std::vector<std::string> words{"list"};
    words.insert(words.end(), options.begin(), options.end());
    std::vector<ShotID> ids;
    for (const auto& shot : json(words).array()) ids.push_back(shot.toObject().value(QStringLiteral("id")).toInteger());
    return ids;
  }

  ShotID old_ = 0;
  ShotID middle_ = 0;
  ShotID newest_ = 0;
};

TEST_F(ListCommandTest, ListsAllShotsNewestFirst) { EXPECT_THAT(listed({}), ElementsAre(newest_, middle_, old_)); }

TEST_F(ListCommandTest, TakesEveryFilter) {
  EXPECT_THAT(listed({"--filter", "inbox"}), ElementsAre(newest_, middle_, old_));
  EXPECT_THAT(listed({"--filter", "today"}), IsEmpty());
  EXPECT_THAT(listed({"--filter", "week"}), IsEmpty());
  EXPECT_THAT(listed({"--filter", "favorites"}), ElementsAre(middle_));
  EXPECT_THAT(listed({"--filter", "sensitive"}), IsEmpty());
  EXPECT_THAT(listed({"--filter", "tag:work"}), ElementsAre(newest_));
  EXPECT_THAT(listed({"--filter", "project:Moon"}), ElementsAre(newest_));
  EXPECT_THAT(listed({"--filter", "similar:" + std::to_string(old_)}), ElementsAre(old_));
  EXPECT_THAT(listed({"--filter", "smart:code"}), IsEmpty());
  EXPECT_THAT(listed({"--filter", "saved:gamma"}), ElementsAre(middle_));
}

TEST_F(ListCommandTest, FiltersByGroupAndStack) {
  const auto store = home_.open(ProcessRole::tool);
  store->database().setShownName(old_, "Safari");
  store->database().setShownName(middle_, "safari");
  EXPECT_THAT(listed({"--filter", "content:app:safari"}), ElementsAre(middle_, old_));
  EXPECT_THAT(listed({"--filter", "stack:app:safari"}), ElementsAre(middle_, old_));
  EXPECT_THAT(listed({"--filter", "content:app:finder"}), IsEmpty());
}

TEST_F(ListCommandTest, NarrowsByAQueryAndShowsWhereItHit) {
  EXPECT_THAT(listed({"--query", "beta"}), ElementsAre(middle_, old_));
  EXPECT_THAT(listed({"--query", "beta", "--filter", "favorites"}), ElementsAre(middle_));
  EXPECT_THAT(listed({"--query", "  "}), ElementsAre(newest_, middle_, old_));
  const auto shots = json({"list", "--query", "gamma"}).array();
  const auto derived = shots.first().toObject().value(QStringLiteral("derived")).toObject();
  EXPECT_EQ(derived.value(QStringLiteral("snippet")).toString(), QStringLiteral("beta \u0002gamma\u0003"));
  EXPECT_TRUE(json({"list"})
                  .array()
                  .first()
                  .toObject()
                  .value(QStringLiteral("derived"))
                  .toObject()
                  .value(QStringLiteral("snippet"))
                  .isNull());
}

TEST_F(ListCommandTest, ShowsPeopleTheHitsInBrackets) {
  EXPECT_THAT(ctl({"list", "--query", "gamma"}).output, HasSubstr("\n        beta [gamma]\n"));
  home_.open(ProcessRole::tool)->database().setOCR(middle_, "beta gamma", {"Email"});
  const auto output = ctl({"list", "--query", "gamma"}).output;
  EXPECT_THAT(output, HasSubstr("Sensitive screenshot"));
  EXPECT_EQ(output.find("gamma"), std::string::npos);
}

TEST_F(ListCommandTest, SortsAsTheSettingsSayOrAsAsked) {
  EXPECT_THAT(listed({"--sort", "oldest"}), ElementsAre(old_, middle_, newest_));
  home_.open(ProcessRole::tool)->settings().groupByDay.set(false);
  EXPECT_THAT(listed({"--sort", "name"}), ElementsAre(newest_, middle_, old_));
  home_.open(ProcessRole::tool)->settings().gallerySort.set(GallerySort::oldest);
  EXPECT_THAT(listed({}), ElementsAre(old_, middle_, newest_));
  EXPECT_THAT(listed({"--sort", "newest"}), ElementsAre(newest_, middle_, old_));
}

TEST_F(ListCommandTest, GivesTheDaysAsSections) {
  const auto sections = json({"list", "--sections"}).array();
  ASSERT_EQ(sections.size(), 3);
  EXPECT_EQ(sections[0].toObject().value(QStringLiteral("title")).toString(), QStringLiteral("Nov 16, 2023"));
  EXPECT_THAT(idsIn(sections[0].toObject().value(QStringLiteral("shots")).toArray()), ElementsAre(newest_));
  EXPECT_EQ(json({"list", "--sections", "--filter", "sensitive"}).array().size(), 0);
}

TEST_F(ListCommandTest, GivesOneSectionWithoutATitleWhenDaysAreOff) {
  home_.open(ProcessRole::tool)->settings().groupByDay.set(false);
  const auto sections = json({"list", "--sections", "--filter", "sensitive"}).array();
  ASSERT_EQ(sections.size(), 1);
  EXPECT_EQ(sections[0].toObject().value(QStringLiteral("title")).toString(), QString());
}

TEST_F(ListCommandTest, AnUnknownFilterOrSortIsWrongUsage) {
  for (const auto& option : {std::vector<std::string>{"--filter", "nonsense"},
                             {"--filter", "smart:nonsense"},
                             {"--filter", "similar:x"},
                             {"--filter", "nonsense:x"},
                             {"--sort", "size"}}) {
    const auto output = ctl({"list", option[0], option[1]});
    EXPECT_EQ(output.status, 2) << option[1];
    EXPECT_THAT(output.errors, HasSubstr("usage: nimbrelctl list"));
  }
}

}  // namespace
}  // namespace Nimbrel
