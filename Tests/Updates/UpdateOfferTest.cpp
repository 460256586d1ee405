#include "Updates/UpdateOffer.h"

#include "Support/Ed25519Key.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

/// Choices by a program of version 1.2.
class UpdateOfferTest : public ::testing::Test {
 protected:
  [[nodiscard]] FeedItem release(const std::string& version) const {
    return {.version = version,
            .notes = "new",
            .url = "https://updates.example/" + version + ".deb",
            .length = "1000",
            .signature = signature_};
  }
  /// The version that is offered, "none", or why not.
  static std::string choice(const std::vector<FeedItem>& items) {
    const auto offer = chooseUpdate(items, *Version::parse("1.2"));
    if (!offer) return offer.error().message;
    return offer.value() ? offer.value()->version : "none";
  }

  Testing::Ed25519Key key_;
  std::string signature_ = key_.signatureText("download");
};

TEST_F(UpdateOfferTest, TheNewestIsOfferedWhereverItStands) {
  EXPECT_EQ(choice({release("1.3"), release("1.10"), release("1.9")}), "1.10");
}

TEST_F(UpdateOfferTest, WhatIsNotNewerIsNot) {
  EXPECT_EQ(choice({}), "none");
  EXPECT_EQ(choice({release("1.2"), release("1.2.0"), release("1.1.9"), release("0")}), "none");
}

TEST_F(UpdateOfferTest, AReleaseWithoutAReadableVersionIsPassedOver) {
  EXPECT_EQ(choice({release(""), release("2.0-beta"), release("1.3")}), "1.3");
}

TEST_F(UpdateOfferTest, AllThatItSaysIsTakenOver) {
  const auto offer = chooseUpdate({release("1.3")}, *Version::parse("1.2"));
  ASSERT_TRUE(offer && offer.value());
  EXPECT_EQ(offer.value()->notes, "new");
  EXPECT_EQ(offer.value()->url, "https://updates.example/1.3.deb");
  EXPECT_EQ(offer.value()->length, 1000U);
  EXPECT_EQ(offer.value()->signature, key_.sign("download"));
}

TEST_F(UpdateOfferTest, OfTwoOfTheSameVersionTheFirstCounts) {
  auto second = release("1.3.0");
  EXPECT_EQ(choice({release("1.3"), second}), "1.3");
}

TEST_F(UpdateOfferTest, WithoutASignatureNothingIsOffered) {
  auto unsignedRelease = release("1.4");
  unsignedRelease.signature.clear();
  EXPECT_EQ(choice({unsignedRelease}), "version 1.4 is not signed");
  EXPECT_EQ(choice({release("1.3"), unsignedRelease}), "version 1.4 is not signed") << "nor an older one instead";
  unsignedRelease.signature = "c2hvcnQ=";
  EXPECT_EQ(choice({unsignedRelease}), "version 1.4 has a damaged signature");
}

TEST_F(UpdateOfferTest, ADownloadThatIsNotHttpsIsNotOffered) {
  for (const auto* url : {"", "http://updates.example/a.deb", "file:///a.deb", "//updates.example/a.deb", "a.deb"}) {
    auto item = release("1.4");
    item.url = url;
    EXPECT_EQ(choice({item}), "version 1.4 has no https address") << url;
  }
}

TEST_F(UpdateOfferTest, ADownloadWithoutASensibleSizeIsNotOffered) {
  for (const auto* length : {"", "0", "-1", "1.5", "12x", " 12", "268435457", "99999999999999999999999"}) {
    auto item = release("1.4");
    item.length = length;
    EXPECT_EQ(choice({item}), "version 1.4 has no size that can be") << length;
  }
  auto largest = release("1.4");
  largest.length = "268435456";
  EXPECT_EQ(choice({largest}), "1.4");
}

}  // namespace
}  // namespace Nimbrel
