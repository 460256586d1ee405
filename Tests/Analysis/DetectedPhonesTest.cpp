#include "Analysis/DetectedTesting.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using Testing::Strings;
using Testing::UserLocaleIs;

Strings phonesIn(std::string_view text) { return Testing::textsIn(text, DetectedItem::Kind::phone); }

struct Case {
  const char* text;
  Strings found;
};

TEST(DetectedPhones, AreFoundAsWritten) {
  const std::vector<Case> cases{
      {"(650) 253-0000", {"(650) 253-0000"}},
      {"650-253-0000", {"650-253-0000"}},
      {"650.253.0000", {"650.253.0000"}},
      {"650 253 0000", {"650 253 0000"}},
      {"Tel:650-253-0000.", {"650-253-0000"}},
      {"1-800-356-9377", {"1-800-356-9377"}},
      {"+1 650 253 0000", {"+1 650 253 0000"}},
      {"+49 30 901820", {"+49 30 901820"}},
      {"+49 (0)30 / 901820", {"+49 (0)30 / 901820"}},
      {"+4930901820", {"+4930901820"}},
      {"650-253-0000 ext. 12", {"650-253-0000 ext. 12"}},
      {"14:05 +49 30 901820", {"+49 30 901820"}},
      {"10:30 AM 650-253-0000", {"650-253-0000"}},
      {"Phone 650-253-0000, fax 650-253-0001", {"650-253-0000", "650-253-0001"}},
      {"ünïcode \U0001F600 650-253-0000", {"650-253-0000"}},
  };
  for (const auto& [text, found] : cases) EXPECT_EQ(phonesIn(text), found) << text;
}

TEST(DetectedPhones, AreCalledWithoutWhiteSpace) {
  const auto items = Detected::items("+49\u00A0(0)30 90 18 20", Testing::saturdayMorning);
  ASSERT_EQ(items.size(), 1U);
  EXPECT_EQ(items[0].text, "+49\u00A0(0)30 90 18 20");
  EXPECT_EQ(items[0].url, "tel:+49(0)30901820");
  EXPECT_EQ(items[0].date, std::nullopt);
}

TEST(DetectedPhones, WithoutAValidUrlHaveNone) {
  const auto items = Detected::items("650\u2013253\u20130000", Testing::saturdayMorning);
  ASSERT_EQ(items.size(), 1U);
  EXPECT_EQ(items[0].text, "650\u2013253\u20130000");
  EXPECT_EQ(items[0].url, std::nullopt);
}

TEST(DetectedPhones, WithoutACountryCodeAreOfTheUsersRegion) {
  EXPECT_THAT(phonesIn("030 901820"), IsEmpty());
  const UserLocaleIs german("de_DE.UTF-8");
  EXPECT_EQ(phonesIn("030 901820, 0151 12345678"), (Strings{"030 901820", "0151 12345678"}));
  EXPECT_THAT(phonesIn("650-253-0000"), IsEmpty());
}

TEST(DetectedPhones, ALanguageAloneStandsForTheCountryOfMostOfItsSpeakers) {
  const UserLocaleIs german("de.UTF-8");
  EXPECT_EQ(phonesIn("030 901820"), Strings{"030 901820"});
}

TEST(DetectedPhones, ABareRunOfDigitsIsOneBehindAWordForPhones) {
  EXPECT_THAT(phonesIn("6502530000"), IsEmpty());
  EXPECT_EQ(phonesIn("call 6502530000"), Strings{"6502530000"});
  EXPECT_EQ(phonesIn("Tel.: 6502530000"), Strings{"6502530000"});
  EXPECT_EQ(phonesIn("Phone number: 6502530000"), Strings{"6502530000"});
}

TEST(DetectedPhones, BehindAWordForOtherNumbersIsNone) {
  for (const char* text : {"Order 650-253-0000", "Order number: 650-253-0000", "Invoice no. 650-253-0000",
                           "Account #650-253-0000", "Card 650 253 0000", "Ticket ID 650-253-0000"}) {
    EXPECT_THAT(phonesIn(text), IsEmpty()) << text;
  }
}

TEST(DetectedPhones, OtherNumbersAreNone) {
  for (const char* text : {"4111 1111 1111 1111",
                           "ISBN 978-3-16-148410-0",
                           "978-3-16-148410-0",
                           "192.168.100.200",
                           "10.20.30.40",
                           "1,234,567,890",
                           "$650 253 0000",
                           "650 253 0000 €",
                           "650.253.0000.1",
                           "12345-67890-12345-67890",
                           "550e8400-e29b-41d4-a716-446655440000",
                           "v650.253.0000",
                           "20261121 140533",
                           "00000010 20 31 32 33 34 35 36 37",
                           "1 2 3 4 5 6 7 8 9 10",
                           "100 200 300 400 500 600",
                           "0x6502530000",
                           "/650-253-0000",
                           "x=650-253-0000",
                           "650-253-0000-abc",
                           "a650-253-0000",
                           "12:30:45 253 0000",
                           "3.141592653589793",
                           "1600 x 1200 x 32",
                           "000-000-0000",
                           "2026-11-21 14:05:33"}) {
    EXPECT_THAT(phonesIn(text), IsEmpty()) << text;
  }
}

}  // namespace
}  // namespace Nimbrel
