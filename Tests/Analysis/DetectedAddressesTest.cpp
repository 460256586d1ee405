#include "Analysis/DetectedAddresses.h"
#include "Analysis/DetectedTesting.h"
#include "Analysis/MapService.h"
#include "Foundation/Text.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

using ::testing::IsEmpty;
using Testing::Strings;

Strings addressesIn(std::string_view text) { return Testing::textsIn(text, DetectedItem::Kind::address); }

TEST(DetectedAddresses, EnglishOnesAreFound) {
  for (const char* text :
       {"1600 Amphitheatre Parkway, Mountain View, CA 94043", "123 Main St, Apt 4B, Springfield, IL 62704-1234",
        "123 Main St\nSpringfield, IL 62704", "350 Fifth Avenue, New York, NY 10118", "350 5th Ave, Suite 200",
        "10 Downing Street, London SW1A 2AA", "10 Downing Street\nLondon\nSW1A 2AA", "221B Baker Street",
        "5 Elm Drive, Boston, MA 02110", "77 W. Washington Street, Chicago, IL", "24 Sussex Drive, Ottawa, ON K1M 1M4",
        "1 N. Main St., Dover, DE 19901, USA"}) {
    EXPECT_EQ(addressesIn("Meet at " + std::string(text) + " please"), Strings{text});
  }
}

TEST(DetectedAddresses, GermanOnesAreFound) {
  for (const char* text :
       {"Musterstraße 12, 12345 Berlin", "Musterstr. 12a, 12345 Berlin", "Hauptstrasse 3\n80331 München",
        "Berliner Straße 5-7, 60311 Frankfurt am Main", "Unter den Linden 5\n10117 Berlin",
        "Am Alten Markt 3, 14467 Potsdam", "Kirchweg 4, D-50667 Köln, Deutschland", "Lindenallee 17",
        "Straße des 17. Juni 135, 10623 Berlin", "Musterstraße 12"}) {
    const auto expected = std::string_view(text) == "Lindenallee 17" ? Strings{} : Strings{text};
    EXPECT_EQ(addressesIn("Wir sind in der " + std::string(text)), expected) << text;
  }
}

TEST(DetectedAddresses, WhatOnlyLooksLikeOneIsNone) {
  for (const char* text :
       {"16 GB Flash Drive", "2 Way", "the 5 Star Place", "3 Easy Way to win", "100 m Lauf", "12 people on Main Street",
        "Main Street", "Platz 3", "Weg 2", "Der Preis stieg 3,5", "version 12 Street.js", "5 st", "1st St",
        "$12 Main Street", "Seite 12, 12345 Wörter", "Block 7, 12345 Items", "7 main street", "Straße 5 km"}) {
    EXPECT_THAT(addressesIn(text), IsEmpty()) << text;
  }
}

TEST(DetectedAddresses, AnAddressIsOneItemWithItsNumbers) {
  EXPECT_EQ(Testing::idsIn("12 March Street, Boston, MA 02110 on 5 May 2026"),
            (Strings{"Address|12 March Street, Boston, MA 02110", "Date|5 May 2026"}));
}

TEST(DetectedAddresses, AreOpenedWithTheMapService) {
  const auto found = DetectedAddresses::addresses(u"Musterstraße 12\n12345 Berlin", "https://maps.example.invalid");
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].item.text, "Musterstraße 12\n12345 Berlin");
  EXPECT_EQ(found[0].item.url, "https://maps.example.invalid/?q=Musterstra%C3%9Fe%2012%0A12345%20Berlin");
}

TEST(MapService, EncodesWhateverAnAddressHolds) {
  EXPECT_EQ(MapService::searchUrl("https://maps.example.invalid", "A&B=C+D #1/2?\"%20"),
            "https://maps.example.invalid/?q=A%26B%3DC%2BD%20%231%2F2%3F%22%2520");
  EXPECT_EQ(MapService::searchUrl("https://maps.example.invalid/", "a"), "https://maps.example.invalid/?q=a");
}

TEST(MapService, IsReachedSafely) { EXPECT_TRUE(MapService::baseUrl().starts_with("https://")); }

}  // namespace
}  // namespace Nimbrel
