#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <algorithm>
#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::shotNamed;
using Testing::StoreHome;
using ::testing::UnorderedElementsAre;

class Forgetting : public ::testing::Test {
 protected:
  Forgetting() {
    home_.addFile(home_.desktop("Screenshot 1.png"));
    home_.addFile(home_.desktop("Screenshot 2.png"));
    store_ = home_.open(ProcessRole::tool);
    store_->scan();
  }

  StoreHome home_;
  std::unique_ptr<Store> store_;
};

TEST_F(Forgetting, TakesTheShotsOutForGoodAndLeavesTheirFiles) {
  store_->setSelection({store_->shots().front()->id});
  store_->forget(store_->shots());
  EXPECT_THAT(store_->shots(), IsEmpty());
  EXPECT_THAT(store_->selection(), IsEmpty());
  EXPECT_EQ(store_->status(), "Removed 2 from the catalogue");
  for (const auto* name : {"Screenshot 1.png", "Screenshot 2.png"}) {
    EXPECT_TRUE(std::filesystem::exists(home_.desktop(name)));
  }
  store_->scan();
  EXPECT_THAT(store_->shots(), IsEmpty());
  EXPECT_THAT(store_->database().ignoredPaths(),
              UnorderedElementsAre(home_.desktop("Screenshot 1.png"), home_.desktop("Screenshot 2.png")));
}

TEST_F(Forgetting, AnImportBringsAFileBackAsANewShot) {
  const auto former = shotNamed(*store_, "Screenshot 1.png");
  const auto kept = shotNamed(*store_, "Screenshot 2.png");
  store_->database().setNote(former->id, "lost");
  store_->forget({former->id < kept->id ? former : kept});
  store_->importFiles({home_.desktop("Screenshot 1.png"), home_.desktop("Screenshot 2.png")});
  ASSERT_EQ(store_->shots().size(), 2U);
  const auto& forgotten = former->id < kept->id ? former : kept;
  const auto back = shotNamed(*store_, forgotten->name);
  EXPECT_NE(back->id, forgotten->id);
  EXPECT_EQ(back->note, "");
  EXPECT_THAT(store_->database().ignoredPaths(), IsEmpty());
}

TEST_F(Forgetting, AnEmptyListIsReportedAsZero) {
  store_->forget({});
  EXPECT_EQ(store_->status(), "Removed 0 from the catalogue");
  EXPECT_EQ(store_->shots().size(), 2U);
}

TEST_F(Forgetting, OneShotIsToldLikeMany) {
  store_->forget({store_->shots().front()});
  EXPECT_EQ(store_->status(), "Removed 1 from the catalogue");
}

TEST_F(Forgetting, AnotherFileThatGotTheIdMeanwhileStaysAndThePathIsIgnored) {
  const auto shots = store_->shots();
  const auto highest = *std::ranges::max_element(shots, {}, [](const ShotPtr& shot) { return shot->id; });
  const auto other = home_.open(ProcessRole::tool);
  other->database().remove(highest->id, Database::IgnorePath::No);
  home_.now += Seconds{1};
  const auto path = home_.addFile(home_.path("other.png"));
  other->importFiles({path});
  ASSERT_EQ(shotNamed(*other, "other.png")->id, highest->id);
  store_->forget({highest});
  EXPECT_EQ(shotNamed(*store_, "other.png")->path, path);
  EXPECT_THAT(store_->database().ignoredPaths(), ElementsAre(highest->path));
  EXPECT_EQ(store_->status(), "Removed 1 from the catalogue");
}

TEST_F(Forgetting, AShotWhoseRowIsGoneStaysOut) {
  const auto path = store_->shots().front()->path;
  home_.open(ProcessRole::tool)->database().remove(store_->shots().front()->id, Database::IgnorePath::No);
  store_->forget({store_->shots().front()});
  store_->scan();
  EXPECT_THAT(store_->database().ignoredPaths(), ElementsAre(path));
  EXPECT_EQ(store_->shots().size(), 1U);
}

TEST_F(Forgetting, AShotThatWasFiledMeanwhileIsForgottenWhereItLies) {
  const auto former = store_->shots();
  home_.open(ProcessRole::tool)->file({former.front()});
  store_->forget({former.front()});
  EXPECT_EQ(store_->shots().size(), 1U);
  store_->scan();
  EXPECT_EQ(store_->shots().size(), 1U);
}

TEST_F(Forgetting, TellsOfItsChangesOnce) {
  const QSignalSpy shots(store_.get(), &Store::shotsChanged);
  store_->forget(store_->shots());
  EXPECT_EQ(shots.count(), 1);
}

}  // namespace
}  // namespace Nimbrel
