// The settings in the window, and what the companion and other processes make of them.

#include "App/ApplicationFixture.h"
#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QProcess>

#include <memory>
#include <string>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

class SettingsProcessesTest : public Testing::ApplicationFixture {
 protected:
  SettingsProcessesTest() {
    addShot("first.png");
    openWindow();
    chooseFromMenu("menu.settings");
  }

  void startCompanion() { companion_ = Testing::startProgram("nimbrel-menubar", {}, home_.folder().path()); }
  void setInOtherProcess(const char* key, const char* value) const {
    const auto ended = Testing::runProgram(
        "nimbrelctl", {QStringLiteral("settings"), QString::fromUtf8(key), QString::fromUtf8(value)},
        home_.folder().path());
    EXPECT_EQ(ended.status, 0) << ended.errors;
  }
  /// As if the user had chosen it in the picker.
  void addWatchedFolder(const std::string& folder) const {
    clickPart("settings.addFolder");
    auto& picker = part<QFileDialog>("settings.folderPicker");
    Q_EMIT picker.fileSelected(QString::fromStdString(folder));
    picker.close();
    ASSERT_TRUE(waitUntil([this] { return store().settings().sources().size() == 2; }));
  }

  std::unique_ptr<QProcess> companion_;
};

TEST_F(SettingsProcessesTest, TheCompanionWatchesAFolderThatIsAddedInTheWindow) {
  const auto captures = home_.folder().makeFolder("Captures");
  Testing::writePicture(home_.desktop("Screenshot 1.png"), 60, 40, 1);
  startCompanion();
  ASSERT_TRUE(waitUntil([this] { return catalogued("Screenshot 1.png").has_value(); })) << "it runs";
  addWatchedFolder(captures);
  // The window itself scans nothing of its own accord.
  Testing::writePicture(captures + "/Screenshot 2.png", 60, 40, 2);
  EXPECT_TRUE(waitUntil([this] { return shownNames().size() == 3; })) << ::testing::PrintToString(shownNames());
  EXPECT_TRUE(catalogued("Screenshot 2.png"));
}

TEST_F(SettingsProcessesTest, WhatAnotherProcessSetsShowsInTheSettingsAndTheWindowFollows) {
  ASSERT_EQ(store().settings().galleryLayout(), GalleryLayout::grid);
  setInOtherProcess("galleryLayout", "gallery");
  setInOtherProcess("protectSensitive", "false");
  EXPECT_TRUE(waitUntil([this] { return !part<QCheckBox>("settings.protectSensitive").isChecked(); }));
  EXPECT_TRUE(waitUntil([this] { return !isShown(QStringLiteral("gallery.grid")); }));
}

}  // namespace
}  // namespace Nimbrel
