#include "Views/Window/SidebarSections.h"

#include "Store/StoreFixture.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SidebarSectionsTest : public Testing::StoreFixture {
 protected:
  ShotPtr add(const std::string& name) {
    store_->importFiles({home_.addFile(home_.path(name))});
    return Testing::shotNamed(*store_, name);
  }
  /// Shots of an application, taken one behind the other.
  void addShotsOf(const std::string& application, int count, const std::string& bundleID = "") {
    for (int i = 0; i < count; ++i) {
      const auto shot = add(application + " " + std::to_string(i) + ".png");
      store_->database().setApp(shot->id, application, bundleID, Database::Trusted::Yes);
    }
    store_->reload();
  }
  [[nodiscard]] std::vector<SidebarRow> rows(const std::string& title) const {
    for (auto& section : sidebarSections(*store_)) {
      if (section.title == title) return section.rows;
    }
    return {};
  }
  [[nodiscard]] std::vector<std::string> titles(const std::string& section) const {
    std::vector<std::string> result;
    for (const auto& row : rows(section)) result.push_back(row.title);
    return result;
  }
};

TEST_F(SidebarSectionsTest, AnEmptyLibraryHasTheFixedSectionWithFiveRowsWithoutBadges) {
  const auto sections = sidebarSections(*store_);
  ASSERT_THAT(sections, SizeIs(1));
  EXPECT_EQ(sections.front().title, "");
  EXPECT_THAT(titles(""), ElementsAre("Inbox", "All Shots", "Today", "Last 7 Days", "Favorites"));
  EXPECT_THAT(sections.front().rows, ::testing::Each(Field(&SidebarRow::count, 0)));
}

TEST_F(SidebarSectionsTest, InboxAndAllShotsTellHowManyThereAre) {
  add("a.png");
  const auto filed = add("b.png");
  store_->database().setPath(filed->id, filed->path, Database::Filed::Yes);
  store_->reload();
  EXPECT_EQ(rows("")[0].count, 1);
  EXPECT_EQ(rows("")[1].count, 2);
}

TEST_F(SidebarSectionsTest, SensitiveShotsHaveARowWhileThereAreAny) {
  const auto shot = add("a.png");
  store_->database().setOCR(shot->id, "somebody", {"email"});
  store_->reload();
  store_->setFilter({Filter::Sensitive{}});
  EXPECT_EQ(rows("").back().title, "Sensitive");
  EXPECT_EQ(rows("").back().count, 1);
  store_->database().setOCR(shot->id, "somebody", {});
  store_->reload();
  EXPECT_THAT(rows(""), SizeIs(5));
  EXPECT_EQ(store_->filter(), Filter{Filter::Sensitive{}}) << "what is chosen stays";
}

TEST_F(SidebarSectionsTest, ExactlyTheFirstEightStacksAreShown) {
  for (char name = 'A'; name <= 'I'; ++name) addShotsOf(std::string("Program ") + name, 2);
  ASSERT_THAT(store_->derived().shotStacks(), SizeIs(9));
  const auto stacks = rows("Recent Stacks");
  ASSERT_THAT(stacks, SizeIs(8));
  for (std::size_t i = 0; i < stacks.size(); ++i) {
    EXPECT_EQ(stacks[i].title, store_->derived().shotStacks()[i].title);
    EXPECT_EQ(stacks[i].count, 2);
  }
}

TEST_F(SidebarSectionsTest, StacksAndGroupsNameTheApplicationWhoseIconIsShown) {
  addShotsOf("Firefox", 2, "org.mozilla.firefox");
  addShotsOf("Oddity", 2);
  for (const auto* section : {"Recent Stacks", "Recognized Apps"}) {
    for (const auto& row : rows(section)) {
      if (row.title != "Firefox") continue;
      ASSERT_TRUE(row.application) << section;
      EXPECT_EQ(row.application->name, "Firefox");
      EXPECT_FALSE(row.application->bundleID.empty());
    }
  }
  for (const auto& row : rows("Recent Stacks")) EXPECT_EQ(row.application.has_value(), row.title == "Firefox");
  for (const auto& row : rows("Recognized Apps")) EXPECT_EQ(row.symbol, "questionmark.square");
}

TEST_F(SidebarSectionsTest, AProjectCountsTheShotsWithItsTagAlone) {
  const auto one = add("a.png");
  const auto other = add("b.png");
  store_->settings().projects.set({"Attic", "Kitchen"});
  store_->database().setTags(one->id, {"project:Kitchen", "project:Kitchen", "x"});
  store_->database().setTags(other->id, {"project:Kitchen 2", "Kitchen"});
  store_->reload();
  EXPECT_THAT(rows("Projects"), ElementsAre(Field(&SidebarRow::count, 0), Field(&SidebarRow::count, 1)));
  EXPECT_EQ(rows("Projects")[1].filter, Filter{Filter::Project{"Kitchen"}});
}

TEST_F(SidebarSectionsTest, TagsHaveNoBadge) {
  store_->addTag("bug", {add("a.png")});
  ASSERT_THAT(titles("Tags"), ElementsAre("bug"));
  EXPECT_EQ(rows("Tags")[0].count, 0);
}

TEST_F(SidebarSectionsTest, ChoosingASavedSearchReplacesTheQueryAndSearches) {
  add("invoice.png");
  store_->settings().savedSearches.set({"invoice"});
  ASSERT_THAT(titles("Saved"), ElementsAre("invoice"));
  store_->setQuery("something else");
  chooseFilter(*store_, rows("Saved")[0].filter);
  EXPECT_EQ(store_->query(), "invoice");
  EXPECT_EQ(store_->filter(), Filter{Filter::Saved{"invoice"}});
  ASSERT_TRUE(store_->matchedIDs());
  EXPECT_THAT(store_->visible(), SizeIs(store_->matchedIDs()->size()));
}

TEST_F(SidebarSectionsTest, ChoosingAnythingElseLeavesTheQueryAlone) {
  store_->setQuery("something");
  chooseFilter(*store_, {Filter::Today{}});
  EXPECT_EQ(store_->query(), "something");
  EXPECT_EQ(store_->matchedIDs(), std::nullopt);
}

}  // namespace
}  // namespace Nimbrel
