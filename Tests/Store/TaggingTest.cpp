#include "StoreFixture.h"

#include <QSignalSpy>

#include <algorithm>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::shotNamed;

class Tagging : public Testing::StoreFixture {
 protected:
  Tagging() {
    home_.addFile(home_.desktop("Screenshot 1.png"));
    home_.addFile(home_.desktop("Screenshot 2.png"));
    store_->scan();
  }
};

TEST_F(Tagging, AddsTheTagBehindThoseThatAreThere) {
  store_->addTag("red", store_->shots());
  store_->addTag("blue", {shotNamed(*store_, "Screenshot 1.png")});
  EXPECT_THAT(tagsOf("Screenshot 1.png"), ElementsAre("red", "blue"));
  EXPECT_THAT(tagsOf("Screenshot 2.png"), ElementsAre("red"));
  EXPECT_THAT(store_->tags(), ElementsAre("blue", "red"));
  EXPECT_EQ(store_->status(), "Added 2 shots") << "tagging says nothing";
}

TEST_F(Tagging, AShotThatHoldsTheTagDoesNotGetItTwice) {
  store_->addTag("red", {shotNamed(*store_, "Screenshot 1.png")});
  store_->addTag("red", store_->shots());
  EXPECT_THAT(tagsOf("Screenshot 1.png"), ElementsAre("red"));
  EXPECT_THAT(tagsOf("Screenshot 2.png"), ElementsAre("red"));
}

TEST_F(Tagging, BlanksAndTabsAreTrimmed) {
  store_->addTag(" \tred car\t ", store_->shots());
  EXPECT_THAT(tagsOf("Screenshot 1.png"), ElementsAre("red car"));
}

TEST_F(Tagging, ACommaBetweenTwoWordsBecomesABlank) {
  store_->addTag("red,blue", store_->shots());
  EXPECT_THAT(tagsOf("Screenshot 1.png"), ElementsAre("red blue"));
  EXPECT_THAT(store_->tags(), ElementsAre("red blue"));
}

TEST_F(Tagging, ACommaAtAnEndLeavesNothing) {
  store_->addTag("red", store_->shots());
  store_->addTag(",red, ", store_->shots());
  EXPECT_THAT(tagsOf("Screenshot 1.png"), ElementsAre("red"));
}

TEST_F(Tagging, WhatIsBlankIsNoTag) {
  const QSignalSpy shots(store_.get(), &Store::shotsChanged);
  for (const auto* text : {"", " \t", ",", " , ,"}) store_->addTag(text, store_->shots());
  EXPECT_THAT(tagsOf("Screenshot 1.png"), IsEmpty());
  EXPECT_EQ(shots.count(), 0);
}

TEST_F(Tagging, TagsOfAnotherProcessAreKept) {
  const auto other = home_.open(ProcessRole::tool);
  other->addTag("theirs", other->shots());
  store_->addTag("ours", store_->shots());
  EXPECT_THAT(tagsOf("Screenshot 1.png"), ElementsAre("theirs", "ours"));
}

TEST_F(Tagging, AnotherShotThatGotTheIdMeanwhileIsLeftAlone) {
  const auto former = store_->shots();
  const auto highest = *std::ranges::max_element(former, {}, [](const ShotPtr& shot) { return shot->id; });
  const auto other = home_.open(ProcessRole::tool);
  other->database().remove(highest->id, Database::IgnorePath::No);
  home_.now += Seconds{1};
  other->importFiles({home_.addFile(home_.path("other.png"))});
  ASSERT_EQ(shotNamed(*other, "other.png")->id, highest->id);
  store_->addTag("red", former);
  EXPECT_THAT(tagsOf("other.png"), IsEmpty());
}

TEST_F(Tagging, RemovingATagTakesEveryEqualOneAndLeavesTheOthers) {
  store_->database().setTags(shotNamed(*store_, "Screenshot 1.png")->id, {"red", "Red", "red car", "red"});
  store_->reload();
  store_->removeTag("red", store_->shots());
  EXPECT_THAT(tagsOf("Screenshot 1.png"), ElementsAre("Red", "red car"));
  EXPECT_THAT(tagsOf("Screenshot 2.png"), IsEmpty());
  EXPECT_THAT(store_->tags(), ElementsAre("Red", "red car"));
}

TEST_F(Tagging, RemovingATagKeepsThoseThatAnotherProcessGave) {
  store_->addTag("red", store_->shots());
  const auto other = home_.open(ProcessRole::tool);
  other->addTag("theirs", other->shots());
  store_->removeTag("red", store_->shots());
  EXPECT_THAT(tagsOf("Screenshot 1.png"), ElementsAre("theirs"));
}

TEST_F(Tagging, RemovingATagThatIsNotThereWritesNothing) {
  const auto before = store_->database().ownChanges();
  store_->removeTag("red", store_->shots());
  EXPECT_EQ(store_->database().ownChanges(), before);
}

TEST_F(Tagging, TheTagIsFoundBySearch) {
  store_->addTag("unmistakable", {shotNamed(*store_, "Screenshot 1.png")});
  EXPECT_EQ(store_->database().searchIDs("unmistakable")->size(), 1U);
}

}  // namespace
}  // namespace Nimbrel
