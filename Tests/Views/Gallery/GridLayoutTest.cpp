#include "Views/Gallery/GridLayout.h"

#include "Views/Gallery/ScrollAnchor.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

constexpr GridMetrics metrics{
    .thumbSize = 100, .sectionTitleHeight = 18, .titleHeight = 14, .metaHeight = 13, .snippetHeight = 13};
constexpr int boxHeight = 66;
constexpr int plainHeight = boxHeight + 5 + 14 + 5 + 13;
constexpr int heightWithSnippet = plainHeight + 5 + 1 + 13;
constexpr int threeColumns = 16 + 3 * 100 + 2 * 14 + 16;
constexpr int firstTitleTop = 12;
constexpr int titleHeight = 18 + 2 * 6;
constexpr int firstRowTop = firstTitleTop + titleHeight + 8;

GridLayout layoutOf(const std::vector<GridSection>& sections, int width = threeColumns) {
  GridLayout layout;
  layout.setMetrics(metrics);
  layout.setWidth(width);
  layout.setSections(sections);
  return layout;
}

TEST(GridColumns, FillTheWidth) {
  EXPECT_EQ(GridLayout::columnsIn(threeColumns, 100), 3);
  EXPECT_EQ(GridLayout::columnsIn(threeColumns - 1, 100), 2);
  EXPECT_EQ(GridLayout::columnsIn(599, 178), 3);
}

TEST(GridColumns, AreOneForAWidthUnderEighteen) {
  for (const int width : {-5, 0, 17, 18}) EXPECT_EQ(GridLayout::columnsIn(width, 100), 1) << width;
}

TEST(GridColumns, AreOneForAWidthUnderAThumbnail) { EXPECT_EQ(GridLayout::columnsIn(90, 100), 1); }

TEST(GridLayout, ASizeThatNoGridCanBeMadeOfIsHeldWithinBounds) {
  constexpr std::array sections{GridSection{.cells = 5, .hasTitle = false}};
  for (const double size : {-14.0, 0.0, -1e300, 1e300, std::nan(""), HUGE_VAL}) {
    GridLayout layout;
    layout.setWidth(600);
    layout.setMetrics({.thumbSize = size});
    layout.setSections(sections);
    EXPECT_GE(GridLayout::columnsIn(600, size), 1) << size;
    EXPECT_GE(layout.boxSize().width(), 16) << size;
    EXPECT_LE(layout.boxSize().width(), 4096) << size;
    EXPECT_GT(layout.height(), 0) << size;
    EXPECT_EQ(layout.cellAt(layout.cell(4).center()), 4U) << size;
  }
}

TEST(GridLayout, CellsStandBesideAndBelowEachOther) {
  const auto layout = layoutOf({{.cells = 5}});
  EXPECT_EQ(layout.title(0), QRect(0, firstTitleTop, threeColumns, titleHeight));
  EXPECT_EQ(layout.cell(0), QRect(16, firstRowTop, 100, plainHeight));
  EXPECT_EQ(layout.cell(2), QRect(16 + 2 * 114, firstRowTop, 100, plainHeight));
  EXPECT_EQ(layout.cell(3), QRect(16, firstRowTop + plainHeight + 14, 100, plainHeight));
  EXPECT_EQ(layout.height(), layout.cell(4).bottom() + 1 + 12);
}

TEST(GridLayout, TheBoxIsTwoThirdsAsHighAsWide) {
  GridLayout layout;
  layout.setMetrics({.thumbSize = 190});
  EXPECT_EQ(layout.boxSize(), QSize(190, 125));
}

TEST(GridLayout, ASectionBeginsARowOfItsOwn) {
  const auto layout = layoutOf({{.cells = 1}, {.cells = 2}});
  const int secondTitle = firstRowTop + plainHeight + 18;
  EXPECT_EQ(layout.title(1).top(), secondTitle);
  EXPECT_EQ(layout.cell(1).topLeft(), QPoint(16, secondTitle + titleHeight + 8));
  EXPECT_EQ(layout.cell(2).left(), 16 + 114);
}

TEST(GridLayout, ASectionWithoutATitleBeginsWithItsCells) {
  const auto layout = layoutOf({{.cells = 2, .hasTitle = false}});
  EXPECT_EQ(layout.cell(0).top(), 12);
  EXPECT_TRUE(layout.title(0).isEmpty());
  EXPECT_THAT(layout.titlesIn({0, 0, threeColumns, 1000}), IsEmpty());
}

TEST(GridLayout, FromRightToLeftTheFirstCellStandsAtTheRight) {
  auto layout = layoutOf({{.cells = 2}}, threeColumns + 40);
  layout.setDirection(Qt::RightToLeft);
  EXPECT_EQ(layout.cell(0).right() + 1, threeColumns + 40 - 16);
  EXPECT_EQ(layout.cell(1).right() + 1, threeColumns + 40 - 16 - 114);
  EXPECT_THAT(layout.cellAt(layout.cell(1).center()), Optional(1U));
}

TEST(GridLayout, ARowIsAsHighAsTheHighestOfItsCells) {
  auto layout = layoutOf({{.cells = 6}});
  const std::vector<std::size_t> cells{1};
  EXPECT_TRUE(layout.addSnippets(cells));
  EXPECT_EQ(layout.cell(0).height(), plainHeight);
  EXPECT_EQ(layout.cell(1).height(), heightWithSnippet);
  EXPECT_EQ(layout.cell(3).top(), firstRowTop + heightWithSnippet + 14);
  EXPECT_EQ(layout.cell(3).height(), plainHeight);
  const std::vector<std::size_t> neighbour{2};
  EXPECT_FALSE(layout.addSnippets(neighbour));
}

TEST(GridLayout, SnippetsStayWhenTheWidthChangesAndGoWithTheList) {
  auto layout = layoutOf({{.cells = 6}});
  const std::vector<std::size_t> cells{1};
  layout.addSnippets(cells);
  layout.setWidth(400 + 100);
  EXPECT_EQ(layout.cell(1).height(), heightWithSnippet);
  const std::vector<GridSection> sections{{.cells = 6}};
  layout.setSections(sections);
  EXPECT_EQ(layout.cell(1).height(), plainHeight);
}

TEST(GridLayout, APointBetweenCellsHitsNone) {
  const auto layout = layoutOf({{.cells = 4}});
  EXPECT_THAT(layout.cellAt({16, firstRowTop}), Optional(0U));
  EXPECT_EQ(layout.cellAt({15, firstRowTop}), std::nullopt);
  EXPECT_EQ(layout.cellAt({16 + 100, firstRowTop}), std::nullopt);
  EXPECT_EQ(layout.cellAt({16, firstRowTop - 1}), std::nullopt);
  EXPECT_EQ(layout.cellAt({16, firstRowTop + plainHeight}), std::nullopt);
  EXPECT_THAT(layout.cellAt({16, firstRowTop + plainHeight + 14}), Optional(3U));
  EXPECT_EQ(layout.cellAt({16 + 114, firstRowTop + plainHeight + 14}), std::nullopt);
  EXPECT_EQ(layout.cellAt({16, 100'000}), std::nullopt);
}

TEST(GridLayout, OnlyCellsThatMeetARectangleAreInIt) {
  const auto layout = layoutOf({{.cells = 4}, {.cells = 1}});
  EXPECT_THAT(layout.cellsIn({0, 0, threeColumns, layout.height()}), ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(layout.cellsIn({16 + 114, firstRowTop, 1, 1}), ElementsAre(1));
  EXPECT_THAT(layout.cellsIn({0, firstRowTop + plainHeight, threeColumns, 14}), IsEmpty());
  EXPECT_THAT(layout.cellsIn({0, firstRowTop + plainHeight - 1, threeColumns, 16}), ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(layout.cellsIn({0, layout.height(), threeColumns, 500}), IsEmpty());
  EXPECT_THAT(layout.cellsIn({}), IsEmpty());
}

TEST(GridLayout, EveryCellOfManySectionsIsFoundWhereItIs) {
  const auto layout = layoutOf({{.cells = 4}, {.cells = 1}, {.cells = 7, .hasTitle = false}, {.cells = 3}});
  ASSERT_EQ(layout.cellCount(), 15U);
  for (std::size_t cell = 0; cell < layout.cellCount(); ++cell) {
    EXPECT_THAT(layout.cellAt(layout.cell(cell).topLeft()), Optional(cell));
    EXPECT_THAT(layout.cellAt(layout.cell(cell).bottomRight()), Optional(cell));
    EXPECT_THAT(layout.cellsIn(layout.cell(cell)), ElementsAre(cell));
  }
}

TEST(GridLayout, TitlesAreFoundWhereTheyAre) {
  const auto layout = layoutOf({{.cells = 1}, {.cells = 1}, {.cells = 1}});
  EXPECT_THAT(layout.titlesIn({0, 0, threeColumns, layout.height()}), ElementsAre(0, 1, 2));
  EXPECT_THAT(layout.titlesIn({0, layout.title(1).bottom(), 5, 1}), ElementsAre(1));
  EXPECT_THAT(layout.titlesIn({0, layout.title(1).bottom() + 1, 5, 1}), IsEmpty());
}

TEST(GridLayout, WithoutShotsThereIsNothingToFind) {
  for (const auto& layout : {GridLayout(), layoutOf({}), layoutOf({{.cells = 0, .hasTitle = false}})}) {
    EXPECT_EQ(layout.cellAt({20, 20}), std::nullopt);
    EXPECT_THAT(layout.cellsIn({0, 0, 1000, 1000}), IsEmpty());
    EXPECT_EQ(layout.anchorAt(0), std::nullopt);
  }
}

TEST(GridAnchor, IsTheFirstCellOfTheRowAtTheTop) {
  const auto layout = layoutOf({{.cells = 9}});
  EXPECT_EQ(layout.anchorAt(firstRowTop + 7), (GridAnchor{.cell = 0, .offset = 7}));
  EXPECT_EQ(layout.anchorAt(firstRowTop + plainHeight + 4), (GridAnchor{.cell = 3, .offset = -10}));
  EXPECT_EQ(layout.anchorAt(0), (GridAnchor{.cell = 0, .offset = -firstRowTop}));
  EXPECT_EQ(layout.anchorAt(layout.height())->cell, 6U);
}

TEST(GridAnchor, KeepsTheShotInItsPlaceWhenWidthOrSizeChange) {
  auto layout = layoutOf({{.cells = 100}});
  const auto anchor = layout.anchorAt(layout.cell(60).top() + 9);
  ASSERT_TRUE(anchor);
  layout.setWidth(700);
  EXPECT_EQ(layout.position(*anchor) - layout.cell(60).top(), 9);
  auto larger = metrics;
  larger.thumbSize = 230;
  layout.setMetrics(larger);
  EXPECT_EQ(layout.position(*anchor) - layout.cell(60).top(), 9);
}

ShotList shots(ShotID newest, ShotID oldest) {
  ShotList list;
  for (auto id = newest; id >= oldest; --id) list.push_back(std::make_shared<const Shot>(Shot{.id = id}));
  return list;
}

TEST(GridAnchor, FollowsItsShotWhenOthersComeBeforeIt) {
  EXPECT_EQ(carriedOver({.cell = 2, .offset = 5}, shots(10, 1), shots(15, 1)), (GridAnchor{.cell = 7, .offset = 5}));
}

TEST(GridAnchor, PassesToTheNextShotThatIsStillThere) {
  auto after = shots(10, 1);
  after.erase(after.begin() + 2, after.begin() + 4);
  EXPECT_EQ(carriedOver({.cell = 2, .offset = 5}, shots(10, 1), after), (GridAnchor{.cell = 2, .offset = 5}));
  EXPECT_EQ(after[2]->id, 6);
}

TEST(GridAnchor, PassesToTheLastShotBeforeItWhenNoneComesAfter) {
  EXPECT_EQ(carriedOver({.cell = 8, .offset = 5}, shots(10, 1), shots(10, 5)), (GridAnchor{.cell = 5, .offset = 5}));
}

TEST(GridAnchor, IsLostWithTheWholeList) {
  EXPECT_EQ(carriedOver({.cell = 8, .offset = 5}, shots(10, 1), shots(30, 20)), std::nullopt);
  EXPECT_EQ(carriedOver({.cell = 8, .offset = 5}, shots(10, 1), {}), std::nullopt);
}

}  // namespace
}  // namespace Nimbrel
