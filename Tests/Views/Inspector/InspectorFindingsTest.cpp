#include "Views/Inspector/TagChips.h"

#include "Views/Inspector/InspectorFixture.h"

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Testing::waitUntil;

class InspectorFindings : public Testing::InspectorFixture {
 protected:
  [[nodiscard]] bool comes(const std::string& name) const {
    return waitUntil([&] { return isShown(name); });
  }
};

TEST_F(InspectorFindings, OfNineItemsEightAreShown) {
  std::string text;
  for (char name = 'a'; name < 'a' + 9; ++name) text += std::string("https://example.org/") + name + "\n";
  show(addRead("one.png", text));
  EXPECT_TRUE(comes("found.7"));
  EXPECT_FALSE(isThere("found.8"));
}

TEST_F(InspectorFindings, LinksOpenDatesAreAddedAndAllAreCopied) {
  show(addRead("one.png", "https://example.org/a\n4 November 2026 at 15:00"));
  ASSERT_TRUE(comes("found.1"));
  EXPECT_FALSE(isThere("found.0.add"));
  click("found.0.open");
  EXPECT_THAT(workspace_->urls, ElementsAre("https://example.org/a"));
  click("found.0.copy");
  EXPECT_EQ(pasteboard_->text, "https://example.org/a");
  EXPECT_EQ(store_->status(), "Copied link");
  EXPECT_FALSE(isThere("found.1.open"));
  EXPECT_EQ(at("found.1.add").toolTip(), QStringLiteral("Add to Calendar"));
  click("found.1.add");
  EXPECT_EQ(store_->status(), "Opened event in Calendar");
  EXPECT_THAT(workspace_->files, SizeIs(1));
}

TEST_F(InspectorFindings, ATextWithoutAnyHasNoSection) {
  show(addRead("one.png", "https://example.org/a"));
  ASSERT_TRUE(comes("found"));
  show(addRead("two.png", "nothing at all"));
  EXPECT_FALSE(isShown("found"));
  EXPECT_FALSE(isThere("found.0"));
}

TEST_F(InspectorFindings, AnAddressInACodeOpensAndPlainTextDoesNot) {
  const auto id = addRead("one.png", "")->id;
  store_->database().setCodes(id, {"plain text", "https://example.org/\u00FC"});
  store_->reload();
  show(shot("one.png"));
  EXPECT_TRUE(isShown("codes"));
  EXPECT_FALSE(isThere("code.0.open"));
  click("code.1.open");
  EXPECT_THAT(workspace_->urls, ElementsAre("https://example.org/%C3%BC"));
  click("code.0.copy");
  EXPECT_EQ(pasteboard_->text, "plain text");
  EXPECT_EQ(store_->status(), "Copied code");
}

TEST_F(InspectorFindings, AShotWithoutCodesHasNoSection) {
  show(addRead("one.png", ""));
  EXPECT_FALSE(isShown("codes"));
}

class InspectorTags : public Testing::InspectorFixture {
 protected:
  void setTags(const std::vector<std::string>& tags) {
    store_->database().setTags(shot("one.png")->id, tags);
    store_->reload();
  }
  [[nodiscard]] std::vector<std::string> tags() const { return shot("one.png")->tags; }
  [[nodiscard]] TagChips& chips() const { return at<TagChips>("tagChips"); }
};

TEST_F(InspectorTags, ReturnAddsATagAndEmptiesTheField) {
  show(add("one.png"));
  EXPECT_FALSE(isShown("tagChips"));
  type("newTag", QStringLiteral("reference"));
  EXPECT_THAT(tags(), IsEmpty());
  submit("newTag");
  EXPECT_THAT(tags(), ElementsAre("reference"));
  EXPECT_EQ(field("newTag").text(), QString());
  EXPECT_TRUE(isShown("tag.reference"));
}

TEST_F(InspectorTags, RemovingTakesEveryEqualTag) {
  show(add("one.png"));
  setTags({"a", "b", "a", "c"});
  EXPECT_EQ(chips().chipCount(), 4U);
  click("removeTag.a");
  EXPECT_THAT(tags(), ElementsAre("b", "c"));
  EXPECT_FALSE(isThere("tag.a"));
  EXPECT_EQ(chips().chipCount(), 2U);
}

TEST_F(InspectorTags, ANewTagLeavesTheChipsThatAreThere) {
  show(add("one.png"));
  setTags({"a", "b"});
  const auto* before = &at("tag.b");
  setTags({"b", "c"});
  EXPECT_EQ(&at("tag.b"), before);
  EXPECT_FALSE(isThere("tag.a"));
}

TEST_F(InspectorTags, ThousandsComeInPortionsAndHoldNothingUp) {
  std::vector<std::string> many;
  for (int i = 0; i < 5000; ++i) many.push_back("tag " + std::to_string(i));
  show(add("one.png"));
  setTags(many);
  EXPECT_GT(chips().chipCount(), 0U);
  EXPECT_LT(chips().chipCount(), 200U);
  EXPECT_TRUE(waitUntil([this] { return chips().chipCount() == 5000; }));
  EXPECT_TRUE(isShown("tag.tag 4999"));
}

TEST_F(InspectorTags, FewAfterThousandsAreAllThatIsLeft) {
  std::vector<std::string> many;
  for (int i = 0; i < 200; ++i) many.push_back("tag " + std::to_string(i));
  show(add("one.png"));
  setTags(many);
  ASSERT_TRUE(waitUntil([this] { return chips().chipCount() == 200; }));
  setTags({"tag 0", "other"});
  EXPECT_EQ(chips().chipCount(), 2U);
  EXPECT_TRUE(isShown("tag.tag 0"));
  EXPECT_TRUE(isShown("tag.other"));
  EXPECT_EQ(chips().findChildren<Chip*>().size(), 2);
  EXPECT_TRUE(waitUntil([this] { return chips().height() == at("tag.other").height(); })) << "one row";
  click("removeTag.tag 0");
  EXPECT_THAT(tags(), ElementsAre("other"));
}

TEST_F(InspectorTags, AnotherShotEndsWhatWasComing) {
  std::vector<std::string> many;
  for (int i = 0; i < 5000; ++i) many.push_back("tag " + std::to_string(i));
  show(add("one.png"));
  setTags(many);
  show(add("two.png"));
  EXPECT_EQ(chips().chipCount(), 0U);
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(chips().chipCount(), 0U);
}

TEST_F(InspectorTags, ChipsBreakIntoRowsWithinTheColumn) {
  show(add("one.png"));
  setTags({"a rather long tag", "another long tag", "the third long tag"});
  QCoreApplication::sendPostedEvents();
  EXPECT_GT(at("tag.the third long tag").y(), at("tag.a rather long tag").y());
  EXPECT_EQ(chips().height(), chips().heightForWidth(chips().width()));
}

}  // namespace
}  // namespace Nimbrel
