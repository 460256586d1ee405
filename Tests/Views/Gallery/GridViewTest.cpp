#include "Support/Waiting.h"
#include "Views/Gallery/GalleryFixture.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QFile>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>

namespace Nimbrel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;
using Testing::waitUntil;

class GridViewTest : public Testing::GalleryFixture {
 protected:
  [[nodiscard]] int position() const { return grid().verticalScrollBar()->value(); }
  void scrollTo(int value) { grid().verticalScrollBar()->setValue(value); }
  void lock(Shot& shot) {
    shot.ocrDone = true;
    shot.ocr = "hunter2";
    shot.sensitive = {"Password"};
  }
  [[nodiscard]] QAccessibleInterface* accessible() const { return QAccessible::queryAccessibleInterface(&grid()); }
};

TEST_F(GridViewTest, OnlyWhatIsOnTheScreenIsDecoded) {
  add(300);
  show();
  const auto visible = grid().gridLayout().cellsIn({0, 0, 598, 625}).size();
  ASSERT_LT(visible, 30U);
  ASSERT_TRUE(waitUntil([&] { return thumbs_.size() == visible; }));
  EXPECT_THAT(decoded(), SizeIs(visible));
}

TEST_F(GridViewTest, AnObscuredShotIsNotDecoded) {
  add("secret.png", [this](Shot& shot) { lock(shot); });
  add("open.png");
  show();
  ASSERT_TRUE(waitUntil([&] { return thumbs_.size() == 1; }));
  EXPECT_THAT(decoded(), ElementsAre(home_.path("open.png")));
}

TEST_F(GridViewTest, AClickSelectsThatShotAlone) {
  add(4);
  show();
  click(1);
  click(2);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 2.png"));
}

TEST_F(GridViewTest, AClickWithTheCommandKeyTakesInAndOut) {
  add(4);
  show();
  click(1);
  click(2, Qt::ControlModifier);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png", "shot 2.png"));
  click(1, Qt::ControlModifier);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 2.png"));
}

TEST_F(GridViewTest, AClickWithShiftAddsTheRangeAndKeepsTheRest) {
  add(6);
  show();
  click(1);
  click(3, Qt::ShiftModifier);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png", "shot 2.png", "shot 3.png"));
}

TEST_F(GridViewTest, AClickWithShiftDoesNothingWhileTheSelectedAreNotShown) {
  add("hidden.png", [](Shot& shot) { shot.filed = true; });
  add(3);
  store_->setFilter({Filter::Inbox{}});
  show();
  store_->setSelection({idOf("hidden.png")});
  click(1, Qt::ShiftModifier);
  EXPECT_EQ(store_->selection(), ShotIDSet{idOf("hidden.png")});
}

TEST_F(GridViewTest, ADoubleClickSelectsAndOpens) {
  add(3);
  show();
  click(1);
  QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, grid().cellPlace(1).center());
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png"));
  EXPECT_THAT(workspace_->files, ElementsAre(home_.path("shot 1.png")));
}

TEST_F(GridViewTest, ALockedShotOpensWhenTheOwnerAllowsIt) {
  add("secret.png", [this](Shot& shot) { lock(shot); });
  show();
  QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, grid().cellPlace(0).center());
  ASSERT_TRUE(owner_->isAsked());
  EXPECT_THAT(workspace_->files, IsEmpty());
  owner_->decide(true);
  EXPECT_THAT(workspace_->files, ElementsAre(home_.path("secret.png")));
}

TEST_F(GridViewTest, ReturnOpensTheOnlySelectedShot) {
  add(3);
  show();
  click(2);
  key(Qt::Key_Return);
  EXPECT_THAT(workspace_->files, ElementsAre(home_.path("shot 2.png")));
}

TEST_F(GridViewTest, ReturnWithTwoSelectedDoesNothing) {
  add(3);
  show();
  store_->setSelection({idOf("shot 0.png"), idOf("shot 1.png")});
  key(Qt::Key_Return);
  EXPECT_THAT(workspace_->files, IsEmpty());
}

TEST_F(GridViewTest, SpaceAsksForALargeLook) {
  add(3);
  show();
  int asked = 0;
  QObject::connect(&view_->actions(), &GalleryActions::quickLookRequested, view_.get(), [&] { ++asked; });
  key(Qt::Key_Space);
  EXPECT_EQ(asked, 1);
}

TEST_F(GridViewTest, DeleteMovesTheSelectedToTheTrash) {
  add(3);
  show();
  click(1);
  key(Qt::Key_Delete);
  EXPECT_THAT(trash_->asked, ElementsAre(ElementsAre(home_.path("shot 1.png"))));
}

TEST_F(GridViewTest, DeleteWithoutASelectionDoesNothing) {
  add(3);
  show();
  key(Qt::Key_Delete);
  EXPECT_THAT(trash_->asked, IsEmpty());
}

TEST_F(GridViewTest, ArrowsMoveByCellsAndRows) {
  add(9);
  show();
  click(0);
  key(Qt::Key_Right);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png"));
  key(Qt::Key_Down);
  const auto below = "shot " + std::to_string(1 + store_->gridColumns()) + ".png";
  EXPECT_THAT(selectedNames(), ElementsAre(below));
}

TEST_F(GridViewTest, ArrowsWithShiftExtend) {
  add(5);
  show();
  click(1);
  key(Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png", "shot 2.png"));
}

TEST_F(GridViewTest, SidewaysArrowsGoTheOtherWayFromRightToLeft) {
  add(3);
  show();
  view_->setLayoutDirection(Qt::RightToLeft);
  click(0);
  key(Qt::Key_Left);
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png"));
}

TEST_F(GridViewTest, WhatTheKeysSelectComesIntoSight) {
  add(100);
  show();
  click(0);
  for (int i = 0; i < 12; ++i) key(Qt::Key_Down);
  const auto cell = static_cast<std::size_t>(12 * store_->gridColumns());
  EXPECT_TRUE(grid().viewport()->rect().contains(grid().cellPlace(cell)));
  for (int i = 0; i < 12; ++i) key(Qt::Key_Up);
  EXPECT_TRUE(grid().viewport()->rect().contains(grid().cellPlace(0)));
}

TEST_F(GridViewTest, ColumnsAreCountedWhenTheWidthChangesAndNotWithTheSizeAlone) {
  add(3);
  store_->settings().thumbSize.set(178);
  show({598, 600});
  EXPECT_EQ(store_->gridColumns(), 3);
  store_->settings().thumbSize.set(120);
  EXPECT_EQ(store_->gridColumns(), 3);
  EXPECT_EQ(grid().gridLayout().columns(), 4);
  view_->resize(599, 600);
  EXPECT_EQ(store_->gridColumns(), 4);
}

TEST_F(GridViewTest, AfterTheGalleryThereIsOneColumnUntilTheGridShows) {
  add(3);
  store_->settings().galleryLayout.set(GalleryLayout::gallery);
  show();
  ASSERT_EQ(store_->gridColumns(), 1);
  view_->hide();
  store_->settings().galleryLayout.set(GalleryLayout::grid);
  EXPECT_EQ(store_->gridColumns(), 1);
  view_->show();
  EXPECT_TRUE(waitUntil([&] { return store_->gridColumns() > 1; }));
}

TEST_F(GridViewTest, AReloadLeavesWhatIsSeenInItsPlace) {
  add(200);
  show();
  click(0);
  scrollTo(2000);
  const auto cell = grid().gridLayout().cellsIn({0, 2000, 598, 625}).front();
  const auto name = grid().shots()[cell]->name;
  const auto place = grid().cellPlace(cell);
  for (int i = 0; i < 2 * store_->gridColumns(); ++i) {
    add("new " + std::to_string(i) + ".png", [this](Shot& shot) { shot.date = home_.now; });
  }
  reload();
  ASSERT_TRUE(waitUntil([&] { return grid().cellCount() == 200 + 2U * static_cast<unsigned>(store_->gridColumns()); }));
  const auto& shots = grid().shots();
  const auto moved = std::ranges::find(shots, name, [](const ShotPtr& shot) { return shot->name; }) - shots.begin();
  EXPECT_EQ(grid().cellPlace(static_cast<std::size_t>(moved)).top(), place.top());
  EXPECT_THAT(selectedNames(), ElementsAre("shot 0.png"));
}

TEST_F(GridViewTest, AtTheTopANewShotIsSeenAtOnce) {
  add(200);
  show();
  add("new.png", [this](Shot& shot) { shot.date = home_.now; });
  reload();
  ASSERT_TRUE(waitUntil([&] { return grid().cellCount() == 201; }));
  EXPECT_EQ(position(), 0);
  EXPECT_EQ(grid().shots().front()->name, "new.png");
}

TEST_F(GridViewTest, AnotherFilterBeginsAtItsTop) {
  add(200);
  show();
  scrollTo(3000);
  store_->setFilter({Filter::Inbox{}});
  EXPECT_TRUE(waitUntil([&] { return position() == 0; }));
}

TEST_F(GridViewTest, SnippetsOfWhatScrollsInAboveDoNotMoveWhatIsSeen) {
  for (int i = 0; i < 120; ++i) {
    add("shot " + std::to_string(i) + ".png", [](Shot& shot) {
      shot.ocrDone = true;
      shot.ocr = "an orbit of the moon";
    });
  }
  show();
  scrollTo(4000);
  store_->setQuery("orbit");
  store_->runSearch();
  ASSERT_TRUE(waitUntil([&] { return position() == 0; }));
  const auto height = grid().gridLayout().height();
  grid().reveal(90);
  EXPECT_GT(grid().gridLayout().height(), height);
  const auto seen = grid().cellPlace(90).top();
  const auto before = position();
  scrollTo(before - 100);
  EXPECT_EQ(grid().cellPlace(90).top(), seen + 100);
}

TEST_F(GridViewTest, ADayWithoutShotsHasNoTitle) {
  add(3);
  store_->settings().groupByDay.set(false);
  show();
  EXPECT_TRUE(grid().gridLayout().title(0).isEmpty());
}

TEST_F(GridViewTest, CellsAreReadByTheirNames) {
  add("secret.png", [this](Shot& shot) { lock(shot); });
  add("star.png", [](Shot& shot) { shot.favorite = true; });
  add("filed.png", [](Shot& shot) {
    shot.filed = true;
    shot.appName = "Morvanthile";
    shot.appAttributionTrusted = true;
  });
  show();
  auto* list = accessible();
  ASSERT_EQ(list->role(), QAccessible::List);
  ASSERT_EQ(list->childCount(), 3);
  const auto name = [&](int child) { return list->child(child)->text(QAccessible::Name); };
  EXPECT_EQ(name(0), QStringLiteral("Sensitive screenshot, Locked"));
  EXPECT_EQ(name(1), QStringLiteral("star.png, 7:58\u202FPM, Inbox, favourite"));
  EXPECT_EQ(name(2), QStringLiteral("filed.png, Morvanthile"));
}

TEST_F(GridViewTest, ACellIsFoundAndPressedByAssistiveTechnology) {
  add(30);
  show();
  auto* list = accessible();
  auto* cell = list->child(1);
  EXPECT_EQ(list->indexOfChild(cell), 1);
  EXPECT_EQ(list->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
  ASSERT_NE(cell->actionInterface(), nullptr);
  cell->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_THAT(selectedNames(), ElementsAre("shot 1.png"));
  EXPECT_TRUE(cell->state().selected);
  EXPECT_FALSE(cell->state().offscreen);
  EXPECT_TRUE(list->child(29)->state().offscreen);
}

TEST_F(GridViewTest, ACellOfAShotThatIsGoneIsNoLongerRead) {
  add(2);
  show();
  ASSERT_NE(accessible()->child(1), nullptr);
  store_->forget({Testing::shotNamed(*store_, "shot 1.png")});
  QCoreApplication::processEvents();
  ASSERT_EQ(accessible()->childCount(), 1);
  EXPECT_EQ(accessible()->child(1), nullptr);
}

TEST_F(GridViewTest, FiftyThousandShotsAreScrolledToTheirEnd) {
  add(50'000);
  show();
  scrollTo(grid().verticalScrollBar()->maximum());
  grid().viewport()->repaint();
  const auto last = grid().cellPlace(49'999);
  EXPECT_TRUE(grid().viewport()->rect().contains(last));
}

}  // namespace
}  // namespace Nimbrel
