#include "Analysis/DetectedTesting.h"

#include <gtest/gtest.h>

#include <limits>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::idsIn;
using ::testing::IsEmpty;
using Testing::saturdayMorning;

TEST(Detected, AnEmptyTextHasNoItems) {
  EXPECT_THAT(idsIn(""), IsEmpty());
  EXPECT_THAT(idsIn(" \n\t"), IsEmpty());
}

TEST(Detected, KindsHaveTheirNames) {
  EXPECT_EQ(rawValue(DetectedItem::Kind::link), "Link");
  EXPECT_EQ(rawValue(DetectedItem::Kind::email), "Email");
  EXPECT_EQ(rawValue(DetectedItem::Kind::phone), "Phone");
  EXPECT_EQ(rawValue(DetectedItem::Kind::address), "Address");
  EXPECT_EQ(rawValue(DetectedItem::Kind::date), "Date");
}

TEST(Detected, APhoneNumberAndALinkWithTheSameTextAreTwoItems) {
  const DetectedItem phone{.kind = DetectedItem::Kind::phone, .text = "1", .url = {}, .date = {}};
  const DetectedItem link{.kind = DetectedItem::Kind::link, .text = "1", .url = {}, .date = {}};
  EXPECT_EQ(phone.id(), "Phone|1");
  EXPECT_NE(phone.id(), link.id());
}

TEST(Detected, ItemsComeInTheOrderOfTheText) {
  EXPECT_THAT(
      idsIn("On 21 November 2026 call 650-253-0000 or write to ann@example.com, see www.example.com and come to "
            "123 Main Street, Springfield, IL 62704"),
      ElementsAre("Date|21 November 2026", "Phone|650-253-0000", "Email|ann@example.com", "Link|http://www.example.com",
                  "Address|123 Main Street, Springfield, IL 62704"));
}

TEST(Detected, WhatIsFoundTwiceIsOneItem) {
  EXPECT_THAT(idsIn("example.com, today, http://example.com, today"),
              ElementsAre("Link|http://example.com", "Date|today"));
}

TEST(Detected, WhatALinkHoldsIsNoItemOfItsOwn) {
  EXPECT_THAT(idsIn("https://example.com/2026-11-21/650-253-0000?to=ann@example.com&at=example.org"),
              ElementsAre("Link|https://example.com/2026-11-21/650-253-0000?to=ann@example.com&at=example.org"));
}

TEST(Detected, AnAddressWinsOverNumbersInIt) {
  EXPECT_THAT(idsIn("Musterstraße 12, 12345 Berlin, Tel. +49 30 901820"),
              ElementsAre("Address|Musterstraße 12, 12345 Berlin", "Phone|+49 30 901820"));
}

TEST(Detected, ADateIsNoPhoneNumber) {
  EXPECT_THAT(idsIn("2026-11-21 14:05:33"), ElementsAre("Date|2026-11-21 14:05:33"));
}

TEST(Detected, BytesThatAreNoTextDoNoHarm) {
  EXPECT_THAT(idsIn("\xFF\xC3 ann@example.com \xE2\x82"), ElementsAre("Email|ann@example.com"));
  EXPECT_THAT(idsIn("\xED\xA0\x80https://example.com/a\xED\xB0\x80 today"),
              ElementsAre("Link|https://example.com/a", "Date|today"));
  using namespace std::string_view_literals;
  EXPECT_THAT(idsIn("\0www.example.com\0today\0"sv), ElementsAre("Link|http://www.example.com", "Date|today"));
}

TEST(Detected, MarksOfDirectionAndCombiningOnesDoNoHarm) {
  EXPECT_THAT(idsIn("\u200F+49 30 901820\u200F \u202Etoday\u202C"), ElementsAre("Phone|+49 30 901820", "Date|today"));
  EXPECT_THAT(idsIn("to\u0301day e\u0301xample \u0301\u0301\u0301"), IsEmpty());
  EXPECT_THAT(idsIn("\u0301www.example.com"), ElementsAre("Link|http://www.example.com"));
}

TEST(Detected, ANowBeyondAnyCalendarLeavesDatesOut) {
  for (const double now : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THAT(idsIn("today and www.example.com", timestamp(now)), ElementsAre("Link|http://www.example.com"));
  }
}

TEST(Detected, ThousandsOfBracketsBehindALinkAreNoPartOfIt) {
  EXPECT_THAT(idsIn("http://x/" + std::string(100'000, ')')), ElementsAre("Link|http://x/"));
}

std::string megabyteOf(std::string_view piece) {
  std::string text;
  while (text.size() < (1U << 20)) text += piece;
  return text;
}

TEST(Detected, AMegabyteOnOneLineComesToAnEnd) {
  for (const char* piece : {"a.b@", "1 ", "12 Main ", "1 A ", "1 Ab Ab Ab Ab\n", "a.com ", "650-253-0000 ", "5 May ",
                            "Straße 1, ", "\u0301", "\xFF"}) {
    (void)Detected::items(megabyteOf(piece), saturdayMorning);
  }
  (void)Detected::items("http://x/" + megabyteOf(")"), saturdayMorning);
}

}  // namespace
}  // namespace Nimbrel
