#include "Store/Store.h"

#include "StoreFixture.h"

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::shotNamed;

class ProjectsTest : public Testing::StoreFixture {
 protected:
  void SetUp() override {
    store_->importFiles({home_.addFile(home_.path("a.png")), home_.addFile(home_.path("b.png"))});
  }
};

TEST_F(ProjectsTest, ShotsAreTaggedAndTheProjectIsKept) {
  store_->assignProject(" Kitchen\n", store_->shots());
  EXPECT_THAT(tagsOf("a.png"), ElementsAre("project:Kitchen"));
  EXPECT_THAT(tagsOf("b.png"), ElementsAre("project:Kitchen"));
  EXPECT_THAT(store_->tags(), IsEmpty());
  EXPECT_THAT(projects(), ElementsAre("Kitchen"));
  EXPECT_EQ(store_->status(), "Added to Kitchen");
  home_.suiteOfOtherProcess()->synchronize();
  EXPECT_THAT(home_.open(ProcessRole::tool)->settings().projects(), ElementsAre("Kitchen"));
}

TEST_F(ProjectsTest, ANewProjectIsSortedInAsAPersonWould) {
  store_->settings().projects.set({"Room 10", "attic", "Room 9"});
  store_->assignProject("Bath", {});
  EXPECT_THAT(projects(), ElementsAre("attic", "Bath", "Room 9", "Room 10"));
}

TEST_F(ProjectsTest, AKnownProjectLeavesTheListInItsOrder) {
  store_->settings().projects.set({"z", "a"});
  store_->assignProject("a", store_->shots());
  EXPECT_THAT(projects(), ElementsAre("z", "a"));
}

TEST_F(ProjectsTest, AShotOfTheProjectIsNotWrittenAgain) {
  const auto a = shotNamed(*store_, "a.png");
  store_->database().setTags(a->id, {"x", "project:p", "y"});
  store_->reload();
  const auto before = store_->database().ownChanges();
  store_->assignProject("p", {shotNamed(*store_, "a.png")});
  EXPECT_EQ(store_->database().ownChanges(), before);
  EXPECT_EQ(store_->status(), "Added to p");
}

TEST_F(ProjectsTest, TagsThatAnotherProcessGaveAreKept) {
  const auto other = home_.open(ProcessRole::tool);
  other->addTag("theirs", other->shots());
  store_->assignProject("p", store_->shots());
  EXPECT_THAT(shotNamed(*store_, "a.png")->tags, ElementsAre("theirs", "project:p"));
}

TEST_F(ProjectsTest, AListenerThatReloadsWhenTheProjectIsNewDisturbsNothing) {
  const auto other = home_.open(ProcessRole::tool);
  QObject::connect(&store_->settings(), &Settings::changed, store_.get(), [&] {
    for (const auto& shot : other->shots()) other->database().setNote(shot->id, "written meanwhile");
    store_->reload();
  });
  store_->assignProject("p", store_->shots());
  for (const auto* name : {"a.png", "b.png"}) {
    EXPECT_THAT(shotNamed(*store_, name)->tags, ElementsAre("project:p"));
    EXPECT_EQ(shotNamed(*store_, name)->note, "written meanwhile");
  }
}

TEST_F(ProjectsTest, ACommaInTheNameBecomesABlankInListAndTag) {
  store_->assignProject("Kitchen,Bath,", store_->shots());
  EXPECT_THAT(shotNamed(*store_, "a.png")->tags, ElementsAre("project:Kitchen Bath"));
  EXPECT_THAT(projects(), ElementsAre("Kitchen Bath"));
  EXPECT_EQ(store_->status(), "Added to Kitchen Bath");
}

TEST_F(ProjectsTest, ANameOfBlanksDoesNothing) {
  store_->assignProject(" \n\t", store_->shots());
  EXPECT_THAT(tagsOf("a.png"), IsEmpty());
  EXPECT_THAT(projects(), IsEmpty());
  EXPECT_EQ(store_->status(), "Imported 2");
}

}  // namespace
}  // namespace Nimbrel
