#include "Model/Annotation.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;

Annotation mark() {
  return {.id = QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11),
          .kind = Annotation::Kind::label,
          .start = {0.75, 0.25},
          .end = {0.5, 0.625},
          .colorIndex = 2,
          .number = 3,
          .text = "Note"};
}

TEST(Annotation, KindsHaveRawValuesInTheirOrder) {
  std::vector<std::string_view> names;
  for (const auto kind : allAnnotationKinds) names.push_back(rawValue(kind));
  EXPECT_THAT(names, ElementsAre("redact", "blur", "box", "arrow", "highlight", "step", "label", "crop"));
}

TEST(Annotation, AKindIsFoundByItsRawValueAlone) {
  for (const auto kind : allAnnotationKinds) EXPECT_EQ(annotationKind(rawValue(kind)), kind);
  for (const auto* name : {"", "Redact", "redact ", "ellipse"}) EXPECT_EQ(annotationKind(name), std::nullopt) << name;
}

TEST(Annotation, StepsAndLabelsLieAtOnePoint) {
  std::vector<Annotation::Kind> found;
  std::ranges::copy_if(allAnnotationKinds, std::back_inserter(found), liesAtOnePoint);
  EXPECT_THAT(found, ElementsAre(Annotation::Kind::step, Annotation::Kind::label));
}

TEST(Annotation, EachHasAnIdOfItsOwnWhichItsCopyKeeps) {
  const Annotation one;
  const Annotation other;
  const auto copy = one;
  EXPECT_FALSE(one.id.isNull());
  EXPECT_NE(one.id, other.id);
  EXPECT_EQ(copy.id, one.id);
}

TEST(Annotation, TheRectangleHoldsBothPointsWhicheverComesFirst) {
  auto dragged = mark();
  EXPECT_EQ(dragged.rect(), QRectF(0.5, 0.25, 0.25, 0.375));
  std::swap(dragged.start, dragged.end);
  EXPECT_EQ(dragged.rect(), QRectF(0.5, 0.25, 0.25, 0.375));
}

TEST(Annotation, MarksAreEqualWhenAllFieldsAre) {
  EXPECT_EQ(mark(), mark());
  EXPECT_EQ(qHash(mark(), 7), qHash(mark(), 7));
  std::vector<Annotation> others(9, mark());
  others[0].id = QUuid::createUuid();
  others[1].kind = Annotation::Kind::step;
  others[2].start.setX(0.76);
  others[3].start.setY(0.26);
  others[4].end.setX(0.51);
  others[5].end.setY(0.63);
  others[6].colorIndex = 3;
  others[7].number = 4;
  others[8].text = "Other";
  for (const auto& other : others) {
    EXPECT_NE(other, mark());
    EXPECT_NE(qHash(other, 7), qHash(mark(), 7));
  }
}

TEST(Annotation, MarksThatDifferInTheLastBitOfACoordinateAreTwo) {
  auto neighbour = mark();
  neighbour.start.setX(std::nextafter(0.75, 1));
  EXPECT_NE(neighbour, mark());
}

TEST(Annotation, BothZerosAreOneCoordinate) {
  auto one = mark();
  auto other = mark();
  one.start = {0.0, 0.0};
  other.start = {-0.0, -0.0};
  EXPECT_EQ(one, other);
  EXPECT_EQ(qHash(one), qHash(other));
}

TEST(InkColor, HasFiveInksInTheirOrder) {
  std::vector<std::string_view> names;
  for (const auto& ink : InkColor::all()) names.push_back(ink.name);
  EXPECT_THAT(names, ElementsAre("Red", "Yellow", "Blue", "White", "Black"));
}

TEST(InkColor, WindowsShowTheStandardColours) {
  std::vector<QColor> colours;
  for (const auto& ink : InkColor::all()) colours.push_back(ink.interfaceColor);
  EXPECT_THAT(colours,
              ElementsAre(QColor(Qt::red), QColor(Qt::yellow), QColor(Qt::blue), QColor(Qt::white), QColor(Qt::black)));
}

TEST(InkColor, PicturesShowColoursOfTheirOwn) {
  std::vector<QRgb> colours;
  for (const auto& ink : InkColor::all()) colours.push_back(ink.renderingColor.rgba());
  EXPECT_THAT(colours, ElementsAre(qRgb(230, 41, 41), qRgb(255, 204, 26), qRgb(26, 122, 242), qRgb(255, 255, 255),
                                   qRgb(0, 0, 0)));
}

TEST(InkColor, IndicesOutsideTheTableMeanItsEnds) {
  EXPECT_EQ(InkColor::at(2).name, "Blue");
  EXPECT_EQ(InkColor::at(4).name, "Black");
  for (const int index : {5, 9, std::numeric_limits<int>::max()}) EXPECT_EQ(InkColor::at(index).name, "Black");
  for (const int index : {-1, std::numeric_limits<int>::min()}) EXPECT_EQ(InkColor::at(index).name, "Red");
}

}  // namespace
}  // namespace Nimbrel
