#include "Analysis/OCR.h"

#include "Support/FakePictureReader.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::FakePictureReader;
using ::testing::IsEmpty;
using Testing::readingOf;
using Strings = std::vector<std::string>;
using Wanted = PictureReader::Wanted;

/// A block of a given vertical middle and left edge.
TextBlock block(const std::string& text, double middle, double left) {
  return {text, QRectF(left, middle - 0.01, 0.2, 0.02)};
}

TEST(OCR, BlocksWhoseMiddlesDifferByNineThousandthsAreOrderedByTheirLeftEdges) {
  EXPECT_EQ(OCR::arranged({block("right", 0.500, 0.6), block("left", 0.509, 0.1)}).text, "left\nright");
}

TEST(OCR, BlocksWhoseMiddlesDifferByElevenThousandthsAreOrderedByTheirMiddles) {
  EXPECT_EQ(OCR::arranged({block("lower", 0.511, 0.1), block("upper", 0.500, 0.6)}).text, "upper\nlower");
}

TEST(OCR, BlocksOfUnlikeHeightGoByTheirMiddlesNotTheirTops) {
  const TextBlock tall{"tall", QRectF(0.5, 0.10, 0.2, 0.20)};
  const TextBlock flat{"flat", QRectF(0.1, 0.19, 0.2, 0.02)};
  EXPECT_EQ(OCR::arranged({tall, flat}).text, "flat\ntall");
}

TEST(OCR, EachBlockHasALineOfItsOwnEvenOnOneVisualLine) {
  const auto recognition =
      OCR::arranged({block("third", 0.3, 0.1), block("second", 0.1, 0.6), block("first", 0.1, 0.1)});
  EXPECT_EQ(recognition.text, "first\nsecond\nthird");
  EXPECT_THAT(recognition.blocks,
              ElementsAre(block("first", 0.1, 0.1), block("second", 0.1, 0.6), block("third", 0.3, 0.1)));
}

TEST(OCR, EqualBlocksKeepTheirOrder) {
  std::vector<TextBlock> blocks;
  for (int i = 0; i < 9; ++i) blocks.push_back(block(std::to_string(i), 0.5, 0.5));
  EXPECT_EQ(OCR::arranged(blocks).text, "0\n1\n2\n3\n4\n5\n6\n7\n8");
}

TEST(OCR, AStaircaseOfBlocksComesOutTheSameEachTimeAndWhole) {
  // Each block stands on one line with its neighbours and on another than the rest: no order satisfies all pairs.
  std::vector<TextBlock> stairs;
  for (int i = 0; i < 200; ++i) stairs.push_back(block(std::to_string(i), 0.1 + i * 0.004, 0.9 - i * 0.004));
  const auto once = OCR::arranged(stairs);
  EXPECT_EQ(once, OCR::arranged(stairs));
  EXPECT_THAT(once.blocks, ::testing::UnorderedElementsAreArray(stairs));
}

TEST(OCR, PlacesThatAreNoNumbersLoseNoText) {
  const auto nowhere = std::numeric_limits<double>::quiet_NaN();
  std::vector<TextBlock> blocks;
  for (int i = 0; i < 50; ++i) blocks.push_back(block("x", i % 3 == 0 ? nowhere : 0.9 - i * 0.01, nowhere));
  EXPECT_EQ(OCR::arranged(blocks).blocks.size(), 50U);
}

TEST(OCR, NothingReadIsEmptyText) {
  EXPECT_EQ(OCR::arranged({}), OCR::Recognition{});
  EXPECT_EQ(OCR::arranged({block("one", 0.5, 0.5)}).text, "one");
}

TEST(OCR, TwoEqualCodesAreOne) {
  EXPECT_THAT(OCR::distinctCodes({"b", "a", "b", "c", "a"}), ElementsAre("b", "a", "c"));
}

TEST(OCR, ACodeWithoutPayloadIsLeftOut) {
  EXPECT_THAT(OCR::distinctCodes({"", "a", ""}), ElementsAre("a"));
  EXPECT_THAT(OCR::distinctCodes({"", ""}), IsEmpty());
}

class OCRReading : public ::testing::Test {
 protected:
  QObject context_;
  FakePictureReader reader_;
};

TEST_F(OCRReading, RecognisingAsksForTextAndArrangesIt) {
  std::optional<OCR::Recognition> heard;
  OCR::recognize(&context_, reader_, "/a.png", [&](std::optional<OCR::Recognition> read) { heard = std::move(read); });
  EXPECT_THAT(reader_.requests, ElementsAre(FakePictureReader::Request{"/a.png", Wanted::Text}));
  EXPECT_FALSE(heard);
  reader_.answer(PictureReading{.blocks = {block("below", 0.9, 0.1), block("above", 0.1, 0.1)}, .codes = {}});
  ASSERT_TRUE(heard);
  EXPECT_EQ(heard->text, "above\nbelow");
}

TEST_F(OCRReading, CodesComeDistinct) {
  std::optional<Strings> heard;
  OCR::barcodes(&context_, reader_, "/a.png", [&](std::optional<Strings> codes) { heard = std::move(codes); });
  EXPECT_THAT(reader_.requests, ElementsAre(FakePictureReader::Request{"/a.png", Wanted::Codes}));
  reader_.answer(readingOf({}, {"x", "", "x", "y"}));
  EXPECT_THAT(heard.value_or(Strings{}), ElementsAre("x", "y"));
}

TEST_F(OCRReading, TextAndCodesComeFromOneLook) {
  std::optional<OCR::RecognitionWithBarcodes> heard;
  OCR::recognizeWithBarcodes(&context_, reader_, "/a.png", [&](auto read) { heard = std::move(read); });
  EXPECT_THAT(reader_.requests, ElementsAre(FakePictureReader::Request{"/a.png", Wanted::TextAndCodes}));
  reader_.answer(readingOf({"one", "two"}, {"x", "x"}));
  ASSERT_TRUE(heard);
  EXPECT_EQ(heard->recognition.text, "one\ntwo");
  EXPECT_THAT(heard->barcodes, ElementsAre("x"));
}

TEST_F(OCRReading, APictureThatCouldNotBeLookedAtHasNoResult) {
  bool called = false;
  OCR::recognizeWithBarcodes(&context_, reader_, "/a.png", [&](auto read) {
    called = true;
    EXPECT_FALSE(read);
  });
  reader_.answer(std::nullopt);
  EXPECT_TRUE(called);
}

}  // namespace
}  // namespace Nimbrel
