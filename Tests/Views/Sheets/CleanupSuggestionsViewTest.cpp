#include "Views/Sheets/CleanupSuggestionsView.h"

#include "Views/Sheets/SheetFixture.h"

#include <QItemSelectionModel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

namespace Nimbrel {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class CleanupSuggestionsViewTest : public Testing::SheetFixture {
 protected:
  void openSheet() {
    sheet_ = new CleanupSuggestionsView(*store_, &window_);
    sheet_->open();
  }
  [[nodiscard]] QTableView* table() const { return in<QTableView>(*sheet_, "shotTable"); }
  [[nodiscard]] QPushButton* confirm() const { return in<QPushButton>(*sheet_, "cleanup.confirm"); }
  void toggle(int row) const {
    table()->selectionModel()->select(table()->model()->index(row, 0),
                                      QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
  }

  QPointer<CleanupSuggestionsView> sheet_;
};

TEST_F(CleanupSuggestionsViewTest, EverythingIsSelectedAtFirst) {
  add({.name = "a.png", .daysAgo = 31, .filed = false});
  add({.name = "b.png", .daysAgo = 32, .filed = false});
  openSheet();
  EXPECT_EQ(sheet_->width(), 760);
  EXPECT_EQ(footerOf(*sheet_), "2 selected");
  confirm()->click();
  EXPECT_THAT(trashed(), ElementsAre("a.png", "b.png"));
}

TEST_F(CleanupSuggestionsViewTest, WhatIsTakenOutOfTheSelectionStays) {
  add({.name = "a.png", .daysAgo = 31, .filed = false});
  add({.name = "b.png", .daysAgo = 32, .filed = false});
  openSheet();
  toggle(0);
  EXPECT_EQ(footerOf(*sheet_), "1 selected");
  confirm()->click();
  EXPECT_THAT(trashed(), ElementsAre("b.png"));
}

TEST_F(CleanupSuggestionsViewTest, WithoutASelectionNothingCanGo) {
  add({.name = "a.png", .daysAgo = 31, .filed = false});
  openSheet();
  toggle(0);
  EXPECT_EQ(footerOf(*sheet_), "0 selected");
  EXPECT_FALSE(confirm()->isEnabled());
}

TEST_F(CleanupSuggestionsViewTest, EachRowTellsItsReason) {
  add({.name = "first.png", .daysAgo = 1, .hash = 0xFF00});
  add({.name = "second.png", .daysAgo = 2, .hash = 0xFF00});
  add({.name = "inbox.png", .daysAgo = 31, .filed = false, .hash = 0xFF00});
  add({.name = "all three.png", .daysAgo = 32, .bytes = 99'999, .filed = false, .hash = 0xFF00, .text = ""});
  openSheet();
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("second.png", "inbox.png", "all three.png"));
  EXPECT_THAT(columnOf(*sheet_, 1), ElementsAre("Near duplicate", "Old Inbox item", "Low-information capture"));
}

TEST_F(CleanupSuggestionsViewTest, WithoutCandidatesItSaysSo) {
  add({.name = "fine.png"});
  add({.name = "unread.png", .daysAgo = 20, .bytes = 10, .text = std::nullopt});
  openSheet();
  EXPECT_EQ(placeholderOf(*sheet_), "Everything Looks Tidy: ");
  EXPECT_FALSE(confirm()->isEnabled());
}

TEST_F(CleanupSuggestionsViewTest, WhatBecomesACandidateWhileItIsOpenIsNotSelected) {
  add({.name = "a.png", .daysAgo = 31, .filed = false});
  openSheet();
  add({.name = "b.png", .daysAgo = 40, .filed = false});
  EXPECT_EQ(columnOf(*sheet_, 0).size(), 2U);
  EXPECT_EQ(footerOf(*sheet_), "1 selected");
  confirm()->click();
  EXPECT_THAT(trashed(), ElementsAre("a.png"));
}

TEST_F(CleanupSuggestionsViewTest, AReloadKeepsWhatIsSelectedAndWhatIsNot) {
  add({.name = "a.png", .daysAgo = 31, .filed = false});
  const auto gone = add({.name = "b.png", .daysAgo = 32, .filed = false});
  add({.name = "c.png", .daysAgo = 33, .filed = false});
  openSheet();
  toggle(2);
  store_->forget({gone});
  EXPECT_EQ(footerOf(*sheet_), "1 selected");
  confirm()->click();
  EXPECT_THAT(trashed(), ElementsAre("a.png"));
}

TEST_F(CleanupSuggestionsViewTest, AnIdThatComesAgainIsNotTakenForTheOneThatWasSelected) {
  add({.name = "a.png", .daysAgo = 31, .filed = false});
  const auto last = add({.name = "b.png", .daysAgo = 32, .filed = false});
  openSheet();
  store_->database().remove(last->id, Database::IgnorePath::No);
  home_.now += Seconds(1);
  const auto again = add({.name = "another.png", .daysAgo = 32, .filed = false});
  ASSERT_EQ(again->id, last->id);
  EXPECT_EQ(footerOf(*sheet_), "1 selected");
}

TEST_F(CleanupSuggestionsViewTest, CtrlASelectsAllRowsAndReturnIsTheDefaultButton) {
  add({.name = "a.png", .daysAgo = 31, .filed = false});
  add({.name = "b.png", .daysAgo = 32, .filed = false});
  openSheet();
  QTest::mouseClick(table()->viewport(), Qt::LeftButton, {},
                    table()->visualRect(table()->model()->index(1, 0)).center());
  EXPECT_EQ(footerOf(*sheet_), "1 selected");
  QTest::keyClick(table(), Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(footerOf(*sheet_), "2 selected");
  QTest::keyClick(table(), Qt::Key_Return);
  EXPECT_THAT(trashed(), ElementsAre("a.png", "b.png"));
}

TEST_F(CleanupSuggestionsViewTest, Pictures) {
  add({.name = "Halden-3 flight telemetry 1.png", .daysAgo = 1, .hash = 0xFF00});
  add({.name = "Halden-3 flight telemetry 2.png", .daysAgo = 2, .bytes = 408'000, .hash = 0xFF00});
  add({.name = "hidden.png", .daysAgo = 34, .filed = false, .sensitive = {"Password"}});
  add({.name = "Screenshot 2026-10-02 16-44-51.png", .daysAgo = 40, .bytes = 1'200'000, .filed = false});
  add({.name = "Screenshot 2026-09-28 12-15-40.png", .daysAgo = 44, .bytes = 41'000, .text = ""});
  openSheet();
  toggle(1);
  ASSERT_TRUE(QTest::qWaitForWindowActive(sheet_));
  keepPictures(*sheet_, QStringLiteral("sheet-cleanup"));
  const auto image = sheet_->grab().toImage();
  const auto row = [&](int number) {
    const auto place = table()->visualRect(table()->model()->index(number, 0)).topLeft() + QPoint(4, 14);
    return image.pixelColor(table()->viewport()->mapTo(sheet_.data(), place));
  };
  EXPECT_EQ(row(0), themeColor(Token::AccentRow));
  EXPECT_EQ(row(1), themeColor(Token::Base));
}

}  // namespace

}  // namespace Nimbrel
