#include "Views/Window/Columns.h"

#include "Views/Window/WindowFixture.h"

#include <QMouseEvent>
#include <QToolButton>

namespace Nimbrel {
namespace {

class ColumnsTest : public Testing::WindowFixture {
 protected:
  ColumnsTest() { openWindow(); }

  [[nodiscard]] int widthOf(const char* name) const { return find<QWidget>(name)->width(); }

  /// Presses the middle of a divider.
  void grab(const char* name) {
    divider_ = find<ColumnDivider>(name);
    start_ = divider_->mapToGlobal(divider_->rect().center());
    send(QEvent::MouseButtonPress, 0, Qt::LeftButton);
  }
  /// Drags to a place so far from where it was pressed.
  void dragTo(int translation) { send(QEvent::MouseMove, translation, Qt::NoButton); }
  void release(int translation) { send(QEvent::MouseButtonRelease, translation, Qt::LeftButton); }

  ColumnDivider* divider_ = nullptr;

 private:
  void send(QEvent::Type type, int translation, Qt::MouseButton button) {
    const auto place = start_ + QPoint(translation, 0);
    const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, divider_->mapFromGlobal(place), place, button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(divider_, &event);
  }

  QPoint start_;
};

TEST_F(ColumnsTest, TheWindowOpensAtItsDefaultSizeAndIsNeverSmallerThanItsLeast) {
  EXPECT_EQ(window_->size(), QSize(1120, 720));
  EXPECT_EQ(window_->minimumSize(), QSize(1000, 600));
}

TEST_F(ColumnsTest, StandSideBySideAtTheirWidths) {
  EXPECT_EQ(widthOf("sidebar"), 220);
  EXPECT_EQ(widthOf("details"), 300);
  EXPECT_EQ(find<QWidget>("content")->x(), 221);
  EXPECT_EQ(widthOf("content"), 1120 - 221 - 301);
  EXPECT_EQ(find<QWidget>("sidebar")->height(), find<QWidget>("details")->height());
}

TEST_F(ColumnsTest, OnlyTheContentGrowsWithTheWindow) {
  window_->resize(1400, 800);
  settle();
  EXPECT_EQ(widthOf("sidebar"), 220);
  EXPECT_EQ(widthOf("details"), 300);
  EXPECT_EQ(widthOf("content"), 1400 - 221 - 301);
}

TEST_F(ColumnsTest, AnEarlierDetailsWidthIsKept) {
  store_->settings().inspectorWidth.set(350);
  EXPECT_EQ(widthOf("details"), 350);
}

TEST_F(ColumnsTest, DividersAreNinePixelsWideAndShowTheResizeCursor) {
  for (const auto* name : {"sidebarDivider", "inspectorDivider"}) {
    const auto* divider = find<ColumnDivider>(name);
    EXPECT_EQ(divider->width(), 9);
    EXPECT_EQ(divider->cursor().shape(), Qt::SizeHorCursor);
  }
  EXPECT_EQ(find<QWidget>("sidebarDivider")->geometry().center().x(), 220);
  EXPECT_EQ(find<QWidget>("inspectorDivider")->geometry().center().x(), 1120 - 301);
}

TEST_F(ColumnsTest, TheSidebarFollowsThePointerAtOnce) {
  grab("sidebarDivider");
  dragTo(30);
  EXPECT_EQ(widthOf("sidebar"), 250);
  EXPECT_EQ(find<QWidget>("content")->x(), 251);
  dragTo(-10);
  EXPECT_EQ(widthOf("sidebar"), 210);
}

TEST_F(ColumnsTest, TheSidebarStopsAtItsBoundsAndRejoinsThePointer) {
  grab("sidebarDivider");
  dragTo(-150);
  EXPECT_EQ(widthOf("sidebar"), 180);
  dragTo(-60);
  EXPECT_EQ(widthOf("sidebar"), 180) << "the pointer is still left of the least width";
  dragTo(-20);
  EXPECT_EQ(widthOf("sidebar"), 200);
  dragTo(500);
  EXPECT_EQ(widthOf("sidebar"), 300);
}

TEST_F(ColumnsTest, ASecondDragStartsFromWhereTheFirstEnded) {
  grab("sidebarDivider");
  dragTo(-150);
  release(-150);
  grab("sidebarDivider");
  dragTo(20);
  EXPECT_EQ(widthOf("sidebar"), 200);
}

TEST_F(ColumnsTest, TheDetailsGrowToTheLeftWithinTheirBoundsAndAreKept) {
  grab("inspectorDivider");
  dragTo(-40);
  EXPECT_EQ(widthOf("details"), 340);
  EXPECT_EQ(store_->settings().inspectorWidth(), 340);
  dragTo(-400);
  EXPECT_EQ(widthOf("details"), 460);
  dragTo(400);
  EXPECT_EQ(widthOf("details"), 240);
}

TEST_F(ColumnsTest, TheContentKeepsItsLeastWidthWhereAllIsWide) {
  window_->resize(1000, 600);
  settle();
  grab("sidebarDivider");
  dragTo(100);
  release(100);
  grab("inspectorDivider");
  dragTo(-400);
  EXPECT_EQ(widthOf("content"), 280);
  EXPECT_EQ(store_->settings().inspectorWidth(), 460);
}

TEST_F(ColumnsTest, MovingWithoutAButtonDragsNothing) {
  divider_ = find<ColumnDivider>("sidebarDivider");
  QTest::mouseMove(divider_, QPoint(4, 10));
  EXPECT_EQ(widthOf("sidebar"), 220);
}

TEST_F(ColumnsTest, TheSidebarButtonHidesTheColumnAndItsDivider) {
  auto* button = find<QToolButton>("sidebarButton");
  EXPECT_EQ(button->accessibleName(), QStringLiteral("Hide Sidebar"));
  EXPECT_EQ(button->toolTip(), QStringLiteral("Hide Sidebar"));
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_FALSE(find<QWidget>("sidebar")->isVisible());
  EXPECT_FALSE(find<QWidget>("sidebarDivider")->isVisible());
  EXPECT_EQ(find<QWidget>("content")->x(), 0);
  EXPECT_EQ(button->accessibleName(), QStringLiteral("Show Sidebar"));
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_TRUE(find<QWidget>("sidebar")->isVisible());
  EXPECT_EQ(find<QWidget>("content")->x(), 221);
}

TEST_F(ColumnsTest, ViewOptionsHideTheDetails) {
  auto* details = action("viewOptions.details");
  EXPECT_EQ(details->text(), QStringLiteral("Hide Details"));
  details->trigger();
  EXPECT_FALSE(find<QWidget>("details")->isVisible());
  EXPECT_EQ(widthOf("content"), 1120 - 221);
  EXPECT_EQ(details->text(), QStringLiteral("Show Details"));
}

TEST_F(ColumnsTest, AreMirroredForScriptsFromRightToLeft) {
  window_->setLayoutDirection(Qt::RightToLeft);
  window_->resize(1120, 721);
  settle();
  EXPECT_EQ(find<QWidget>("sidebar")->x(), 1120 - 220);
  EXPECT_EQ(find<QWidget>("details")->x(), 0);
  grab("sidebarDivider");
  dragTo(-30);
  EXPECT_EQ(widthOf("sidebar"), 250);
}

}  // namespace
}  // namespace Nimbrel
