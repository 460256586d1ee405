#include "Analysis/TranslationService.h"

#include <gmock/gmock.h>

#include <string>

namespace Nimbrel {

namespace {

using TranslationService::translationUrl;

const std::string base = "https://translate.example.invalid";
const std::string beforeText = base + "/?sl=auto&tl=en&text=";
const std::string behindText = "&op=translate";

TEST(TranslationService, IsAskedForEnglish) {
  EXPECT_EQ(translationUrl(base, "Guten Tag"), beforeText + "Guten%20Tag" + behindText);
}

TEST(TranslationService, EncodesWhateverATextHolds) {
  EXPECT_EQ(translationUrl(base, "A&B=C+D #1\n\"%20ü"),
            beforeText + "A%26B%3DC%2BD%20%231%0A%22%2520%C3%BC" + behindText);
}

TEST(TranslationService, OfALongTextItIsSentTheFirst5000Characters) {
  EXPECT_EQ(translationUrl(base, std::string(6000, 'a')), beforeText + std::string(5000, 'a') + behindText);
}

TEST(TranslationService, CharactersAreCountedAsReadersDo) {
  std::string text;
  std::string sent;
  for (int i = 0; i < 6000; ++i) text += "e\u0301";
  for (int i = 0; i < 5000; ++i) sent += "e%CC%81";
  EXPECT_EQ(translationUrl(base, text), beforeText + sent + behindText);
}

TEST(TranslationService, WithoutAServerThereIsNoAddress) {
  EXPECT_EQ(translationUrl("", "Guten Tag"), std::nullopt);
  EXPECT_EQ(translationUrl("translate", "Guten Tag"), std::nullopt);
  EXPECT_EQ(translationUrl("https://a b", "Guten Tag"), std::nullopt);
}

TEST(TranslationService, IsReachedSafely) { EXPECT_TRUE(TranslationService::baseUrl().starts_with("https://")); }

}  // namespace

}  // namespace Nimbrel
