#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;
using Testing::StoreHome;

/// What a Store publishes about the shots that stand in its catalogue.
class ReloadDerivedTest : public ::testing::Test {
 protected:
  ShotID add(const std::string& name, const std::string& text, const std::vector<std::string>& sensitive = {}) {
    Shot shot;
    shot.path = home_.addFile(home_.path(name));
    shot.name = name;
    const auto id = store_->database().insert(shot);
    store_->database().setOCR(id, text, sensitive);
    store_->reload();
    return id;
  }

  [[nodiscard]] std::vector<std::pair<std::string, std::size_t>> groups() const {
    std::vector<std::pair<std::string, std::size_t>> counts;
    for (const auto& [group, count] : store_->derived().contentGroups()) counts.emplace_back(group.title, count);
    return counts;
  }

  StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::mainApplication);
};

TEST_F(ReloadDerivedTest, ReloadPublishesGroupsCollectionsAndStacks) {
  add("a.png", "Google Chrome error");
  add("b.png", "Incognito");
  EXPECT_THAT(groups(), ElementsAre(Pair("Google Chrome", 2)));
  EXPECT_THAT(store_->derived().smartCounts(), ElementsAre(Pair(SmartCollection::errors, 1)));
  EXPECT_THAT(store_->derived().shotStacks(), SizeIs(1));
}

TEST_F(ReloadDerivedTest, AStoreThatIsOpenedKnowsTheGroupsAtOnce) {
  const auto id = add("a.png", "Google Chrome");
  const auto other = home_.open(ProcessRole::tool);
  EXPECT_EQ(other->derived().contentOf(id).title, "Google Chrome");
}

TEST_F(ReloadDerivedTest, ALockedShotOfSafariIsUnknownUntilUnlocked) {
  add("a.png", "example.com");
  const auto id = add("b.png", "example.com\nann@example.com", {"Email"});
  EXPECT_EQ(store_->derived().contentOf(id), ContentGroup::unknown());
  EXPECT_THAT(groups(), ElementsAre(Pair("Safari", 1)));
  EXPECT_THAT(store_->derived().shotStacks(), IsEmpty());
  store_->settings().protectSensitive.set(false);
  store_->reload();
  EXPECT_EQ(store_->derived().contentOf(id).title, "Safari");
  EXPECT_THAT(groups(), ElementsAre(Pair("Safari", 2)));
  EXPECT_EQ(store_->derived().stackOf(id), "stack:app:safari");
}

TEST_F(ReloadDerivedTest, AProtectedShotIsCountedUnderNoApplication) {
  add("a.png", "incognito ann@example.com", {"Email"});
  EXPECT_THAT(groups(), IsEmpty());
}

TEST_F(ReloadDerivedTest, AProtectedShotCountsInSmartCollectionsLikeAllOthers) {
  add("a.png", "error ann@example.com", {"Email"});
  EXPECT_THAT(store_->derived().smartCounts(), ElementsAre(Pair(SmartCollection::errors, 1)));
}

TEST_F(ReloadDerivedTest, ChangesAreToldAndNothingElse) {
  QSignalSpy told(store_.get(), &Store::derivedChanged);
  const auto id = add("a.png", "Google Chrome");
  EXPECT_EQ(told.count(), 1);
  store_->reload();
  store_->database().setNote(id, "x");
  store_->reload();
  EXPECT_EQ(told.count(), 1) << "a note changes no group";
  add("b.png", "nothing to tell");
  EXPECT_EQ(told.count(), 1);
  store_->database().setOCR(id, "plain", {});
  store_->reload();
  EXPECT_EQ(told.count(), 2);
}

TEST_F(ReloadDerivedTest, GroupsAreThereWhenTheShotsAreTold) {
  ShotID id = 0;
  std::string title;
  QObject::connect(store_.get(), &Store::shotsChanged, store_.get(),
                   [&] { title = store_->derived().contentOf(store_->shots().front()->id).title; });
  id = add("a.png", "Google Chrome");
  EXPECT_EQ(title, "Google Chrome");
  EXPECT_EQ(store_->derived().contentOf(id).title, title);
}

TEST_F(ReloadDerivedTest, AShotTakenOutLeavesItsGroup) {
  const auto id = add("a.png", "Google Chrome");
  store_->database().remove(id, Database::IgnorePath::No);
  store_->reload();
  EXPECT_THAT(groups(), IsEmpty());
  EXPECT_EQ(store_->derived().contentOf(id), ContentGroup::unknown());
}

}  // namespace
}  // namespace Nimbrel
