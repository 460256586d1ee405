#include "Views/Inspector/InspectorFixture.h"

#include <QMenu>
#include <QSignalSpy>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class InspectorActions : public Testing::InspectorFixture {
 protected:
  [[nodiscard]] QMenu& menu() const {
    click("moreActions");
    return at<QMenu>("moreMenu");
  }
  [[nodiscard]] QAction& item(const std::string& name) const {
    auto* found = menu().findChild<QAction*>(QString::fromStdString("inspector.more." + name));
    if (found == nullptr) throw std::runtime_error("no item named " + name);
    return *found;
  }
  [[nodiscard]] QList<QAction*> projectItems() const {
    return menu().findChild<QMenu*>(QStringLiteral("inspector.projectMenu"))->actions();
  }
  [[nodiscard]] std::string path() const { return shot("one.png")->path; }
};

TEST_F(InspectorActions, EachButtonDoesWhatItSays) {
  show(addRead("one.png", "some text"));
  click("open");
  EXPECT_THAT(workspace_->files, ElementsAre(path()));
  click("reveal");
  EXPECT_THAT(workspace_->revealed, ElementsAre(path()));
  click("copyText");
  EXPECT_EQ(pasteboard_->text, "some text");
  EXPECT_EQ(at("reveal").accessibleName(), QStringLiteral("Reveal in Finder"));
}

TEST_F(InspectorActions, WithoutATextThereIsNoneToCopy) {
  show(add("one.png"));
  EXPECT_FALSE(at("copyText").isEnabled());
  EXPECT_FALSE(item("table").isEnabled());
  EXPECT_FALSE(item("translate").isEnabled());
  store_->database().setOCR(shot("one.png")->id, "text", {});
  store_->reload();
  EXPECT_TRUE(at("copyText").isEnabled());
  EXPECT_TRUE(item("table").isEnabled());
  EXPECT_TRUE(item("translate").isEnabled());
}

TEST_F(InspectorActions, TheStarGoesOnAndOff) {
  show(add("one.png"));
  EXPECT_EQ(at("favorite").accessibleName(), QStringLiteral("Add to Favorites"));
  click("favorite");
  EXPECT_TRUE(shot("one.png")->favorite);
  EXPECT_EQ(at("favorite").accessibleName(), QStringLiteral("Remove from Favorites"));
  click("favorite");
  EXPECT_FALSE(shot("one.png")->favorite);
}

TEST_F(InspectorActions, EditingAndPinningWaitForSomebodyWhoAnswers) {
  show(addRead("one.png", "text", {}));
  EXPECT_FALSE(at("edit").isEnabled());
  EXPECT_FALSE(at("pin").isEnabled());
  std::vector<std::string> asked;
  QObject::connect(view_.get(), &InspectorView::editRequested, view_.get(),
                   [&](const ShotPtr& which) { asked.push_back("edit " + which->name); });
  QObject::connect(view_.get(), &InspectorView::pinRequested, view_.get(),
                   [&](const ShotPtr& which) { asked.push_back("pin " + which->name); });
  view_->setCanEdit(true);
  view_->setCanPin(true);
  click("edit");
  click("pin");
  EXPECT_THAT(asked, ElementsAre("edit one.png", "pin one.png"));
}

TEST_F(InspectorActions, TheWarningOpensTheEditorAsWell) {
  store_->settings().protectSensitive.set(false);
  show(addRead("one.png", "text", {"Email"}));
  EXPECT_FALSE(at("warningEdit").isEnabled());
  view_->setCanEdit(true);
  int asked = 0;
  QObject::connect(view_.get(), &InspectorView::editRequested, view_.get(), [&] { ++asked; });
  click("warningEdit");
  EXPECT_EQ(asked, 1);
}

TEST_F(InspectorActions, SharingAsksForAMenuAtItsButton) {
  show(add("one.png"));
  const QWidget* place = nullptr;
  QObject::connect(view_.get(), &InspectorView::shareRequested, view_.get(),
                   [&](const ShotPtr&, QWidget* button) { place = button; });
  click("share");
  EXPECT_EQ(place, &at("share"));
}

TEST_F(InspectorActions, AShotWithoutAHashHasNoSimilarOnes) {
  show(add("one.png"));
  EXPECT_FALSE(item("similar").isEnabled());
  store_->database().setHash(shot("one.png")->id, 5);
  store_->reload();
  auto& similar = item("similar");
  EXPECT_TRUE(similar.isEnabled());
  similar.trigger();
  EXPECT_TRUE(std::holds_alternative<Filter::Similar>(store_->filter().choice));
}

TEST_F(InspectorActions, AFileWithTheExtensionInCapitalsIsHeicAlready) {
  show(add("one.HEIC"));
  EXPECT_FALSE(item("shrink").isEnabled());
  show(add("two.png"));
  EXPECT_TRUE(item("shrink").isEnabled());
}

TEST_F(InspectorActions, FilingIsForWhatIsInTheInbox) {
  show(add("one.png"));
  item("file").trigger();
  EXPECT_EQ(textOf("where"), "Library");
  EXPECT_FALSE(item("file").isEnabled());
}

TEST_F(InspectorActions, ProjectsAreThoseOfTheSettings) {
  show(add("one.png"));
  ASSERT_EQ(projectItems().size(), 1);
  EXPECT_EQ(projectItems().front()->text(), QStringLiteral("Create a project in Settings"));
  EXPECT_FALSE(projectItems().front()->isEnabled());
  store_->settings().projects.set({"Ground & Sky", "Launch"});
  ASSERT_EQ(projectItems().size(), 2);
  EXPECT_EQ(projectItems().front()->text(), QStringLiteral("Ground && Sky"));
  projectItems().front()->trigger();
  EXPECT_THAT(shot("one.png")->tags, ElementsAre("project:Ground & Sky"));
}

TEST_F(InspectorActions, TheMenuTranslatesAndMakesTables) {
  show(addRead("one.png", "a  1\nb  2\nc  3"));
  item("table").trigger();
  EXPECT_EQ(pasteboard_->text, "a\t1\nb\t2\nc\t3");
  EXPECT_THAT(workspace_->urls, IsEmpty());
  item("translate").trigger();
  EXPECT_EQ(workspace_->urls.size(), 1U);
}

TEST_F(InspectorActions, MoveToTrashAsksForTheFile) {
  show(add("one.png"));
  item("trash").trigger();
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(path())));
}

TEST_F(InspectorActions, AnOpenMenuStaysWithItsShotWhenThatIsGone) {
  show(add("one.png"));
  auto& file = item("file");
  store_->database().remove(shot("one.png")->id, Database::IgnorePath::No);
  store_->reload();
  file.trigger();
  EXPECT_THAT(store_->shots(), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
