#include "StoreFixture.h"

#include <QSignalSpy>

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

TEST_F(Tagging, TheTagIsFoundBySearch) {
  store_->addTag("unmistakable", {shotNamed(*store_, "Screenshot 1.png")});
  EXPECT_EQ(store_->database().searchIDs("unmistakable")->size(), 1U);
}

}  // namespace
}  // namespace Nimbrel
