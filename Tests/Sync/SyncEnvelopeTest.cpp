#include "Sync/SyncEnvelope.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>

namespace Nimbrel {
namespace {

struct Envelope {
  std::string relativePath;
  double modified = 0;
  std::string data;

  bool operator==(const Envelope&) const = default;
};

std::optional<Envelope> read(std::string payload) {
  const auto envelope = readEnvelope(payload);
  if (!envelope) return std::nullopt;
  return Envelope{std::string(envelope->relativePath), envelope->modified.count(), std::string(envelope->data)};
}

TEST(SyncEnvelope, ReadsItsMembersInAnyOrder) {
  const Envelope expected{"a/b.png", 1.5, "eA=="};
  EXPECT_EQ(read(R"({"relativePath":"a/b.png","modified":1.5,"data":"eA=="})"), expected);
  EXPECT_EQ(read(R"({"data":"eA==","modified":1.5,"relativePath":"a/b.png"})"), expected);
}

TEST(SyncEnvelope, ReadsThroughWhiteSpaceAndEscapes) {
  EXPECT_EQ(
      read(" {\n \"relative\\u0050ath\" :\t\"a\\/b.png\" ,\r\n\"modified\": 1.5e0 , \"data\" : \"eA=\\u003d\" } "),
      (Envelope{"a/b.png", 1.5, "eA=="}));
  EXPECT_EQ(read(R"({"relativePath":"a","modified":1,"data":"\/\/\/\/"})"), (Envelope{"a", 1, "////"}));
}

TEST(SyncEnvelope, IgnoresUnknownMembersOfAnyKind) {
  EXPECT_EQ(read(R"({"x":{"data":[1,{"y":null}],"z":"}"},"relativePath":"a","n":-1e9999,"modified":1,
                     "t":true,"f":false,"e":[],"o":{},"data":"","Data":3})"),
            (Envelope{"a", 1, ""}));
}

TEST(SyncEnvelope, OfAMemberThatComesTwiceTheLastCounts) {
  EXPECT_EQ(read(R"({"relativePath":"a","relativePath":"b","modified":1,"modified":2,"data":"!","data":""})"),
            (Envelope{"b", 2, ""}));
}

TEST(SyncEnvelope, EachMemberMustBeThereInItsType) {
  EXPECT_EQ(read(R"({"modified":1,"data":""})"), std::nullopt);
  EXPECT_EQ(read(R"({"relativePath":"a","data":""})"), std::nullopt);
  EXPECT_EQ(read(R"({"relativePath":"a","modified":1})"), std::nullopt);
  EXPECT_EQ(read(R"({"relativePath":1,"modified":1,"data":""})"), std::nullopt);
  EXPECT_EQ(read(R"({"relativePath":"a","modified":"1","data":""})"), std::nullopt);
  EXPECT_EQ(read(R"({"relativePath":"a","modified":1,"data":1})"), std::nullopt);
  EXPECT_EQ(read(R"({"relativePath":null,"modified":1,"data":""})"), std::nullopt);
}

TEST(SyncEnvelope, TheDataMustBeBase64) {
  for (const char* data : {"e", "eA", "eA=", "eA===", "=eA=", "====", "e A=", "eA==eA==", "eA-_", "e\\nA=="}) {
    EXPECT_EQ(read(R"({"relativePath":"a","modified":1,"data":")" + std::string(data) + "\"}"), std::nullopt) << data;
  }
}

TEST(SyncEnvelope, NothingMayStandBehindOrBeMissing) {
  const std::string whole = R"({"relativePath":"a","modified":1,"data":""})";
  EXPECT_TRUE(read(whole).has_value());
  EXPECT_EQ(read(whole + "x"), std::nullopt);
  EXPECT_EQ(read(whole + whole), std::nullopt);
  EXPECT_EQ(read("[" + whole + "]"), std::nullopt);
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(read(whole.substr(0, length)), std::nullopt) << length;
  }
}

std::optional<double> readBack(double modified) {
  const auto read = readEnvelope(*std::make_unique<std::string>(envelopeStart("a", Seconds(modified)) + "\"}"));
  return read ? std::optional(read->modified.count()) : std::nullopt;
}

TEST(SyncEnvelope, DatesKeepEveryBit) {
  for (const double date : {0.0, 0.1, 721'692'800.123456789, -1e9 / 3, 1e15 + 0.5, 5e-324, -1e300}) {
    EXPECT_EQ(readBack(date), date);
    EXPECT_EQ(readBack(std::nextafter(date, 1e308)), std::nextafter(date, 1e308));
  }
  EXPECT_EQ(readBack(std::numeric_limits<double>::max()), std::numeric_limits<double>::max());
}

TEST(SyncEnvelope, PathsOfAnyCharactersAreReadBackAsTheyWere) {
  std::string path = "\xc3\xa4/\xf0\x9f\x98\x80 \"\\\x7f";
  for (char c = 1; c < 0x20; ++c) path += c;
  auto text = envelopeStart(path, Seconds(1)) + std::string(envelopeEnd);
  const auto envelope = readEnvelope(text);
  ASSERT_TRUE(envelope.has_value());
  EXPECT_EQ(envelope->relativePath, path);
}

TEST(SyncEnvelope, TheReferenceDateIsTheBeginningOf2001) {
  EXPECT_EQ(sinceReferenceDate(timestamp(978'307'200)), Seconds(0));
  EXPECT_EQ(momentAfterReferenceDate(Seconds(1.5)), timestamp(978'307'201.5));
}

}  // namespace
}  // namespace Nimbrel
