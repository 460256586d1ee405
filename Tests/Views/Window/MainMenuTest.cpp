#include "Views/Window/MainMenu.h"

#include "Views/Window/WindowFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenuBar>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

class MainMenuTest : public Testing::WindowFixture {
 protected:
  /// Items with their keys, as they are shown; rules as "-".
  [[nodiscard]] std::vector<std::string> itemsOf(const char* menu) const {
    std::vector<std::string> items;
    for (const auto* item : find<QMenu>(menu)->actions()) {
      const auto keys = item->shortcut().toString(QKeySequence::PortableText);
      auto text = item->text().toStdString();
      if (!keys.isEmpty()) text += " (" + keys.toStdString() + ")";
      items.push_back(item->isSeparator() ? "-" : text);
    }
    return items;
  }
  [[nodiscard]] QLineEdit* field() const { return find<QLineEdit>("searchField"); }
  /// The keys as the user presses them, wherever the focus is.
  void press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    auto* focused = QApplication::focusWidget();
    QTest::keyClick(focused ? focused : window_.get(), key, modifiers);
    settle();
  }
};

TEST_F(MainMenuTest, TitlesAreTheApplicationsFileAndEdit) {
  openWindow();
  std::vector<std::string> titles;
  for (const auto* title : find<QMenuBar>("menuTitles")->actions()) titles.push_back(title->text().toStdString());
  EXPECT_THAT(titles, ElementsAre("&Nimbrel", "&File", "&Edit"));
}

TEST_F(MainMenuTest, ItemsStandInTheirOrderWithTheirKeys) {
  openWindow();
  EXPECT_THAT(itemsOf("menu.application"),
              ElementsAre("Check for Updates…", "-", "Settings… (Ctrl+,)", "-", "Quit Nimbrel (Ctrl+Q)"));
  EXPECT_THAT(itemsOf("menu.file"),
              ElementsAre("Capture Selection… (Ctrl+Shift+5)", "Capture Window…", "Capture Main Screen",
                          "Record Selection…", "Record Main Screen", "Edit Last Recording…", "-",
                          "Import Files… (Ctrl+I)", "Rescan Folders (Ctrl+R)", "-", "Purge Old Shots…",
                          "Find Duplicates…", "Shrink to HEIC…", "Review Cleanup Suggestions…"));
  EXPECT_THAT(itemsOf("menu.edit"),
              ElementsAre("Undo (Ctrl+Z)", "Redo (Ctrl+Shift+Z)", "-", "Cut (Ctrl+X)", "Copy (Ctrl+C)",
                          "Paste (Ctrl+V)", "-", "File to Library (Ctrl+Shift+L)",
                          "Copy Recognized Text (Ctrl+Shift+C)", "Pin to Screen (Ctrl+Shift+P)", "Unpin All",
                          "Move to Trash (Ctrl+Backspace)", "-", "Select All (Ctrl+A)", "Quick Look (Ctrl+Y)",
                          "Quick Find… (Ctrl+Shift+F)", "Save This Search (Ctrl+D)"));
}

TEST_F(MainMenuTest, WhatIsNotThereYetIsDisabled) {
  openWindow();
  for (const auto* name : {"menu.settings", "menu.quickFind"}) {
    EXPECT_FALSE(isEnabled(name)) << name;
  }
}

TEST_F(MainMenuTest, SettingsAreShown) {
  int asked = 0;
  openWindow({.settings = [&asked] { ++asked; }});
  ASSERT_TRUE(isEnabled("menu.settings"));
  QTest::keyClick(window_.get(), Qt::Key_Comma, Qt::ControlModifier);
  EXPECT_EQ(asked, 1);
}

TEST_F(MainMenuTest, QuickFindIsShownOrHidden) {
  int asked = 0;
  openWindow({.quickFind = [&] { ++asked; }});
  ASSERT_TRUE(isEnabled("menu.quickFind"));
  press(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(asked, 1);
}

TEST_F(MainMenuTest, EditLastRecordingIsDisabledUntilARecordingExists) {
  openWindow();
  EXPECT_FALSE(store_->lastRecordingURL());
  EXPECT_FALSE(isEnabled("menu.editLastRecording"));
  store_->setLastRecordingURL(home_.path("a.mov"));
  settle();
  EXPECT_TRUE(isEnabled("menu.editLastRecording"));
  store_->setLastRecordingURL(std::nullopt);
  settle();
  EXPECT_FALSE(isEnabled("menu.editLastRecording"));
}

TEST_F(MainMenuTest, EditLastRecordingAsksForItsTools) {
  openWindow({.recordingTools = [](QWidget* window) { return new QDialog(window); }});
  store_->setLastRecordingURL(home_.path("a.mov"));
  settle();
  action("menu.editLastRecording")->trigger();
  EXPECT_TRUE(store_->showRecordingTools());
}

TEST_F(MainMenuTest, CommandsOnShotsAreEnabledWhileSomeAreSelected) {
  openWindow({.quickLook = [] {}});
  for (const auto* name : {"menu.fileToLibrary", "menu.trash", "menu.quickLook"}) EXPECT_FALSE(isEnabled(name));
  select({add("a.png")});
  for (const auto* name : {"menu.fileToLibrary", "menu.trash", "menu.quickLook"}) EXPECT_TRUE(isEnabled(name));
  store_->setFilter({Filter::Favorites{}});
  settle();
  EXPECT_FALSE(isEnabled("menu.trash")) << "the selected shot is not among those shown";
}

TEST_F(MainMenuTest, CopyRecognizedTextNeedsOneShotWithText) {
  openWindow();
  const auto read = add("a.png");
  const auto other = add("b.png");
  store_->database().setOCR(read->id, "hello", {});
  store_->reload();
  select({other});
  EXPECT_FALSE(isEnabled("menu.copyText"));
  select({read, other});
  EXPECT_FALSE(isEnabled("menu.copyText"));
  select({read});
  ASSERT_TRUE(isEnabled("menu.copyText"));
  action("menu.copyText")->trigger();
  EXPECT_EQ(pasteboard_->text, "hello");
}

TEST_F(MainMenuTest, CopyRecognizedTextOfAProtectedShotAsksTheOwner) {
  openWindow();
  const auto shot = add("a.png");
  makeSensitive(shot);
  select({shot});
  action("menu.copyText")->trigger();
  EXPECT_EQ(pasteboard_->writes, 0);
  ASSERT_TRUE(owner_->isAsked());
  owner_->decide(true);
  EXPECT_EQ(pasteboard_->text, "somebody");
}

TEST_F(MainMenuTest, CtrlAInTheSearchFieldSelectsAllShotsAndNotTheText) {
  add("a.png");
  add("b.png");
  openWindow();
  field()->setFocus();
  field()->insert(QString());
  press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_THAT(store_->selection(), SizeIs(2));
  field()->setText(QStringLiteral("a"));
  press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_FALSE(field()->hasSelectedText());
}

TEST_F(MainMenuTest, TextFieldsKeepTheKeysOfEditing) {
  openWindow();
  field()->setFocus();
  field()->setText(QStringLiteral("halden"));
  field()->selectAll();
  press(Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(field()->text(), QString());
  press(Qt::Key_V, Qt::ControlModifier);
  press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(field()->text(), QStringLiteral("haldenhalden"));
  field()->setSelection(0, 3);
  press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("hal"));
  press(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(field()->text(), QStringLiteral("halden"));
}

TEST_F(MainMenuTest, EditingItemsOfTheMenuWorkOnTheField) {
  openWindow();
  for (const auto* name : {"menu.undo", "menu.redo", "menu.cut", "menu.copy"}) EXPECT_FALSE(isEnabled(name));
  field()->setFocus();
  QTest::keyClicks(field(), QStringLiteral("halden"));
  field()->selectAll();
  Q_EMIT find<QMenu>("menu.edit")->aboutToShow();
  for (const auto* name : {"menu.undo", "menu.cut", "menu.copy"}) EXPECT_TRUE(isEnabled(name));
  action("menu.cut")->trigger();
  EXPECT_EQ(field()->text(), QString());
  action("menu.paste")->trigger();
  EXPECT_EQ(field()->text(), QStringLiteral("halden"));
  find<QWidget>("sidebar")->setFocus();
  EXPECT_FALSE(isEnabled("menu.cut"));
}

TEST_F(MainMenuTest, CtrlDWithAnEmptySearchFieldIsDisabled) {
  openWindow();
  EXPECT_FALSE(isEnabled("menu.saveSearch"));
  field()->setFocus();
  press(Qt::Key_D, Qt::ControlModifier);
  EXPECT_TRUE(store_->settings().savedSearches().empty());
  QTest::keyClicks(field(), QStringLiteral("halden"));
  settle();
  ASSERT_TRUE(isEnabled("menu.saveSearch"));
  press(Qt::Key_D, Qt::ControlModifier);
  EXPECT_THAT(store_->settings().savedSearches(), ElementsAre("halden"));
}

TEST_F(MainMenuTest, QuickLookIsAskedForWhileSomethingIsSelected) {
  int asked = 0;
  openWindow({.quickLook = [&asked] { ++asked; }});
  const auto shot = add("a.png");
  press(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(asked, 0);
  select({shot});
  press(Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(asked, 1);
}

TEST_F(MainMenuTest, PinningIsAskedForWhileSomethingIsSelected) {
  int asked = 0;
  openWindow({.pinSelected = [&asked] { ++asked; }});
  const auto shot = add("a.png");
  press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(asked, 0);
  EXPECT_FALSE(isEnabled("menu.pin"));
  select({shot});
  EXPECT_TRUE(isEnabled("menu.pin"));
  press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(asked, 1);
}

TEST_F(MainMenuTest, UnpinningIsAlwaysThere) {
  int asked = 0;
  openWindow({.unpinAll = [&asked] { ++asked; }});
  ASSERT_TRUE(isEnabled("menu.unpinAll"));
  action("menu.unpinAll")->trigger();
  EXPECT_EQ(asked, 1);
}

TEST_F(MainMenuTest, CapturesAreAskedFor) {
  for (const auto* name : {"menu.captureSelection", "menu.captureWindow", "menu.captureScreen", "menu.recordSelection",
                           "menu.recordScreen"}) {
    openWindow();
    store_->setStatus("");
    action(name)->trigger();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !store_->status().empty(); })) << name;
    EXPECT_EQ(store_->status(), "Capture failed: Screenshots cannot be taken here") << name;
  }
}

TEST_F(MainMenuTest, SheetsAreAskedForThroughTheStore) {
  openWindow({.purge = [](QWidget* window) { return new QDialog(window); },
              .duplicates = [](QWidget* window) { return new QDialog(window); },
              .shrink = [](QWidget* window) { return new QDialog(window); },
              .cleanup = [](QWidget* window) { return new QDialog(window); }});
  action("menu.purge")->trigger();
  action("menu.duplicates")->trigger();
  action("menu.shrink")->trigger();
  action("menu.cleanup")->trigger();
  EXPECT_TRUE(store_->showPurge() && store_->showDuplicates() && store_->showShrink() && store_->showCleanup());
}

TEST_F(MainMenuTest, UpdatesAndQuittingAreLeftToTheApplication) {
  int updates = 0;
  int quits = 0;
  openWindow({.checkForUpdates = [&updates] { ++updates; }, .quit = [&quits] { ++quits; }});
  action("menu.checkForUpdates")->trigger();
  press(Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(updates, 1);
  EXPECT_EQ(quits, 1);
}

TEST_F(MainMenuTest, RescanFoldersScans) {
  openWindow();
  home_.addFile(home_.desktop("Screenshot 1.png"));
  action("menu.rescan")->trigger();
  EXPECT_THAT(store_->shots(), SizeIs(1));
}

TEST_F(MainMenuTest, TheImportPanelTakesSeveralImagesAndNoFolders) {
  openWindow();
  const auto one = home_.addFile(home_.path("pictures/a.png"));
  const auto two = home_.addFile(home_.path("pictures/b.heic"));
  action("menu.importFiles")->trigger();
  auto* panel = find<QFileDialog>("importPanel");
  EXPECT_TRUE(panel->isModal());
  EXPECT_EQ(panel->fileMode(), QFileDialog::ExistingFiles);
  EXPECT_THAT(panel->nameFilters().front().toStdString(), ::testing::HasSubstr("*.heic"));
  Q_EMIT panel->filesSelected({QString::fromStdString(one), QString::fromStdString(two)});
  panel->reject();
  EXPECT_THAT(store_->shots(), SizeIs(2));
}

TEST_F(MainMenuTest, CtrlBackspaceInATextFieldTakesAWordAndNoShots) {
  openWindow();
  const auto shot = add("a.png");
  field()->setFocus();
  field()->setText(QStringLiteral("a png"));
  select({shot});
  ASSERT_TRUE(isEnabled("menu.trash"));
  store_->setStatus("");
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(field()->text(), QStringLiteral("a "));
  EXPECT_EQ(store_->status(), "");
}

TEST_F(MainMenuTest, WhatCanBeDoneToTheTextIsLookedAtWhenTheMenuOpens) {
  openWindow();
  field()->setFocus();
  const auto open = [this] { Q_EMIT find<QMenu>("menu.edit")->aboutToShow(); };
  open();
  for (const auto* name : {"menu.undo", "menu.redo", "menu.cut", "menu.copy"}) EXPECT_FALSE(isEnabled(name)) << name;
  QTest::keyClicks(field(), QStringLiteral("halden"));
  open();
  EXPECT_TRUE(isEnabled("menu.undo"));
  EXPECT_FALSE(isEnabled("menu.redo"));
  EXPECT_FALSE(isEnabled("menu.cut")) << "nothing of the text is selected";
  action("menu.undo")->trigger();
  EXPECT_EQ(field()->text(), QString());
  open();
  EXPECT_FALSE(isEnabled("menu.undo"));
  EXPECT_TRUE(isEnabled("menu.redo"));
  action("menu.redo")->trigger();
  field()->selectAll();
  open();
  EXPECT_TRUE(isEnabled("menu.cut"));
  EXPECT_TRUE(isEnabled("menu.copy"));
}

TEST_F(MainMenuTest, CtrlBackspaceMovesTheSelectedShotsToTheTrash) {
  openWindow();
  select({add("a.png")});
  press(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_TRUE(QTest::qWaitFor([this] { return !store_->status().empty(); }));
}

}  // namespace
}  // namespace Nimbrel
