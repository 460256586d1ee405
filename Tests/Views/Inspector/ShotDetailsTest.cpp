#include "Views/Inspector/ShotDetails.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::SizeIs;

TEST(SensitiveWarning, NamesAllLabelsInLowerCase) {
  Shot shot;
  shot.sensitive = {"Email", "Credit Card"};
  EXPECT_EQ(sensitiveWarning(shot), "Looks like it contains email, credit card");
}

TEST(SourceTitle, OnlyApplicationsAreNamed) {
  EXPECT_EQ(sourceTitle(ContentGroup::namedApplication("Firefox", "")), "Firefox");
  EXPECT_EQ(sourceTitle(ContentGroup::desktop()), "Unrecognized application");
  EXPECT_EQ(sourceTitle(ContentGroup::unknown()), "Unrecognized application");
}

TEST(SizeText, LeavesOutWhatIsNotKnown) {
  Shot shot;
  EXPECT_EQ(sizeText(shot), "");
  shot.bytes = 412'000;
  EXPECT_EQ(sizeText(shot), "412 KB");
  shot.width = 1520;
  shot.height = 960;
  EXPECT_EQ(sizeText(shot), "1520 × 960 · 412 KB");
  shot.bytes = 0;
  EXPECT_EQ(sizeText(shot), "1520 × 960");
}

TEST(PlaceText, IsTheLibraryForWhatIsFiled) {
  Shot shot;
  EXPECT_EQ(placeText(shot), "Inbox");
  shot.filed = true;
  EXPECT_EQ(placeText(shot), "Library");
}

TEST(FoundItems, OfNineItemsEightAreShown) {
  std::string text;
  for (char name = 'a'; name < 'a' + 9; ++name) text += std::string("https://example.org/") + name + "\n";
  ASSERT_THAT(Detected::items(text, timestamp(0)), SizeIs(9));
  const auto items = foundItems(text, timestamp(0));
  ASSERT_THAT(items, SizeIs(8));
  EXPECT_EQ(items.front().text, "https://example.org/a");
}

TEST(AddressIn, ACodeThatIsAnAddressWithASchemeOpens) {
  for (const auto* code : {"https://example.org/a?b=c", "mailto:somebody@example.org", "tel:+41445550100"}) {
    EXPECT_EQ(addressIn(code), code);
  }
}

TEST(AddressIn, ACodeThatIsPlainTextDoesNot) {
  for (const auto* code : {"", "hello world", "4006381333931", "example.org", "a b:c", "//host/path"}) {
    EXPECT_EQ(addressIn(code), std::nullopt) << code;
  }
}

}  // namespace
}  // namespace Nimbrel
