#include "Views/Editor/MarkList.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Kind = Annotation::Kind;

Annotation markOf(Kind kind, QPointF start = {0.1, 0.1}, QPointF end = {0.4, 0.3}) {
  Annotation mark;
  mark.kind = kind;
  mark.start = start;
  mark.end = end;
  return mark;
}

std::vector<Kind> kindsOf(const MarkList& marks) {
  std::vector<Kind> kinds;
  for (const auto& item : marks.items()) kinds.push_back(item.kind);
  return kinds;
}

TEST(MarkListTest, ASecondCropTakesThePlaceOfTheFirst) {
  MarkList marks;
  marks.add(markOf(Kind::crop));
  marks.add(markOf(Kind::box));
  const auto second = markOf(Kind::crop, {0.2, 0.2}, {0.9, 0.9});
  marks.add(second);
  EXPECT_THAT(kindsOf(marks), ElementsAre(Kind::box, Kind::crop));
  EXPECT_EQ(marks.items().back(), second);
}

TEST(MarkListTest, UndoTakesTheLastAndRedoPutsItBack) {
  MarkList marks;
  marks.add(markOf(Kind::box));
  marks.add(markOf(Kind::arrow));
  marks.undo();
  EXPECT_THAT(kindsOf(marks), ElementsAre(Kind::box));
  marks.redo();
  EXPECT_THAT(kindsOf(marks), ElementsAre(Kind::box, Kind::arrow));
  marks.redo();
  EXPECT_THAT(kindsOf(marks), ElementsAre(Kind::box, Kind::arrow));
}

TEST(MarkListTest, ANewMarkLeavesNothingToPutBack) {
  MarkList marks;
  marks.add(markOf(Kind::box));
  marks.undo();
  marks.add(markOf(Kind::arrow));
  marks.redo();
  EXPECT_THAT(kindsOf(marks), ElementsAre(Kind::arrow));
}

TEST(MarkListTest, WhatWasClearedComesBackInOneStep) {
  MarkList marks;
  for (const auto kind : {Kind::box, Kind::arrow, Kind::step}) marks.add(markOf(kind));
  marks.undo();
  marks.clear();
  EXPECT_TRUE(marks.isEmpty());
  marks.redo();
  EXPECT_THAT(kindsOf(marks), ElementsAre(Kind::box, Kind::arrow));
  marks.redo();
  EXPECT_THAT(kindsOf(marks), ElementsAre(Kind::box, Kind::arrow, Kind::step));
}

TEST(MarkListTest, WithoutMarksNoCommandDoesAnything) {
  MarkList marks;
  marks.undo();
  marks.clear();
  marks.redo();
  marks.nudge({1, 0}, {100, 100});
  EXPECT_THAT(marks.items(), IsEmpty());
}

TEST(MarkListTest, ARectangleIsCoveredOnce) {
  MarkList marks;
  marks.addRedaction({0.1, 0.2, 0.3, 0.05});
  marks.addRedaction({0.1, 0.2, 0.3, 0.05});
  ASSERT_THAT(marks.items(), SizeIs(1));
  const auto& mark = marks.items().front();
  EXPECT_EQ(mark.kind, Kind::redact);
  EXPECT_EQ(mark.start, QPointF(0.1, 0.2));
  EXPECT_EQ(mark.end, QPointF(0.4, 0.25));
  EXPECT_EQ(mark.colorIndex, 4);
  EXPECT_EQ(mark.number, 0);
  EXPECT_EQ(mark.text, "");
}

TEST(MarkListTest, ABoxOfTheSameRectangleCoversNothing) {
  MarkList marks;
  marks.add(markOf(Kind::box, {0.1, 0.2}, {0.4, 0.25}));
  marks.addRedaction({0.1, 0.2, 0.3, 0.05});
  EXPECT_THAT(kindsOf(marks), ElementsAre(Kind::box, Kind::redact));
}

TEST(MarkListTest, ANudgeMovesTheLastMarkByPixelsOfThePicture) {
  MarkList marks;
  const auto first = markOf(Kind::box);
  marks.add(first);
  marks.add(markOf(Kind::box, {0.5, 0.5}, {0.75, 0.75}));
  marks.nudge({-10, 1}, {100, 50});
  EXPECT_EQ(marks.items().front(), first);
  EXPECT_EQ(marks.items().back().start, QPointF(0.4, 0.52));
  EXPECT_EQ(marks.items().back().end, QPointF(0.65, 0.77));
}

TEST(MarkListTest, ANudgeStopsAtTheEdgesAndKeepsTheShape) {
  MarkList marks;
  marks.add(markOf(Kind::arrow, {0.95, 0.02}, {0.5, 0.1}));
  marks.nudge({10, -10}, {100, 100});
  EXPECT_EQ(marks.items().back().start, QPointF(1, 0));
  EXPECT_NEAR(marks.items().back().end.x(), 0.55, 1e-12);
  EXPECT_NEAR(marks.items().back().end.y(), 0.08, 1e-12);
}

TEST(MarkListTest, NudgesAndEditsAreNoSteps) {
  MarkList marks;
  marks.add(markOf(Kind::box));
  marks.add(markOf(Kind::label));
  marks.undo();
  marks.redo();
  marks.nudge({1, 1}, {100, 100});
  marks.setText(marks.items().back().id, "other words");
  EXPECT_EQ(marks.items().back().text, "other words");
  marks.undo();
  EXPECT_THAT(kindsOf(marks), ElementsAre(Kind::box));
}

TEST(MarkListTest, AnEditOfNoMarkChangesNothing) {
  MarkList marks;
  marks.add(markOf(Kind::label));
  marks.setText(QUuid::createUuid(), "lost");
  EXPECT_EQ(marks.items().back().text, "");
}

}  // namespace
}  // namespace Nimbrel
