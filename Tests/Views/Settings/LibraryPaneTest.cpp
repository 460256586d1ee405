#include "Views/Settings/SettingsViewFixture.h"

#include "Views/Shared/ElidedLabel.h"

namespace Nimbrel {
namespace {

using ::testing::Contains;

class LibraryPaneTest : public Testing::WorkerSettingsFixture {
 protected:
  [[nodiscard]] std::string path() const { return at<ElidedLabel>("libraryPath").fullText().toStdString(); }
};

TEST_F(LibraryPaneTest, ShowsWhereFiledShotsGo) {
  show();
  EXPECT_EQ(path(), home_.path("Pictures/Nimbrel"));
  EXPECT_FALSE(toggle("autoFile").isChecked());
  EXPECT_TRUE(toggle("renameOnFile").isChecked());
}

TEST_F(LibraryPaneTest, AChosenFolderIsTheLibraryAtOnce) {
  const auto library = home_.path("Shots");
  home_.addFile(library + "/2026/anything.png");
  show();
  click("libraryChoose");
  EXPECT_EQ(picker("libraryPicker").windowTitle(), QStringLiteral("Choose the Nimbrel library folder"));
  EXPECT_EQ(picker("libraryPicker").fileMode(), QFileDialog::Directory);
  choose("libraryPicker", library);
  EXPECT_EQ(settings().libraryRoot(), library);
  EXPECT_EQ(path(), library);
  EXPECT_THAT(watched(), Contains(library));
  EXPECT_THAT(Testing::namesOf(store_->shots()), Contains("anything.png")) << "it is scanned";
}

TEST_F(LibraryPaneTest, ThePickerBeginsAroundTheFolderThatIsSet) {
  home_.folder().makeFolder("Elsewhere/Shots");
  settings().libraryRoot.set(home_.path("Elsewhere/Shots"));
  show();
  click("libraryChoose");
  EXPECT_EQ(picker("libraryPicker").directory().absolutePath().toStdString(), home_.path("Elsewhere"));
}

TEST_F(LibraryPaneTest, OfAFolderThatIsGoneThePickerBeginsWithWhatIsLeft) {
  home_.folder().makeFolder("Elsewhere");
  settings().libraryRoot.set(home_.path("Elsewhere/gone/Shots"));
  show();
  click("libraryChoose");
  EXPECT_EQ(picker("libraryPicker").directory().absolutePath().toStdString(), home_.path("Elsewhere"));
}

TEST_F(LibraryPaneTest, ACancelledPickerChangesNothing) {
  show();
  const auto calls = events_->watched.size();
  click("libraryChoose");
  picker("libraryPicker").reject();
  QCoreApplication::sendPostedEvents();
  EXPECT_EQ(settings().libraryRoot(), home_.path("Pictures/Nimbrel"));
  EXPECT_EQ(events_->watched.size(), calls);
}

TEST_F(LibraryPaneTest, SwitchesAreStoredAtOnce) {
  show();
  click("autoFile");
  click("renameOnFile");
  const auto suite = home_.suiteOfOtherProcess();
  EXPECT_EQ(suite->value(QStringLiteral("autoFile")), QJsonValue(true));
  EXPECT_EQ(suite->value(QStringLiteral("renameOnFile")), QJsonValue(false));
}

TEST_F(LibraryPaneTest, WhatAnotherProcessSetsAppears) {
  show();
  setElsewhere(QStringLiteral("autoFile"), true);
  setElsewhere(QStringLiteral("libraryRoot"), QString::fromStdString(home_.path("Other")));
  EXPECT_TRUE(toggle("autoFile").isChecked());
  EXPECT_EQ(path(), home_.path("Other"));
}

TEST_F(LibraryPaneTest, ANameThatSteersItsSurroundingsIsShownWithoutHarm) {
  settings().libraryRoot.set(
      "/a\nb\xE2\x80\xAE"
      "c");
  show();
  EXPECT_EQ(path(), "/a b\uFFFDc");
}

}  // namespace
}  // namespace Nimbrel
