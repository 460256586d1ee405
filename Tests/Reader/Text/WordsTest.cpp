#include "Reader/Words.h"

#include <gmock/gmock.h>

namespace Nimbrel::Reader {
namespace {

/// A line of letters 10 pixels high, each 6 wide, at the given places.
Line lineAt(const std::vector<int>& lefts) {
  Line line{.box = {lefts.front(), 0, lefts.back() + 6, 10}, .ascender = 0, .baseline = 10};
  for (const int left : lefts) line.parts.push_back({left, 0, left + 6, 10});
  return line;
}

Word word(const char* text, double left, double right, float confidence = 95) {
  return {text, left, right, confidence};
}

TEST(Words, StandApartWhereThereIsRoomForABlank) {
  EXPECT_EQ(textOf({word("ab", 0, 13), word("cd", 18, 31)}, lineAt({0, 7, 18, 25})), "ab cd");
}

TEST(Words, AreOneWhereTheLettersTouch) {
  EXPECT_EQ(textOf({word("final", 0, 12), word("_x", 12, 24)}, lineAt({0, 6, 12, 18})), "final_x");
}

TEST(Words, OfFixedPitchAreOneWithoutAnEmptyCell) {
  // Cells of 8; a dash of 4 between the letters leaves gaps that would be blanks in other type.
  auto line = lineAt({0, 8, 16, 24, 40, 48, 56, 64, 80, 88});
  line.parts.insert(line.parts.begin() + 4, Box{33, 4, 37, 5});
  EXPECT_EQ(fixedPitch(line.parts, 10), 8);
  EXPECT_EQ(textOf({word("E3SF", 0, 30), word("-", 33, 37), word("2EBJ", 40, 70), word("ok", 80, 94)}, line),
            "E3SF-2EBJ ok");
}

TEST(Words, HaveNoPitchWhereLettersDifferInWidth) {
  const std::vector<Box> parts{{0, 0, 3, 10},   {5, 0, 14, 10},  {16, 0, 21, 10}, {23, 0, 34, 10}, {37, 0, 40, 10},
                               {42, 0, 49, 10}, {52, 0, 63, 10}, {65, 0, 68, 10}, {70, 0, 76, 10}, {79, 0, 91, 10}};
  EXPECT_EQ(fixedPitch(parts, 10), 0);
}

TEST(Words, DashesAreAsManyAsStandThere) {
  auto line = lineAt({12, 19, 26});
  line.parts.insert(line.parts.begin(), {Box{0, 5, 4, 6}, Box{6, 5, 10, 6}});
  EXPECT_EQ(textOf({word("-all", 0, 32)}, line), "--all");
}

TEST(Words, OfLittleConfidenceAreLeftOut) {
  const auto line = lineAt({0, 7, 20, 27});
  EXPECT_EQ(textOf({word("ab", 0, 13), word("cd", 20, 33, 10)}, line), "ab");
  EXPECT_EQ(textOf({word("ab", 0, 13), word("c", 20, 33, 50)}, line), "ab");
  EXPECT_EQ(textOf({word("ab", 0, 13), word("c", 20, 33, 90)}, line), "ab c");
}

TEST(Words, OfSignsAloneAreNoText) {
  EXPECT_EQ(textOf({word("~|_", 0, 20)}, lineAt({0, 7, 14})), "");
  EXPECT_EQ(textOf({word("});", 0, 20)}, lineAt({0, 7, 14})), "});");
}

TEST(Words, NoneAreNoText) { EXPECT_EQ(textOf({}, lineAt({0})), ""); }

}  // namespace
}  // namespace Nimbrel::Reader
