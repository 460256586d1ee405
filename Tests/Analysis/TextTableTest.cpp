#include "Analysis/TextTable.h"

#include <gmock/gmock.h>

namespace Nimbrel {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using TextTable::rowsIn;

TEST(TextTable, TwoBlanksBetweenWordsMakeARow) { EXPECT_THAT(rowsIn("Tea  3.20"), ElementsAre("Tea\t3.20")); }

TEST(TextTable, BlanksBeforeTheOnlyWordMakeNone) {
  EXPECT_THAT(rowsIn("   Tea"), IsEmpty());
  EXPECT_THAT(rowsIn("Tea   "), IsEmpty());
}

TEST(TextTable, SingleBlanksMakeNone) { EXPECT_THAT(rowsIn("a cup of tea"), IsEmpty()); }

TEST(TextTable, ATabByItselfStaysAndMakesARow) {
  EXPECT_THAT(rowsIn("Tea\tGreen leaf"), ElementsAre("Tea\tGreen leaf"));
}

TEST(TextTable, ARunOfTabsAndBlanksIsOneGap) { EXPECT_THAT(rowsIn("Tea \t  3.20"), ElementsAre("Tea\t3.20")); }

TEST(TextTable, RowsMayHaveDifferentNumbersOfCells) {
  EXPECT_THAT(rowsIn("a  b   c\nonly\n\nd  e"), ElementsAre("a\tb\tc", "d\te"));
}

TEST(TextTable, LinesEndAtAnyLineBreak) {
  EXPECT_THAT(rowsIn("a  b\r\nc  d\ve  f\fg  h\u0085i  j\u2028k  l\u2029m  n"),
              ElementsAre("a\tb", "c\td", "e\tf", "g\th", "i\tj", "k\tl", "m\tn"));
}

TEST(TextTable, WideSpacesCountAsBlanks) {
  EXPECT_THAT(rowsIn("Tee\u3000\u3000grün"), ElementsAre("Tee\tgrün"));
  EXPECT_THAT(rowsIn("Tee\u00A0 grün"), ElementsAre("Tee\tgrün"));
}

TEST(TextTable, NothingHasNoRows) { EXPECT_THAT(rowsIn(""), IsEmpty()); }

}  // namespace

}  // namespace Nimbrel
