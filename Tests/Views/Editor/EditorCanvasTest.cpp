#include "Views/Editor/EditorCanvas.h"

#include "Support/Pictures.h"
#include "Views/Editor/EditorFixture.h"

#include <QApplication>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;
using Kind = Annotation::Kind;

class EditorCanvasTest : public Testing::EditorFixture {
 protected:
  [[nodiscard]] EditorCanvas& canvas() const { return sheet_->canvas(); }
  [[nodiscard]] double zoom() const { return canvas().canvasGeometry().zoom; }
  void turnWheel(QPointF point, int notches, Qt::KeyboardModifiers modifiers) const {
    const auto place = onCanvas(point);
    auto* viewport = canvas().viewport();
    QWheelEvent event(place, viewport->mapToGlobal(place), {}, {0, 120 * notches}, Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &event);
  }
  /// What is on the screen at a point of the picture.
  [[nodiscard]] QColor colorAt(QPointF point) const {
    const auto place = onCanvas(point);
    return canvas().viewport()->grab().toImage().pixelColor(static_cast<int>(place.x()), static_cast<int>(place.y()));
  }
};

TEST_F(EditorCanvasTest, FitsThePictureIntoItsRoom) {
  openSheet();
  const auto geometry = canvas().canvasGeometry();
  EXPECT_GE(canvas().width(), 640);
  EXPECT_GE(canvas().height(), 400);
  EXPECT_NEAR(geometry.fitted().width() / geometry.fitted().height(), 1.6, 1e-9);
  EXPECT_EQ(geometry.zoom, 1);
}

TEST_F(EditorCanvasTest, TheWheelZoomsAtThePointer) {
  openSheet();
  const auto before = onCanvas({0.3, 0.6});
  turnWheel({0.3, 0.6}, 3, Qt::ControlModifier);
  EXPECT_NEAR(zoom(), 1.25 * 1.25 * 1.25, 1e-9);
  const auto after = onCanvas({0.3, 0.6});
  EXPECT_NEAR(after.x(), before.x(), 1);
  EXPECT_NEAR(after.y(), before.y(), 1);
}

TEST_F(EditorCanvasTest, KeysZoomAndFitAgain) {
  openSheet();
  press(Qt::Key_Plus, Qt::ControlModifier);
  press(Qt::Key_Equal, Qt::ControlModifier);
  EXPECT_NEAR(zoom(), 1.25 * 1.25, 1e-9);
  press(Qt::Key_Minus, Qt::ControlModifier);
  EXPECT_NEAR(zoom(), 1.25, 1e-9);
  press(Qt::Key_1, Qt::ControlModifier);
  EXPECT_NEAR(canvas().canvasGeometry().shown().width(), 400 / canvas().devicePixelRatioF(), 1e-9);
  press(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(zoom(), 1);
}

TEST_F(EditorCanvasTest, APinchZooms) {
  openSheet();
  auto* viewport = canvas().viewport();
  const QPointF place(300, 200);
  QNativeGestureEvent event(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, place,
                            viewport->mapTo(sheet_, place), viewport->mapToGlobal(place), 0.5, {});
  QApplication::sendEvent(viewport, &event);
  EXPECT_NEAR(zoom(), 1.5, 1e-9);
}

TEST_F(EditorCanvasTest, MarksLieWhereTheyWereDrawnAtAnyZoom) {
  openSheet();
  choose("Box");
  turnWheel({0.5, 0.5}, 4, Qt::ControlModifier);
  drag({0.45, 0.45}, {0.55, 0.5});
  ASSERT_THAT(items(), SizeIs(1));
  EXPECT_NEAR(items().front().start.x(), 0.45, 1e-9);
  EXPECT_NEAR(items().front().end.y(), 0.5, 1e-9);
  const auto fitted = canvas().canvasGeometry().fitted();
  press(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(canvas().canvasGeometry().fitted(), fitted);
}

TEST_F(EditorCanvasTest, TheWheelAndTheMiddleButtonMoveThePicture) {
  openSheet();
  turnWheel({0.5, 0.5}, 6, Qt::ControlModifier);
  const auto* bar = canvas().verticalScrollBar();
  const auto start = bar->value();
  turnWheel({0.5, 0.5}, -1, Qt::NoModifier);
  EXPECT_GT(bar->value(), start);
  const auto scrolled = bar->value();
  const auto grabbed = onCanvas({0.5, 0.5});
  moveTo(QEvent::MouseButtonPress, {0.5, 0.5}, Qt::MiddleButton);
  moveTo(QEvent::MouseMove, {0.5, 0.55}, Qt::MiddleButton);
  moveTo(QEvent::MouseButtonRelease, {0.5, 0.55}, Qt::MiddleButton);
  EXPECT_LT(bar->value(), scrolled);
  EXPECT_GT(onCanvas({0.5, 0.5}).y(), grabbed.y());
  EXPECT_THAT(items(), IsEmpty());
}

TEST_F(EditorCanvasTest, LessThanTwoPointsAreAClick) {
  openSheet();
  choose("Step");
  const auto width = canvas().canvasGeometry().fitted().width();
  drag({0.5, 0.5}, {0.5 + 1.5 / width, 0.5});
  EXPECT_THAT(items(), SizeIs(1));
  drag({0.5, 0.5}, {0.5 + 2.5 / width, 0.5});
  EXPECT_THAT(items(), SizeIs(1));
}

TEST_F(EditorCanvasTest, GesturesBeginOnThePicture) {
  openSheet();
  choose("Box");
  drag({-0.02, 0.5}, {0.5, 0.9});
  EXPECT_THAT(items(), IsEmpty());
  drag({0.5, 0.5}, {1.4, 1.6});
  ASSERT_THAT(items(), SizeIs(1));
  EXPECT_EQ(items().front().end, QPointF(1, 1));
}

TEST_F(EditorCanvasTest, EscapeEndsADragAndKeepsTheSheet) {
  openSheet();
  choose("Box");
  canvas().setFocus();
  moveTo(QEvent::MouseButtonPress, {0.2, 0.2});
  moveTo(QEvent::MouseMove, {0.6, 0.6});
  EXPECT_TRUE(canvas().isDragging());
  press(Qt::Key_Escape);
  EXPECT_FALSE(canvas().isDragging());
  moveTo(QEvent::MouseButtonRelease, {0.6, 0.6});
  EXPECT_THAT(items(), IsEmpty());
  EXPECT_TRUE(sheet_->isVisible());
}

TEST_F(EditorCanvasTest, ABarIsSeenAsItIsDraggedAndWhenItIsPlaced) {
  openSheet();
  choose("Black Bar");
  const auto bare = colorAt({0.4, 0.4});
  moveTo(QEvent::MouseButtonPress, {0.2, 0.2});
  moveTo(QEvent::MouseMove, {0.6, 0.6});
  const auto dragged = colorAt({0.4, 0.4});
  EXPECT_NEAR(dragged.red(), bare.red() / 4, 2);
  EXPECT_NEAR(dragged.blue(), bare.blue() / 4, 2);
  moveTo(QEvent::MouseButtonRelease, {0.6, 0.6});
  EXPECT_EQ(colorAt({0.4, 0.4}), QColor(Qt::black));
  push("editor.undo");
  EXPECT_EQ(colorAt({0.4, 0.4}), bare);
}

TEST_F(EditorCanvasTest, OnePixelAndAVeryLongStripCanBeMarked) {
  for (const QSize size : {QSize(1, 1), QSize(30'000, 100)}) {
    const auto name = std::to_string(size.width()) + ".png";
    Testing::writePicture(home_.desktop(name), size.width(), size.height());
    shot_ = add({.name = name});
    openSheet();
    choose("Black Bar");
    drag({0.1, 0.1}, {0.9, 0.9});
    EXPECT_THAT(kinds(), ::testing::ElementsAre(Kind::redact));
    EXPECT_EQ(colorAt({0.5, 0.5}), QColor(Qt::black));
    sheet_->close();
    ASSERT_TRUE(awaitClosed());
  }
}

}  // namespace
}  // namespace Nimbrel
