#include "Views/Settings/SettingsViewFixture.h"

#include "Views/Shared/ElidedLabel.h"

#include <QJsonArray>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ProjectsPaneTest : public Testing::SettingsViewFixture {
 protected:
  [[nodiscard]] std::vector<std::string> rows() const {
    std::vector<std::string> texts;
    for (const auto* row : all<ElidedLabel>("projects.entry")) texts.push_back(row->fullText().toStdString());
    return texts;
  }
};

TEST_F(ProjectsPaneTest, ANewProjectIsSortedInAsPeopleSort) {
  settings().projects.set({"Launch 10", "Launch 9"});
  show();
  type("newProject", QStringLiteral("  ground station "));
  click("addProject");
  EXPECT_THAT(settings().projects(), ElementsAre("ground station", "Launch 9", "Launch 10"));
  EXPECT_THAT(rows(), ElementsAre("ground station", "Launch 9", "Launch 10"));
  EXPECT_EQ(field("newProject").text(), QString());
}

TEST_F(ProjectsPaneTest, BlanksAreNoName) {
  show();
  EXPECT_FALSE(isEnabled("addProject"));
  type("newProject", QStringLiteral("   "));
  EXPECT_FALSE(isEnabled("addProject"));
  QTest::keyClick(&field("newProject"), Qt::Key_Return);
  EXPECT_THAT(settings().projects(), IsEmpty());
  type("newProject", QStringLiteral(" a"));
  EXPECT_TRUE(isEnabled("addProject"));
}

TEST_F(ProjectsPaneTest, ReturnInTheFieldAdds) {
  show();
  type("newProject", QStringLiteral("Launch"));
  QTest::keyClick(&field("newProject"), Qt::Key_Return);
  EXPECT_THAT(settings().projects(), ElementsAre("Launch"));
}

TEST_F(ProjectsPaneTest, ANameThatIsThereIsNotAddedAndTheFieldIsEmptied) {
  settings().projects.set({"b", "a"});
  show();
  type("newProject", QStringLiteral("a"));
  click("addProject");
  EXPECT_THAT(settings().projects(), ElementsAre("b", "a")) << "nor sorted";
  EXPECT_EQ(field("newProject").text(), QString());
  type("newProject", QStringLiteral("A"));
  click("addProject");
  EXPECT_EQ(settings().projects().size(), 3U) << "another name";
}

TEST_F(ProjectsPaneTest, ARemovedProjectLeavesTheTagsOfItsShots) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  store_->importFiles({path});
  store_->assignProject("Launch", store_->shots());
  show();
  ASSERT_THAT(rows(), ElementsAre("Launch"));
  click("projects.remove");
  EXPECT_THAT(settings().projects(), IsEmpty());
  EXPECT_THAT(rows(), IsEmpty());
  EXPECT_THAT(store_->shots().front()->tags, ElementsAre("project:Launch"));
}

TEST_F(ProjectsPaneTest, WhatIsBegunStaysWhenAnotherProcessAddsAProject) {
  show();
  type("newProject", QStringLiteral("Lau"));
  setElsewhere(QStringLiteral("projects"), QJsonArray{QStringLiteral("Other")});
  EXPECT_THAT(rows(), ElementsAre("Other"));
  EXPECT_EQ(field("newProject").text(), QStringLiteral("Lau"));
}

}  // namespace
}  // namespace Nimbrel
