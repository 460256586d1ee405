#include "Store/Store.h"

#include "Support/StoreHome.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::shotNamed;
using Testing::StoreHome;

class ProjectsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    store_->importFiles({home_.addFile(home_.path("a.png")), home_.addFile(home_.path("b.png"))});
  }
  [[nodiscard]] std::vector<std::string> projects() const { return store_->settings().projects(); }

  StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::tool);
};

TEST_F(ProjectsTest, ShotsAreTaggedAndTheProjectIsKept) {
  store_->assignProject(" Kitchen\n", store_->shots());
  EXPECT_THAT(shotNamed(*store_, "a.png")->tags, ElementsAre("project:Kitchen"));
  EXPECT_THAT(shotNamed(*store_, "b.png")->tags, ElementsAre("project:Kitchen"));
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

TEST_F(ProjectsTest, ANameOfBlanksDoesNothing) {
  store_->assignProject(" \n\t", store_->shots());
  EXPECT_THAT(shotNamed(*store_, "a.png")->tags, IsEmpty());
  EXPECT_THAT(projects(), IsEmpty());
  EXPECT_EQ(store_->status(), "Imported 2");
}

}  // namespace
}  // namespace Nimbrel
