#include "Views/Settings/SettingsViewFixture.h"

#include "Views/Shared/ElidedLabel.h"

#include <QApplication>
#include <QJsonArray>

namespace Nimbrel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class WatchedFoldersPaneTest : public Testing::WorkerSettingsFixture {
 protected:
  [[nodiscard]] std::vector<std::string> rows() const {
    std::vector<std::string> texts;
    for (const auto* row : all<ElidedLabel>("folders.entry")) texts.push_back(row->fullText().toStdString());
    return texts;
  }
  void remove(std::size_t index) const { all<QAbstractButton>("folders.remove").at(index)->click(); }
};

TEST_F(WatchedFoldersPaneTest, EachFolderHasItsRow) {
  settings().sources.set({home_.path("Desktop"), "/a/b"});
  show();
  EXPECT_THAT(rows(), ElementsAre(home_.path("Desktop"), "/a/b"));
}

TEST_F(WatchedFoldersPaneTest, AnAddedFolderIsWatchedAndScanned) {
  const auto captures = home_.path("Captures");
  home_.addFile(captures + "/Screenshot 1.png");
  show();
  click("addFolder");
  EXPECT_EQ(picker("folderPicker").windowTitle(), QStringLiteral("Choose a folder to watch"));
  choose("folderPicker", captures);
  EXPECT_THAT(settings().sources(), ElementsAre(home_.path("Desktop"), captures));
  EXPECT_THAT(rows(), ElementsAre(home_.path("Desktop"), captures));
  EXPECT_THAT(watched(), Contains(captures));
  EXPECT_THAT(Testing::namesOf(store_->shots()), ElementsAre("Screenshot 1.png"));
}

TEST_F(WatchedFoldersPaneTest, AFolderThatIsInTheListRunsNothing) {
  show();
  home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto calls = events_->watched.size();
  click("addFolder");
  choose("folderPicker", home_.path("Desktop") + "/");
  click("addSystemFolder");
  EXPECT_THAT(settings().sources(), ElementsAre(home_.path("Desktop")));
  EXPECT_EQ(events_->watched.size(), calls);
  EXPECT_THAT(store_->shots(), IsEmpty()) << "nothing was scanned";
}

TEST_F(WatchedFoldersPaneTest, TheSystemsScreenshotFolderIsAdded) {
  settings().sources.set({});
  home_.addFile(home_.desktop("Screenshot 1.png"));
  show();
  click("addSystemFolder");
  EXPECT_THAT(rows(), ElementsAre(home_.path("Desktop")));
  EXPECT_THAT(watched(), Contains(home_.path("Desktop")));
  EXPECT_THAT(Testing::namesOf(store_->shots()), ElementsAre("Screenshot 1.png"));
}

TEST_F(WatchedFoldersPaneTest, ARemovedFolderIsWatchedNoMore) {
  settings().sources.set({home_.path("Desktop"), "/a", "/b"});
  show();
  remove(1);
  EXPECT_THAT(settings().sources(), ElementsAre(home_.path("Desktop"), "/b"));
  EXPECT_THAT(rows(), ElementsAre(home_.path("Desktop"), "/b"));
  EXPECT_THAT(watched(), Not(Contains("/a")));
}

TEST_F(WatchedFoldersPaneTest, OfTwoEntriesThatAreAlikeOneIsRemoved) {
  settings().sources.set({"/a", "/b", "/a"});
  show();
  remove(2);
  EXPECT_THAT(rows(), ElementsAre("/a", "/b"));
}

TEST_F(WatchedFoldersPaneTest, TheFocusStaysAtItsPlaceWhenARowGoes) {
  settings().sources.set({"/a", "/b", "/c"});
  show();
  auto* second = all<QAbstractButton>("folders.remove").at(1);
  second->setFocus(Qt::TabFocusReason);
  QTest::keyClick(second, Qt::Key_Space);
  ASSERT_THAT(rows(), ElementsAre("/a", "/c"));
  EXPECT_TRUE(Testing::waitUntil([this] { return all<QAbstractButton>("folders.remove").at(1)->hasFocus(); }));
}

TEST_F(WatchedFoldersPaneTest, AButtonSaysWhatItRemoves) {
  settings().sources.set({"/a/<b>"});
  show();
  const auto& remove = at<QAbstractButton>("folders.remove");
  EXPECT_EQ(remove.accessibleName(), QStringLiteral("Remove /a/<b>"));
  EXPECT_EQ(remove.toolTip(), QStringLiteral("Remove /a/&lt;b&gt;"));
}

TEST_F(WatchedFoldersPaneTest, ThePickerBeginsAroundTheFolderAddedLast) {
  home_.folder().makeFolder("Elsewhere/Captures");
  settings().sources.set({home_.path("Desktop"), home_.path("Elsewhere/Captures")});
  show();
  click("addFolder");
  EXPECT_EQ(picker("folderPicker").directory().absolutePath().toStdString(), home_.path("Elsewhere"));
}

TEST_F(WatchedFoldersPaneTest, FoldersThatAnotherProcessAddsAppear) {
  show();
  setElsewhere(QStringLiteral("sources"), QJsonArray{QStringLiteral("/x"), QStringLiteral("/y")});
  EXPECT_THAT(rows(), ElementsAre("/x", "/y"));
}

TEST_F(WatchedFoldersPaneTest, TabGoesThroughTheRowsBeforeTheButtonsBelow) {
  show();
  settings().sources.set({"/a", "/b"});
  const auto removes = all<QAbstractButton>("folders.remove");
  ASSERT_EQ(removes.size(), 2U);
  ASSERT_TRUE(Testing::waitUntil([&removes] { return removes.back()->isVisible(); }));
  removes.front()->setFocus(Qt::TabFocusReason);
  QTest::keyClick(removes.front(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), removes.back());
  QTest::keyClick(removes.back(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), &at("addFolder"));
}

}  // namespace
}  // namespace Nimbrel
