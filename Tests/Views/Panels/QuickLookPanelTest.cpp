#include "Views/Panels/QuickLookPanel.h"

#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Panels/PictureView.h"
#include "Views/Panels/QuickLook.h"
#include "Views/Sheets/SheetFixture.h"

#include <QScrollBar>
#include <QSemaphore>
#include <QTest>
#include <QThread>
#include <QToolButton>
#include <QWheelEvent>

#include <atomic>

namespace Nimbrel {

namespace {

using Testing::waitUntil;
using Paths = std::vector<std::string>;

QImage plain(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::blue);
  return image;
}

class QuickLookPanelTest : public ::testing::Test {
 protected:
  [[nodiscard]] const PictureView* view() const { return panel_.findChild<PictureView*>(); }
  [[nodiscard]] bool hasPicture() const { return !view()->picture().isNull(); }
  [[nodiscard]] std::string text(const char* name) const {
    return panel_.findChild<QLabel*>(QString::fromLatin1(name))->text().toStdString();
  }
  void press(int key) { QTest::keyClick(&panel_, static_cast<Qt::Key>(key)); }

  std::atomic_bool decodedInMainThread_ = false;
  QuickLookPanel panel_{[this](const std::string& path) {
                          if (QThread::currentThread() == QCoreApplication::instance()->thread()) {
                            decodedInMainThread_ = true;
                          }
                          return path.ends_with("broken.png") ? QImage() : plain(4000, 2000);
                        },
                        nullptr};
};

TEST_F(QuickLookPanelTest, ShowsTheFileAtTheStart) {
  panel_.showFiles({"/a.png", "/b.png", "/c.png"}, 1);
  EXPECT_TRUE(panel_.isVisible());
  EXPECT_EQ(panel_.current(), 1U);
  EXPECT_EQ(text("quickLook.name"), "b.png");
  EXPECT_EQ(text("quickLook.place"), "2 of 3");
  EXPECT_TRUE(waitUntil([this] { return hasPicture(); }));
  EXPECT_FALSE(decodedInMainThread_);
}

TEST_F(QuickLookPanelTest, AStartBehindTheEndIsTheLast) {
  panel_.showFiles({"/a.png", "/b.png"}, 7);
  EXPECT_EQ(panel_.current(), 1U);
}

TEST_F(QuickLookPanelTest, AnEmptyListDoesNothing) {
  panel_.showFiles({}, 0);
  EXPECT_FALSE(panel_.isVisible());
  panel_.showFiles({"/a.png"}, 0);
  panel_.showFiles({}, 0);
  EXPECT_TRUE(panel_.isVisible());
}

TEST_F(QuickLookPanelTest, TheSameListAgainClosesIt) {
  panel_.showFiles({"/a.png", "/b.png"}, 0);
  panel_.showFiles({"/a.png", "/b.png"}, 1);
  EXPECT_FALSE(panel_.isVisible());
  panel_.showFiles({"/a.png", "/b.png"}, 0);
  EXPECT_TRUE(panel_.isVisible());
  EXPECT_TRUE(waitUntil([this] { return hasPicture(); }));
}

TEST_F(QuickLookPanelTest, AnotherListTakesItsPlace) {
  panel_.showFiles({"/a.png", "/b.png"}, 0);
  panel_.showFiles({"/b.png"}, 0);
  EXPECT_TRUE(panel_.isVisible());
  EXPECT_EQ(text("quickLook.name"), "b.png");
  EXPECT_EQ(text("quickLook.place"), "");
}

TEST_F(QuickLookPanelTest, SpaceAndEscapeClose) {
  for (const auto key : {Qt::Key_Space, Qt::Key_Escape}) {
    panel_.showFiles({"/a.png"}, 0);
    press(key);
    EXPECT_FALSE(panel_.isVisible());
  }
}

TEST_F(QuickLookPanelTest, TheArrowsGoToTheNextAndStopAtTheEnds) {
  panel_.showFiles({"/a.png", "/b.png", "/c.png"}, 0);
  press(Qt::Key_Left);
  EXPECT_EQ(panel_.current(), 0U);
  press(Qt::Key_Right);
  press(Qt::Key_Down);
  EXPECT_EQ(panel_.current(), 2U);
  press(Qt::Key_Right);
  EXPECT_EQ(panel_.current(), 2U);
  press(Qt::Key_Home);
  EXPECT_EQ(panel_.current(), 0U);
  press(Qt::Key_End);
  press(Qt::Key_Up);
  EXPECT_EQ(panel_.current(), 1U);
  EXPECT_TRUE(waitUntil([this] { return hasPicture(); }));
}

TEST_F(QuickLookPanelTest, TheButtonsDoAsTheKeys) {
  panel_.showFiles({"/a.png", "/b.png"}, 0);
  auto* previous = panel_.findChild<QToolButton*>(QStringLiteral("quickLook.previous"));
  auto* next = panel_.findChild<QToolButton*>(QStringLiteral("quickLook.next"));
  EXPECT_FALSE(previous->isEnabled());
  next->click();
  EXPECT_EQ(panel_.current(), 1U);
  EXPECT_FALSE(next->isEnabled());
  EXPECT_EQ(next->accessibleName(), QStringLiteral("Next"));
}

TEST_F(QuickLookPanelTest, AFileThatIsNoPictureSaysSo) {
  panel_.showFiles({"/broken.png", "/a.png"}, 0);
  const auto* placeholder = panel_.findChild<QWidget*>(QStringLiteral("quickLook.placeholder"));
  EXPECT_TRUE(waitUntil([&] { return placeholder->isVisible(); }));
  press(Qt::Key_Right);
  EXPECT_FALSE(placeholder->isVisible());
  EXPECT_TRUE(waitUntil([this] { return hasPicture(); }));
}

TEST_F(QuickLookPanelTest, AnyNumberOfFilesIsAList) {
  Paths paths;
  for (int i = 0; i < 50'000; ++i) paths.push_back("/" + std::to_string(i) + ".png");
  panel_.showFiles(paths, 49'999);
  EXPECT_EQ(text("quickLook.place"), "50000 of 50000");
}

TEST_F(QuickLookPanelTest, DismissingForgetsWhatItShowed) {
  panel_.showFiles({"/a.png"}, 0);
  ASSERT_TRUE(waitUntil([this] { return hasPicture(); }));
  panel_.dismiss();
  EXPECT_FALSE(panel_.isVisible());
  EXPECT_TRUE(panel_.files().empty());
  EXPECT_FALSE(hasPicture());
}

TEST_F(QuickLookPanelTest, ClosingKeepsNoPicture) {
  panel_.showFiles({"/a.png"}, 0);
  ASSERT_TRUE(waitUntil([this] { return hasPicture(); }));
  press(Qt::Key_Escape);
  EXPECT_FALSE(hasPicture());
}

TEST_F(QuickLookPanelTest, ZoomsWithKeysAndFitsAgain) {
  panel_.showFiles({"/a.png"}, 0);
  ASSERT_TRUE(waitUntil([this] { return hasPicture(); }));
  EXPECT_TRUE(view()->isFitted());
  const auto fitted = view()->scale();
  EXPECT_LT(fitted, 1);
  press(Qt::Key_Plus);
  EXPECT_DOUBLE_EQ(view()->scale(), fitted * 1.25);
  press(Qt::Key_Minus);
  EXPECT_DOUBLE_EQ(view()->scale(), fitted);
  press(Qt::Key_1);
  EXPECT_DOUBLE_EQ(view()->scale(), 1);
  EXPECT_GT(view()->horizontalScrollBar()->maximum(), 0);
  press(Qt::Key_0);
  EXPECT_TRUE(view()->isFitted());
  EXPECT_EQ(view()->horizontalScrollBar()->maximum(), 0);
}

TEST_F(QuickLookPanelTest, TheWheelWithCtrlZoomsAroundThePointer) {
  panel_.showFiles({"/a.png"}, 0);
  ASSERT_TRUE(waitUntil([this] { return hasPicture(); }));
  press(Qt::Key_1);
  auto* bar = view()->horizontalScrollBar();
  bar->setValue(1000);
  const QPointF pointer(100, 50);
  QWheelEvent wheel(pointer, view()->viewport()->mapToGlobal(pointer), {}, {0, 120}, Qt::NoButton, Qt::ControlModifier,
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(view()->viewport(), &wheel);
  EXPECT_DOUBLE_EQ(view()->scale(), 1.25);
  EXPECT_EQ(bar->value(), 1275) << "the same point of the picture is under the pointer";
}

TEST_F(QuickLookPanelTest, TheScaleHasItsBounds) {
  panel_.showFiles({"/a.png"}, 0);
  ASSERT_TRUE(waitUntil([this] { return hasPicture(); }));
  for (int i = 0; i < 60; ++i) press(Qt::Key_Plus);
  EXPECT_DOUBLE_EQ(view()->scale(), 16);
  for (int i = 0; i < 120; ++i) press(Qt::Key_Minus);
  EXPECT_GT(view()->scale(), 0);
}

TEST_F(QuickLookPanelTest, DraggingMovesWhatIsLargerThanItsRoom) {
  panel_.showFiles({"/a.png"}, 0);
  ASSERT_TRUE(waitUntil([this] { return hasPicture(); }));
  press(Qt::Key_1);
  view()->horizontalScrollBar()->setValue(500);
  auto* viewport = view()->viewport();
  QTest::mousePress(viewport, Qt::LeftButton, {}, {200, 200});
  QMouseEvent move(QEvent::MouseMove, QPointF(150, 200), viewport->mapToGlobal(QPointF(150, 200)), Qt::LeftButton,
                   Qt::LeftButton, {});
  QCoreApplication::sendEvent(viewport, &move);
  QTest::mouseRelease(viewport, Qt::LeftButton, {}, {150, 200});
  EXPECT_EQ(view()->horizontalScrollBar()->value(), 550);
}

TEST(QuickLookDecoding, GoingOnDoesNotWaitForThePictureThatIsBeingRead) {
  QSemaphore turns;
  std::atomic_int begun = 0;
  QuickLookPanel panel(
      [&](const std::string& path) {
        ++begun;
        turns.acquire();
        return path == "/c.png" ? plain(30, 10) : plain(10, 10);
      },
      nullptr);
  panel.showFiles({"/a.png", "/b.png", "/c.png"}, 0);
  ASSERT_TRUE(waitUntil([&] { return begun == 1; }));
  QTest::keyClick(&panel, Qt::Key_Right);
  QTest::keyClick(&panel, Qt::Key_Right);
  turns.release(2);
  const auto* view = panel.findChild<PictureView*>();
  EXPECT_TRUE(waitUntil([&] { return view->picture().width() == 30; }));
  EXPECT_EQ(begun, 2) << "what was passed by is not read";
}

class QuickLookTest : public Testing::SheetFixture {
 protected:
  QuickLookTest() { store_->setFilter({Filter::All{}}); }

  [[nodiscard]] std::vector<std::string> shown() const {
    std::vector<std::string> names;
    for (const auto& path : panel_->files()) names.push_back(path.substr(path.rfind('/') + 1));
    return names;
  }
  QuickLookPanel* panel_ = makeQuickLookPanel(*store_, &window_);
};

TEST_F(QuickLookTest, ShowsTheSelectionFromItsFirst) {
  const auto a = add({.name = "a.png", .daysAgo = 1});
  add({.name = "b.png", .daysAgo = 2});
  const auto c = add({.name = "c.png", .daysAgo = 3});
  store_->setSelection({a->id, c->id});
  quickLook(*store_, *panel_);
  EXPECT_THAT(shown(), ::testing::ElementsAre("a.png", "c.png"));
  EXPECT_EQ(panel_->current(), *store_->selection().begin() == a->id ? 0U : 1U);
  quickLook(*store_, *panel_);
  EXPECT_FALSE(panel_->isVisible());
}

TEST_F(QuickLookTest, WithoutASelectionItShowsAllThatTheGalleryShows) {
  add({.name = "a.png", .daysAgo = 1});
  add({.name = "b.png", .daysAgo = 2});
  quickLook(*store_, *panel_);
  EXPECT_EQ(panel_->files().size(), 2U);
  EXPECT_EQ(panel_->current(), 0U);
}

TEST_F(QuickLookTest, ASelectionThatTheFilterHidesLeavesAllThatTheGalleryShowsFromTheFirst) {
  add({.name = "a.png", .daysAgo = 1, .filed = false});
  add({.name = "b.png", .daysAgo = 2, .filed = false});
  const auto hidden = add({.name = "hidden.png", .daysAgo = 3});
  store_->setFilter({Filter::Inbox{}});
  store_->setSelection({hidden->id});
  quickLook(*store_, *panel_);
  EXPECT_THAT(shown(), ::testing::ElementsAre("a.png", "b.png"));
  EXPECT_EQ(panel_->current(), 0U);
}

TEST_F(QuickLookTest, ACatalogueThatChangesUnderItLeavesItsListAlone) {
  const auto gone = add({.name = "a.png", .daysAgo = 1});
  add({.name = "b.png", .daysAgo = 2});
  quickLook(*store_, *panel_);
  store_->forget({gone});
  EXPECT_THAT(shown(), ::testing::ElementsAre("a.png", "b.png"));
  QTest::keyClick(panel_, Qt::Key_Right);
  EXPECT_EQ(panel_->current(), 1U);
  quickLook(*store_, *panel_);
  EXPECT_TRUE(panel_->isVisible()) << "another list takes the place of the one that is shown";
  EXPECT_THAT(shown(), ::testing::ElementsAre("b.png"));
}

TEST_F(QuickLookTest, AShotThatTurnsOutToBeSensitiveIsNotShownOn) {
  const auto shot = add({.name = "a.png"});
  quickLook(*store_, *panel_);
  ASSERT_TRUE(panel_->isVisible());
  store_->database().setOCR(shot->id, "password: abcdef", {"Password"});
  store_->reload();
  EXPECT_FALSE(panel_->isVisible());
  EXPECT_THAT(panel_->files(), ::testing::IsEmpty());
  EXPECT_EQ(panel_->windowTitle(), QStringLiteral("Quick Look"));
}

TEST_F(QuickLookTest, WithoutShotsNothingHappens) {
  quickLook(*store_, *panel_);
  EXPECT_FALSE(panel_->isVisible());
}

TEST_F(QuickLookTest, AProtectedShotIsShownOnceTheOwnerHasAuthenticatedAndUntilItIsLockedAgain) {
  add({.name = "a.png", .sensitive = {"Password"}});
  quickLook(*store_, *panel_);
  EXPECT_FALSE(panel_->isVisible());
  owner_->decide(true);
  EXPECT_TRUE(panel_->isVisible());
  store_->setApplicationActive(false);
  EXPECT_FALSE(panel_->isVisible());
  EXPECT_TRUE(panel_->files().empty());
}

TEST_F(QuickLookTest, ARefusedOwnerSeesNothing) {
  add({.name = "a.png", .sensitive = {"Password"}});
  quickLook(*store_, *panel_);
  owner_->decide(false);
  EXPECT_FALSE(panel_->isVisible());
}

TEST_F(QuickLookTest, Pictures) {
  addFile("Halden ground site.png", 5);
  add({.name = "Halden ground site.png"});
  add({.name = "another.png", .daysAgo = 1});
  quickLook(*store_, *panel_);
  ASSERT_TRUE(waitUntil([this] { return !panel_->findChild<PictureView*>()->picture().isNull(); }));
  keepPictures(*panel_, QStringLiteral("quick-look"));
}

}  // namespace

}  // namespace Nimbrel
