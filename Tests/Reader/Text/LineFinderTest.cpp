#include "Reader/LineFinder.h"

#include <gmock/gmock.h>

namespace Nimbrel::Reader {
namespace {

/// A letter that fills as much of its box as one of small type does.
Component letter(int left, int top, int width, int height) {
  return {.box = {left, top, left + width, top + height}, .pixels = width * height * 6 / 10};
}

std::vector<Component> word(int left, int top, int letters, int height = 10) {
  std::vector<Component> result;
  for (int i = 0; i < letters; ++i) result.push_back(letter(left + 8 * i, top, 6, height));
  return result;
}

std::vector<Component> together(std::vector<std::vector<Component>> groups) {
  std::vector<Component> result;
  for (const auto& group : groups) result.insert(result.end(), group.begin(), group.end());
  return result;
}

TEST(LineFinder, WordsOfOneLineGoTogether) {
  const auto lines = linesOf(together({word(10, 20, 5), word(56, 20, 4)}));
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].box, (Box{10, 20, 86, 30}));
  EXPECT_EQ(lines[0].baseline, 30);
  EXPECT_EQ(lines[0].parts.size(), 9U);
}

TEST(LineFinder, ColumnsAtOneHeightAreLinesOfTheirOwn) {
  EXPECT_EQ(linesOf(together({word(10, 20, 5), word(90, 20, 5)})).size(), 2U);
}

TEST(LineFinder, LinesBelowEachOtherStayApartThoughTheyNearlyTouch) {
  const auto lines = linesOf(together({word(10, 20, 8), word(10, 31, 8), word(10, 42, 8)}));
  ASSERT_EQ(lines.size(), 3U);
  for (const auto& line : lines) EXPECT_EQ(line.box.height(), 10);
}

TEST(LineFinder, ALineMayRiseSlowly) {
  std::vector<Component> letters;
  for (int i = 0; i < 60; ++i) letters.push_back(letter(10 + 8 * i, 100 - i / 3, 6, 10));
  EXPECT_EQ(linesOf(letters).size(), 1U);
}

TEST(LineFinder, ABaselineIsWhereMostLettersStand) {
  auto letters = word(10, 20, 6);
  letters.push_back(letter(58, 22, 6, 12));
  const auto lines = linesOf(letters);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].ascender, 20);
  EXPECT_EQ(lines[0].baseline, 30);
  EXPECT_EQ(lines[0].box.bottom, 34);
}

TEST(LineFinder, DotsAndDashesBelongToTheLineBesideThem) {
  auto letters = word(10, 20, 4);
  letters.push_back(letter(44, 28, 2, 2));
  letters.push_back(letter(50, 24, 4, 1));
  const auto lines = linesOf(letters);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].box.right, 54);
}

TEST(LineFinder, ADashJoinsWhatStandsOnBothSidesOfIt) {
  auto letters = together({word(10, 20, 4), word(70, 20, 4)});
  letters.push_back(letter(50, 24, 6, 1));
  EXPECT_EQ(linesOf(letters).size(), 1U);
}

TEST(LineFinder, TheSideOfAFieldIsNoLetter) {
  auto letters = word(10, 20, 5);
  letters.push_back(letter(4, 14, 1, 22));
  const auto lines = linesOf(letters);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].box.left, 10);
}

TEST(LineFinder, PicturesAndFramesMakeNoLine) {
  EXPECT_TRUE(linesOf({letter(0, 0, 300, 200)}).empty());
  auto framed = word(20, 20, 3);
  framed.push_back({.box = {10, 10, 60, 40}, .pixels = 160});
  const auto lines = linesOf(framed);
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].box, (Box{20, 20, 42, 30}));
}

TEST(LineFinder, NothingMakesNoLine) { EXPECT_TRUE(linesOf({}).empty()); }

}  // namespace
}  // namespace Nimbrel::Reader
