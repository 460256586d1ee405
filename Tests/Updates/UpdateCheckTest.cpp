#include "Updates/UpdateCheck.h"

#include "Support/Ed25519Key.h"
#include "Support/FakeHttpsFetcher.h"
#include "Support/UpdateFeed.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::feedOf;
using ::testing::IsEmpty;

const std::string feedURL = "https://updates.example/feed.xml";
const std::string downloadURL = "https://updates.example/nimbrel_1.3.deb";
const std::string download = "the new program";

/// Looks of a program of version 1.2 at servers that a test lays out.
class UpdateCheckTest : public ::testing::Test {
 protected:
  UpdateCheckTest() { fetcher_.answers = {{feedURL, feed(key_.signatureText(download))}, {downloadURL, download}}; }

  static std::string feed(const std::string& signature) {
    return feedOf("1.3", downloadURL, download.size(), signature);
  }
  /// The version that was found, "none", or why not.
  std::string look(const std::string& skipped = {}) {
    std::optional<UpdateOutcome> outcome;
    lookForUpdate(fetcher_, source(skipped), &context_, [&](UpdateOutcome result) { outcome = std::move(result); });
    EXPECT_FALSE(outcome) << "not within the call";
    EXPECT_TRUE(Testing::waitUntil([&] { return outcome.has_value(); }));
    if (!outcome) return "nothing";
    if (!*outcome) return outcome->error().message;
    found_ = outcome->value();
    return found_ ? found_->offer.version : "none";
  }
  [[nodiscard]] UpdateSource source(const std::string& skipped = {}) const {
    return {.feedURL = feedURL, .key = key_.publicKey(), .running = *Version::parse("1.2"), .skipped = skipped};
  }

  Testing::Ed25519Key key_;
  Testing::FakeHttpsFetcher fetcher_;
  QObject context_;
  std::optional<VerifiedUpdate> found_;
};

TEST_F(UpdateCheckTest, FindsAReleaseWhoseDownloadIsSigned) {
  EXPECT_EQ(look(), "1.3");
  ASSERT_TRUE(found_);
  EXPECT_EQ(*found_->download, download);
  EXPECT_EQ(found_->offer.notes, "<p>Faster.</p>");
  EXPECT_THAT(fetcher_.asked, ElementsAre(feedURL, downloadURL));
  EXPECT_THAT(fetcher_.limits, ElementsAre(mostFeedBytes, download.size()));
}

TEST_F(UpdateCheckTest, ASignatureByAnotherKeyIsWrong) {
  fetcher_.answers[feedURL] = feed(Testing::Ed25519Key().signatureText(download));
  EXPECT_EQ(look(), "the signature of version 1.3 is wrong");
}

TEST_F(UpdateCheckTest, ADownloadThatWasTamperedWithIsWrong) {
  fetcher_.answers[downloadURL] = "the bad program";
  ASSERT_EQ(fetcher_.answers[downloadURL].size(), download.size());
  EXPECT_EQ(look(), "the signature of version 1.3 is wrong");
}

TEST_F(UpdateCheckTest, WithoutASignatureNothingIsDownloaded) {
  fetcher_.answers[feedURL] = feed("");
  EXPECT_EQ(look(), "version 1.3 is not signed");
  EXPECT_THAT(fetcher_.asked, ElementsAre(feedURL));
}

TEST_F(UpdateCheckTest, ADownloadOfAnotherSizeIsRefused) {
  fetcher_.answers[downloadURL] = "half";
  EXPECT_EQ(look(), "version 1.3 has another size than it should");
}

TEST_F(UpdateCheckTest, WhatIsNotNewerIsNotDownloaded) {
  fetcher_.answers[feedURL] = feedOf("1.2", downloadURL, download.size(), key_.signatureText(download));
  EXPECT_EQ(look(), "none");
  EXPECT_THAT(fetcher_.asked, ElementsAre(feedURL));
}

TEST_F(UpdateCheckTest, ASkippedVersionIsNotDownloaded) {
  EXPECT_EQ(look("1.3"), "none");
  EXPECT_THAT(fetcher_.asked, ElementsAre(feedURL));
  EXPECT_EQ(look("1.2.9"), "1.3") << "another one is";
}

TEST_F(UpdateCheckTest, AServerWithoutAnAnswerIsToldOf) {
  fetcher_.answers.erase(downloadURL);
  EXPECT_EQ(look(), "no answer");
  fetcher_.answers.clear();
  EXPECT_EQ(look(), "no answer");
}

TEST_F(UpdateCheckTest, AFeedThatIsNoneIsToldOf) {
  fetcher_.answers[feedURL] = "<html><body>Not found</body></html>";
  EXPECT_EQ(look(), "the feed is no RSS");
  fetcher_.answers[feedURL] = "Not found";
  EXPECT_EQ(look(), "the feed is no XML");
}

TEST_F(UpdateCheckTest, TellsNothingOnceNobodyWantsToKnow) {
  auto context = std::make_unique<QObject>();
  bool isTold = false;
  lookForUpdate(fetcher_, source(), context.get(), [&](const UpdateOutcome&) { isTold = true; });
  context.reset();
  EXPECT_EQ(look(), "1.3") << "turns the event loop";
  EXPECT_FALSE(isTold);
}

}  // namespace
}  // namespace Nimbrel
