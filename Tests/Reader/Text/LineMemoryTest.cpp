#include "Reader/LineMemory.h"

#include <gmock/gmock.h>

namespace Nimbrel::Reader {
namespace {

/// A crop of a shade of its own for each number.
Plane crop(int number) {
  Plane plane(20, 56, 255);
  plane.row(0)[0] = static_cast<std::uint8_t>(number % 256);
  plane.row(0)[1] = static_cast<std::uint8_t>(number / 256);
  return plane;
}

bool isKnown(const LineMemory& memory, const Plane& plane) { return memory.wordsOf(plane).has_value(); }

TEST(LineMemory, TellsWhatWasReadOffTheSameCrop) {
  LineMemory memory;
  memory.keep(crop(1), {{"Open", 3, 17, 95}, {"file", 20, 31, 90}});
  const auto words = memory.wordsOf(crop(1));
  ASSERT_TRUE(words);
  ASSERT_EQ(words->size(), 2U);
  EXPECT_EQ((*words)[1].text, "file");
  EXPECT_EQ((*words)[1].left, 20);
  EXPECT_EQ((*words)[1].right, 31);
  EXPECT_EQ((*words)[1].confidence, 90);
}

TEST(LineMemory, KnowsACropWithoutWordsFromOneThatWasNotRead) {
  LineMemory memory;
  memory.keep(crop(1), {});
  EXPECT_TRUE(isKnown(memory, crop(1)));
  EXPECT_FALSE(isKnown(memory, crop(2)));
}

TEST(LineMemory, TellsTheSamePixelsInAnotherFormApart) {
  LineMemory memory;
  memory.keep(Plane(20, 56, 255), {});
  EXPECT_TRUE(isKnown(memory, Plane(20, 56, 255)));
  EXPECT_FALSE(isKnown(memory, Plane(56, 20, 255)));
}

TEST(LineMemory, ForgetsWhatItHasNoRoomFor) {
  constexpr int lines = 100;
  LineMemory memory(2'000);
  for (int i = 0; i < lines; ++i) {
    memory.keep(crop(i), {{"word", 0, 10, 95}});
    EXPECT_TRUE(isKnown(memory, crop(i))) << i;
  }
  int known = 0;
  for (int i = 0; i < lines; ++i) known += isKnown(memory, crop(i)) ? 1 : 0;
  EXPECT_LE(known * static_cast<int>(sizeof(Word)), 2'000);
}

TEST(LineMemory, KeepsNoLineThatIsLargerThanAllItsRoom) {
  LineMemory memory(2'000);
  memory.keep(crop(1), {{"word", 0, 10, 95}});
  memory.keep(crop(2), {{std::string(5'000, 'w'), 0, 10, 95}});
  EXPECT_FALSE(isKnown(memory, crop(2)));
  EXPECT_TRUE(isKnown(memory, crop(1))) << "nor forgets the others for it";
}

TEST(LineMemory, CountsALineThatComesAgainOnce) {
  LineMemory memory(2'000);
  memory.keep(crop(1), {{"word", 0, 10, 95}});
  for (int i = 0; i < 100; ++i) memory.keep(crop(2), {{"word", 0, 10, 95}});
  EXPECT_TRUE(isKnown(memory, crop(1)));
}

}  // namespace
}  // namespace Nimbrel::Reader
