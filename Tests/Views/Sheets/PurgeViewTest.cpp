#include "Views/Sheets/PurgeView.h"

#include "Views/Sheets/SheetFixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace Nimbrel {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PurgeViewTest : public Testing::SheetFixture {
 protected:
  void openSheet() {
    sheet_ = new PurgeView(*store_, &window_);
    sheet_->open();
  }
  void choose(int days) const {
    auto* picker = in<QComboBox>(*sheet_, "purge.days");
    picker->setCurrentIndex(picker->findData(days));
  }
  [[nodiscard]] QPushButton* confirm() const { return in<QPushButton>(*sheet_, "purge.confirm"); }

  QPointer<PurgeView> sheet_;
};

TEST_F(PurgeViewTest, ListsWhatIsOlderThanNinetyDaysTheOldestFirst) {
  add({.name = "new.png", .daysAgo = 89});
  add({.name = "old.png", .daysAgo = 91, .bytes = 582'000});
  add({.name = "older.png", .daysAgo = 200, .bytes = 2'200'000});
  openSheet();
  EXPECT_EQ(sheet_->width(), 620);
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("older.png", "old.png"));
  EXPECT_THAT(columnOf(*sheet_, 2), ElementsAre("2.2 MB", "582 KB"));
  EXPECT_EQ(footerOf(*sheet_), "2 shots · 2.8 MB");
}

TEST_F(PurgeViewTest, AShotExactlyAtTheLimitStays) {
  add({.name = "limit.png", .daysAgo = 90});
  openSheet();
  EXPECT_THAT(columnOf(*sheet_, 0), IsEmpty());
}

TEST_F(PurgeViewTest, FavouritesAreNeverListed) {
  add({.name = "loved.png", .daysAgo = 400, .favorite = true});
  openSheet();
  choose(30);
  EXPECT_EQ(placeholderOf(*sheet_), "Nothing to Purge: No shots older than 30 days.");
  EXPECT_FALSE(confirm()->isEnabled());
  EXPECT_EQ(footerOf(*sheet_), "0 shots · Zero KB");
}

TEST_F(PurgeViewTest, TheAgesAreThoseOfThePicker) {
  add({.name = "a.png", .daysAgo = 31});
  add({.name = "b.png", .daysAgo = 181});
  add({.name = "c.png", .daysAgo = 366});
  openSheet();
  choose(30);
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("c.png", "b.png", "a.png"));
  choose(180);
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("c.png", "b.png"));
  choose(365);
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("c.png"));
}

TEST_F(PurgeViewTest, MayBeOnlyTheInbox) {
  add({.name = "filed.png", .daysAgo = 100});
  add({.name = "waiting.png", .daysAgo = 100, .filed = false});
  openSheet();
  in<QCheckBox>(*sheet_, "purge.inboxOnly")->click();
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("waiting.png"));
}

TEST_F(PurgeViewTest, ReturnTrashesAllOfThemAndCloses) {
  add({.name = "old.png", .daysAgo = 91});
  add({.name = "older.png", .daysAgo = 200});
  openSheet();
  in<QTableView>(*sheet_, "shotTable")->setFocus();
  QTest::keyClick(in<QTableView>(*sheet_, "shotTable"), Qt::Key_Return);
  EXPECT_THAT(trashed(), ElementsAre("older.png", "old.png"));
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(sheet_.isNull());
}

TEST_F(PurgeViewTest, EscapeLeavesEverything) {
  add({.name = "old.png", .daysAgo = 91});
  openSheet();
  QTest::keyClick(sheet_, Qt::Key_Escape);
  EXPECT_THAT(trash_->asked, IsEmpty());
  EXPECT_FALSE(sheet_ && sheet_->isVisible());
}

TEST_F(PurgeViewTest, AProtectedShotGoesByNoName) {
  add({.name = "password.png", .daysAgo = 100, .sensitive = {"Password"}});
  openSheet();
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("Sensitive screenshot"));
  store_->settings().protectSensitive.set(false);
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("password.png"));
}

TEST_F(PurgeViewTest, ANameThatSteersTextIsShownHarmless) {
  add({.name = "a\nb\u202Egnp.exe.png", .daysAgo = 100});
  openSheet();
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("a b\uFFFDgnp.exe.png"));
}

TEST_F(PurgeViewTest, FollowsTheCatalogueWhileItIsOpen) {
  add({.name = "old.png", .daysAgo = 91});
  const auto older = add({.name = "older.png", .daysAgo = 200});
  openSheet();
  store_->forget({older});
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("old.png"));
  add({.name = "oldest.png", .daysAgo = 900});
  confirm()->click();
  EXPECT_THAT(trashed(), ElementsAre("oldest.png", "old.png"));
}

TEST_F(PurgeViewTest, TabLeavesTheTableForTheButtons) {
  add({.name = "old.png", .daysAgo = 91});
  openSheet();
  ASSERT_TRUE(QTest::qWaitForWindowActive(sheet_));
  auto* table = in<QTableView>(*sheet_, "shotTable");
  table->setFocus();
  QTest::keyClick(table, Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), in<QPushButton>(*sheet_, "purge.cancel"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), confirm());
}

TEST_F(PurgeViewTest, TheTableLeavesRoomForTheRuleAroundIt) {
  add({.name = "old.png", .daysAgo = 91});
  openSheet();
  const auto* table = in<QTableView>(*sheet_, "shotTable");
  EXPECT_EQ(table->viewport()->x(), 1);
  EXPECT_EQ(table->viewport()->geometry().right(), table->width() - 2);
  EXPECT_EQ(table->viewport()->geometry().bottom(), table->height() - 2);
}

TEST_F(PurgeViewTest, ThousandsOfShotsMakeNoLargerSheet) {
  for (int i = 0; i < 2000; ++i) {
    Shot shot;
    shot.path = home_.desktop(std::to_string(i) + ".png");
    shot.name = std::to_string(i) + ".png";
    shot.date = home_.now - Seconds(86'400.0 * 100);
    store_->database().insert(shot);
  }
  reload();
  openSheet();
  EXPECT_EQ(sheet_->width(), 620);
  EXPECT_LT(sheet_->height(), 600);
  EXPECT_EQ(columnOf(*sheet_, 0).size(), 2000U);
}

TEST_F(PurgeViewTest, Pictures) {
  add({.name = "Screenshot 2026-03-14 09-12-40.png", .daysAgo = 240, .bytes = 644'000});
  add({.name = "Antenna quote.png", .daysAgo = 220, .bytes = 310'000});
  add({.name = "hidden.png", .daysAgo = 200, .bytes = 198'000, .sensitive = {"Password"}});
  add({.name = "Range map draft.png", .daysAgo = 180, .bytes = 1'400'000});
  openSheet();
  keepPictures(*sheet_, QStringLiteral("sheet-purge"));
  const auto image = sheet_->grab().toImage();
  const auto* table = in<QTableView>(*sheet_, "shotTable");
  const auto corner = table->mapTo(sheet_.data(), QPoint(0, 0));
  EXPECT_EQ(image.pixelColor(corner), themeColor(Token::Window)) << "the corner is round";
  EXPECT_EQ(image.pixelColor(corner + QPoint(0, 60)), themeColor(Token::Separator)) << "the side has a rule";
  choose(365);
  keepPictures(*sheet_, QStringLiteral("sheet-purge-empty"));
}

}  // namespace

}  // namespace Nimbrel
