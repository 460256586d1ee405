#include "Analysis/ShotTraits.h"

#include "Analysis/ReceiptClassifier.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace Nimbrel {
namespace {

Shot readShot(std::string text) {
  Shot shot;
  shot.ocr = std::move(text);
  shot.ocrDone = true;
  return shot;
}

TEST(ShotTraits, AreGroupAndCollections) {
  const auto traits = traitsOf(readShot("google chrome\nerror"));
  EXPECT_EQ(traits.group.title, "Google Chrome");
  EXPECT_TRUE(traits.collections.test(static_cast<std::size_t>(SmartCollection::errors)));
  EXPECT_EQ(traits.collections.count(), 1U);
}

TEST(ShotTraits, OfManyShotsAreThoseOfEachInTurn) {
  static const std::array<std::string, 5> texts{"incognito", "let x = {", "example.com\nfailed", "",
                                                "Subtotal 5.00\nTotal 6.00\nCash"};
  for (const std::size_t count : {0U, 1U, 63U, 64U, 65U, 1000U}) {
    ShotList shots;
    for (std::size_t i = 0; i < count; ++i) shots.push_back(std::make_shared<const Shot>(readShot(texts.at(i % 5))));
    const auto traits = traitsOf(shots);
    ASSERT_EQ(traits.size(), count);
    for (std::size_t i = 0; i < count; ++i) EXPECT_EQ(traits[i], traitsOf(*shots[i])) << i;
  }
}

TEST(ShotTraits, OfATextThatIsNotUtf8AreThoseOfItsPhrases) {
  const auto traits = traitsOf(readShot("\xFF\xC3 incognito \xE2\x80\nerror\xF0\x9F"));
  EXPECT_EQ(traits.group.title, "Google Chrome");
  EXPECT_EQ(traits.collections.count(), 1U);
}

TEST(ShotTraits, OfATextWithNulsAreThoseOfItsPhrases) {
  using namespace std::string_literals;
  const auto traits = traitsOf(readShot("\0error\0\nincognito\0"s));
  EXPECT_EQ(traits.group.title, "Google Chrome");
  EXPECT_EQ(traits.collections.count(), 1U);
  EXPECT_EQ(traitsOf(readShot("exam\0ple.com"s)).group, ContentGroup::unknown());
}

TEST(ShotTraits, MarksOfWritingDirectionAreCharactersLikeOthers) {
  EXPECT_EQ(traitsOf(readShot("\u200Fexample.com\u200F")).group, ContentGroup::unknown());
  EXPECT_EQ(traitsOf(readShot("\u202Bincognito\u202C")).group.title, "Google Chrome");
  EXPECT_TRUE(ReceiptClassifier::matches(readShot("\u200FSubtotal \u200F5.00\n\u200ETotal 6.00\nCash\n\u200E")));
}

TEST(ShotTraits, OfAMegabyteOnOneLineAreFoundAllTheSame) {
  const std::string filler(1'000'000, 'x');
  EXPECT_EQ(traitsOf(readShot(filler + " incognito")).group.title, "Google Chrome");
  EXPECT_EQ(traitsOf(readShot(filler + ".com")).group.title, "Safari");
  EXPECT_TRUE(ReceiptClassifier::matches(readShot(filler + " Subtotal 5.00\nTotal 6.00 " + filler + "\nCash")));
}

TEST(ShotTraits, OfHostileMegabytesComeToAnEnd) {
  std::string digits = "receipt delivery pickup ";
  std::string hyphens = "receipt ";
  std::string dots = "a";
  for (int i = 0; i < 300'000; ++i) {
    digits += "12";
    hyphens += "ab-";
    dots += ".a";
  }
  for (const auto& text : {digits, digits + ".50", hyphens, dots + "/x y", dots}) {
    const auto traits = traitsOf(readShot(text));
    EXPECT_FALSE(traits.collections.test(static_cast<std::size_t>(SmartCollection::receipts)));
  }
}

}  // namespace
}  // namespace Nimbrel
