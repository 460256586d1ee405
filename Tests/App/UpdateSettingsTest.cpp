#include "App/UpdateSettings.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

const UpdateSettings released{.feedURL = "https://example.org/feed.xml", .publicKey = "a2V5"};

bool isConfigured(UpdateSettings settings) { return settings.isConfigured(ProcessRole::mainApplication); }

TEST(UpdateSettings, AReleasedBuildAsksForUpdates) { EXPECT_TRUE(isConfigured(released)); }

TEST(UpdateSettings, AFeedOverPlainHttpIsNone) {
  EXPECT_FALSE(isConfigured({.feedURL = "http://example.org/feed.xml", .publicKey = "a2V5"}));
  EXPECT_FALSE(isConfigured({.feedURL = "", .publicKey = "a2V5"}));
}

TEST(UpdateSettings, WithoutAKeyThereIsNoUpdate) {
  EXPECT_FALSE(isConfigured({.feedURL = released.feedURL, .publicKey = ""}));
}

TEST(UpdateSettings, PlaceholdersAreNoSettings) {
  EXPECT_FALSE(isConfigured({.feedURL = "https://NIMBREL_FEED_HOST/feed.xml", .publicKey = "a2V5"}));
  EXPECT_FALSE(isConfigured({.feedURL = released.feedURL, .publicKey = "NIMBREL_PUBLIC_KEY"}));
}

TEST(UpdateSettings, NoProcessButTheMainOneAsks) {
  for (const auto role : {ProcessRole::menuBarCompanion, ProcessRole::headless, ProcessRole::tool}) {
    EXPECT_FALSE(released.isConfigured(role));
  }
}

class UpdateSettingsFileTest : public ::testing::Test {
 protected:
  [[nodiscard]] UpdateSettings read(const std::string& content) const {
    folder_.write("nimbrel-info.json", content);
    return UpdateSettings::read(folder_.path("nimbrel-info.json"));
  }

  Testing::TemporaryFolder folder_;
};

TEST_F(UpdateSettingsFileTest, TheKeysAreRead) {
  EXPECT_EQ(read(R"({"SUFeedURL": "https://example.org/feed.xml", "SUPublicEDKey": "a2V5", "other": 1})"), released);
}

TEST_F(UpdateSettingsFileTest, WhatIsNoTextIsEmpty) {
  EXPECT_EQ(read(R"({"SUFeedURL": 7, "SUPublicEDKey": ["a"]})"), UpdateSettings());
}

TEST_F(UpdateSettingsFileTest, AFileThatIsMissingOrBrokenIsEmpty) {
  EXPECT_EQ(UpdateSettings::read(folder_.path("none.json")), UpdateSettings());
  for (const auto* content : {"", "{", "[]", R"({"SUFeedURL": "https://exam)"}) {
    EXPECT_EQ(read(content), UpdateSettings()) << content;
  }
}

}  // namespace
}  // namespace Nimbrel
