#include "Screencapture/AreaSelection.h"

#include <gtest/gtest.h>

namespace Nimbrel::Screencapture {

namespace {

using Subject = CaptureRequest::Subject;

const StackedWindow editor{7, QRect(100, 100, 400, 300), true};
const StackedWindow atTheSide{8, QRect(-50, 500, 200, 100), true};

class AreaSelectionTest : public ::testing::Test {
 protected:
  void drag(QPoint from, QPoint to) {
    selection_.movePointer(from);
    selection_.press();
    selection_.movePointer(to);
  }

  DesktopLayout layout_{QRect(0, 0, 1000, 800), {{"only", QRect(0, 0, 1000, 800), true}}, {editor, atTheSide}};
  AreaSelection selection_{layout_, Subject::selection, {}};
  AreaSelection windows_{layout_, Subject::window, {}};
};

TEST_F(AreaSelectionTest, DraggingSelectsWhatLiesBetween) {
  drag({600, 200}, {901, 401});
  EXPECT_EQ(selection_.area(), QRect(600, 200, 301, 201));
  EXPECT_EQ(selection_.release(), (ChosenArea{QRect(600, 200, 301, 201), {}}));
}

TEST_F(AreaSelectionTest, AnyDirectionWillDo) {
  drag({901, 401}, {600, 200});
  EXPECT_EQ(selection_.area(), QRect(600, 200, 301, 201));
  selection_.movePointer({920, 380});
  EXPECT_EQ(selection_.area(), QRect(901, 380, 19, 21));
}

TEST_F(AreaSelectionTest, TheWindowUnderThePointerIsProposedAndTakenByAClick) {
  selection_.movePointer({150, 150});
  EXPECT_EQ(selection_.area(), editor.area);
  selection_.press();
  selection_.movePointer({153, 154});
  EXPECT_EQ(selection_.area(), editor.area) << "a hand may tremble";
  EXPECT_EQ(selection_.release(), (ChosenArea{editor.area, {}}));
}

TEST_F(AreaSelectionTest, WhatIsBeyondTheScreenIsNotSelected) {
  selection_.movePointer({10, 550});
  EXPECT_EQ(selection_.take()->area, QRect(0, 500, 150, 100));
}

TEST_F(AreaSelectionTest, AClickOnNothingTakesNothing) {
  selection_.movePointer({800, 700});
  EXPECT_TRUE(selection_.area().isEmpty());
  selection_.press();
  EXPECT_FALSE(selection_.release());
  EXPECT_FALSE(selection_.take());
  drag({800, 700}, {900, 790});
  EXPECT_EQ(selection_.release()->area, QRect(800, 700, 100, 90)) << "and spoils nothing";
}

TEST_F(AreaSelectionTest, ReleasingWhatWasNotPressedTakesNothing) {
  selection_.movePointer({150, 150});
  EXPECT_FALSE(selection_.release());
}

TEST_F(AreaSelectionTest, BothCornersSnap) {
  drag({97, 103}, {503, 396});
  EXPECT_EQ(selection_.area(), editor.area);
}

TEST_F(AreaSelectionTest, ExactEdgesDoNotSnap) {
  selection_.setExact(true);
  drag({97, 103}, {503, 396});
  EXPECT_EQ(selection_.area(), QRect(97, 103, 406, 293));
  selection_.setExact(false);
  selection_.movePointer({502, 396});
  EXPECT_EQ(selection_.area(), QRect(97, 103, 403, 297)) << "the first corner stays";
}

TEST_F(AreaSelectionTest, TheLastPixelsCanBeSelected) {
  drag({900, 700}, {999, 799});
  EXPECT_EQ(selection_.area(), QRect(900, 700, 100, 100));
  selection_.setExact(true);
  selection_.movePointer({998, 798});
  EXPECT_EQ(selection_.area(), QRect(900, 700, 98, 98));
  selection_.movePointer({999, 799});
  EXPECT_EQ(selection_.area(), QRect(900, 700, 100, 100));
}

TEST_F(AreaSelectionTest, IsNeverEmptyWhileDragged) {
  drag({600, 200}, {700, 200});
  EXPECT_EQ(selection_.area(), QRect(600, 200, 100, 1));
  selection_.movePointer({600, 200});
  EXPECT_EQ(selection_.area(), QRect(600, 200, 1, 1)) << "what was dragged is no click any more";
}

TEST_F(AreaSelectionTest, OneEdgeDoesNotCatchBothSides) {
  drag({498, 200}, {503, 300});
  EXPECT_EQ(selection_.area(), QRect(500, 200, 3, 100));
}

TEST_F(AreaSelectionTest, IsCarriedWhileWanted) {
  drag({600, 200}, {700, 300});
  selection_.setCarried(true);
  selection_.movePointer({720, 290});
  EXPECT_EQ(selection_.area(), QRect(620, 190, 100, 100));
  selection_.setCarried(false);
  selection_.movePointer({740, 290});
  EXPECT_EQ(selection_.area(), QRect(620, 190, 120, 100)) << "its first corner is where it was carried";
}

TEST_F(AreaSelectionTest, IsNotCarriedOffTheScreen) {
  drag({800, 600}, {900, 700});
  selection_.setCarried(true);
  selection_.movePointer({999, 799});
  EXPECT_EQ(selection_.area(), QRect(899, 699, 100, 100));
  selection_.movePointer({989, 789});
  selection_.movePointer({999, 799});
  selection_.movePointer({999, 799});
  EXPECT_EQ(selection_.area().size(), QSize(100, 100));
  EXPECT_TRUE(layout_.bounds.contains(selection_.area()));
}

TEST_F(AreaSelectionTest, StepsMoveTheFreeCorner) {
  drag({600, 200}, {700, 300});
  selection_.nudge({1, 0});
  selection_.nudge({0, -10});
  EXPECT_EQ(selection_.area(), QRect(600, 200, 101, 90));
  selection_.movePointer({710, 300});
  EXPECT_EQ(selection_.area(), QRect(600, 200, 111, 90)) << "and the pointer keeps the distance";
}

TEST_F(AreaSelectionTest, StepsLeaveAnEdgeThatCaught) {
  drag({600, 200}, {503, 350});
  ASSERT_EQ(selection_.area().left(), 500);
  selection_.nudge({1, 0});
  EXPECT_EQ(selection_.area().left(), 501);
}

TEST_F(AreaSelectionTest, StepsMoveWhatIsProposedAndKeepIt) {
  selection_.movePointer({150, 150});
  selection_.nudge({10, 0});
  selection_.nudge({0, 1});
  selection_.movePointer({800, 700});
  EXPECT_EQ(selection_.area(), editor.area.translated(10, 1));
  EXPECT_EQ(selection_.take(), (ChosenArea{editor.area.translated(10, 1), {}}));
  for (int i = 0; i < 100; ++i) selection_.nudge({-10, 0});
  EXPECT_EQ(selection_.area().left(), 0) << "not off the screen";
  drag({800, 700}, {900, 750});
  EXPECT_EQ(selection_.area(), QRect(800, 700, 100, 50)) << "until something is dragged";
}

TEST_F(AreaSelectionTest, StepsWithNothingProposedDoNothing) {
  selection_.movePointer({800, 700});
  selection_.nudge({1, 1});
  EXPECT_TRUE(selection_.area().isEmpty());
}

TEST_F(AreaSelectionTest, WhereWindowsAreWantedNothingElseIsTaken) {
  windows_.movePointer({150, 150});
  EXPECT_EQ(windows_.proposedWindow(), editor);
  windows_.press();
  windows_.movePointer({800, 700});
  windows_.nudge({1, 1});
  EXPECT_EQ(windows_.release(), (ChosenArea{editor.area, editor})) << "the one that was pressed";
  windows_.movePointer({800, 700});
  EXPECT_FALSE(windows_.take());
  windows_.press();
  EXPECT_FALSE(windows_.release());
}

TEST_F(AreaSelectionTest, AWindowIsTakenAsAWhole) {
  windows_.movePointer({10, 550});
  EXPECT_EQ(windows_.area(), QRect(0, 500, 150, 100)) << "what is seen";
  EXPECT_EQ(windows_.take(), (ChosenArea{atTheSide.area, atTheSide}));
}

}  // namespace

}  // namespace Nimbrel::Screencapture
