#include "Model/Models.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

Shot withText(std::string text) {
  Shot shot;
  shot.ocr = std::move(text);
  return shot;
}

Shot ofType(std::string type) {
  Shot shot;
  shot.captureType = std::move(type);
  return shot;
}

TEST(CaptureType, HasALabelAndASymbol) {
  EXPECT_EQ(ofType("selection").captureTypeLabel(), "Selection");
  EXPECT_EQ(ofType("selection").symbol(), "rectangle.dashed");
  EXPECT_EQ(ofType("window").captureTypeLabel(), "Window");
  EXPECT_EQ(ofType("window").symbol(), "macwindow");
  EXPECT_EQ(ofType("display").captureTypeLabel(), "Full Screen");
  EXPECT_EQ(ofType("display").symbol(), "display");
}

TEST(CaptureType, ComparisonsAreExact) {
  EXPECT_EQ(ofType("Window").captureTypeLabel(), "Image");
  EXPECT_EQ(ofType("Window").symbol(), "photo");
  EXPECT_EQ(ofType("").captureTypeLabel(), "Image");
}

TEST(Pixels, AreAbsentUnlessBothLengthsAreKnown) {
  Shot shot;
  shot.height = 500;
  EXPECT_FALSE(shot.pixels());
  shot.width = 1440;
  EXPECT_EQ(shot.pixels(), "1440 × 500");
}

TEST(TitleGuess, OfNoTextIsEmpty) {
  EXPECT_EQ(withText("").titleGuess(), "");
  EXPECT_EQ(withText("").ocrHeadline(), "");
  EXPECT_EQ(withText(" \n\t\n").titleGuess(), "");
}

TEST(TitleGuess, OfShortLinesIsTheFirstThatIsNotBlank) {
  EXPECT_EQ(withText(" \n ab \nabc").titleGuess(), "ab");
  EXPECT_EQ(withText(" \n ab \nabc").ocrHeadline(), "ab");
}

TEST(TitleGuess, LooksAtTheFirstEightLinesThatAreLongEnough) {
  EXPECT_EQ(withText("aaaa\nab\nbbbbb\ncccc\ndddd\neeee\nffff\ngggg\nhhhh\nlonger than all others").titleGuess(),
            "bbbbb");
}

TEST(TitleGuess, IsTheEarlierOfTwoLinesOfOneLength) { EXPECT_EQ(withText("first\nother").titleGuess(), "first"); }

TEST(TitleGuess, CountsCharactersAsAReaderDoes) {
  // Three characters of two code points each are too short, four are not.
  EXPECT_EQ(withText("e\u0301e\u0301e\u0301\nplain").titleGuess(), "plain");
  EXPECT_EQ(withText("aaaa\ne\u0301e\u0301e\u0301e\u0301").titleGuess(), "aaaa");
}

TEST(Shot, RecordsOfOneIdAndDifferentNotesAreDifferent) {
  Shot a;
  a.id = 1;
  Shot b = a;
  EXPECT_EQ(a, b);
  b.note = "x";
  EXPECT_NE(a, b);
}

}  // namespace
}  // namespace Nimbrel
