#include "App/UpdateController.h"

#include "Support/Ed25519Key.h"
#include "Support/FakeHttpsFetcher.h"
#include "Support/FakeWorkspace.h"
#include "Support/LogRecorder.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/UpdateFeed.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QFileInfo>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;
using Testing::waitUntil;

const std::string feedURL = "https://updates.example/feed.xml";
const std::string downloadURL = "https://updates.example/nimbrel_1.3.deb";
const std::string download = "the new program";

/// A program of version 1.2, before servers that have 1.3.
class UpdateControllerTest : public ::testing::Test {
 protected:
  UpdateControllerTest() {
    answers_ = {{feedURL, Testing::feedOf("1.3", downloadURL, download.size(), key_.signatureText(download))},
                {downloadURL, download}};
  }

  void start(UpdateSettings settings) {
    controller_.reset();
    fetcher_ = nullptr;
    const auto makeFetcher = [this] {
      auto fetcher = std::make_unique<Testing::FakeHttpsFetcher>();
      fetcher->answers = answers_;
      fetcher->isSilent = isSilent_;
      fetcher_ = fetcher.get();
      return fetcher;
    };
    const auto openDefaults = [this] {
      isRemembered_ = true;
      return home_.suiteOfOtherProcess();
    };
    controller_ = std::make_unique<UpdateController>(std::move(settings), *store_, workspace_,
                                                     UpdateController::Means{.makeFetcher = makeFetcher,
                                                                             .openDefaults = openDefaults,
                                                                             .version = "1.2",
                                                                             .downloads = home_.path("Downloads")});
    QObject::connect(controller_.get(), &UpdateController::updateFound, controller_.get(),
                     [this](const VerifiedUpdate& update) { found_.push_back(update); });
  }
  void startReleased() { start({.feedURL = feedURL, .publicKey = key_.publicKeyText()}); }
  /// As if the program had looked so many seconds ago.
  void setLastCheck(double secondsAgo) {
    home_.suiteOfOtherProcess()->set(QStringLiteral("lastUpdateCheck"), secondsSince1970(home_.now) - secondsAgo);
  }
  /// Runs what starts by itself with the event loop.
  void letItStart() { Testing::runEventLoopFor(std::chrono::milliseconds(50)); }
  [[nodiscard]] bool finds(std::size_t count) {
    return waitUntil([&] { return found_.size() >= count; });
  }
  [[nodiscard]] bool saysFailure() {
    return waitUntil([this] { return store_->status().starts_with("Update check failed: "); });
  }

  Testing::StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::tool);
  Testing::FakeWorkspace workspace_;
  Testing::Ed25519Key key_;
  std::map<std::string, std::string> answers_;
  bool isSilent_ = false;
  bool isRemembered_ = false;
  std::unique_ptr<UpdateController> controller_;
  Testing::FakeHttpsFetcher* fetcher_ = nullptr;  ///< once there is one
  std::vector<VerifiedUpdate> found_;
};

TEST_F(UpdateControllerTest, ABuildWithoutUpdatesSaysSoAndHasNothingToConnectWith) {
  for (const auto& settings : {UpdateSettings(), UpdateSettings{.feedURL = feedURL, .publicKey = ""},
                               UpdateSettings{.feedURL = "http://updates.example/feed.xml", .publicKey = "key"},
                               UpdateSettings{.feedURL = "https://NIMBREL_FEED", .publicKey = "key"}}) {
    store_->setStatus("");
    start(settings);
    letItStart();
    controller_->checkForUpdates();
    letItStart();
    EXPECT_EQ(store_->status(), "No updates are set up for this build") << settings.feedURL;
    EXPECT_EQ(fetcher_, nullptr);
    EXPECT_FALSE(isRemembered_);
  }
}

TEST_F(UpdateControllerTest, AReleasedBuildLooksWhenItStartsAndSaysNothingUntilThereIsSomethingNew) {
  startReleased();
  ASSERT_TRUE(finds(1));
  EXPECT_EQ(found_.front().offer.version, "1.3");
  EXPECT_EQ(*found_.front().download, download);
  EXPECT_EQ(store_->status(), "");
  EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(home_.path("Downloads")))) << "nothing is saved unasked";
}

TEST_F(UpdateControllerTest, ItLooksOnceADay) {
  setLastCheck(86'000);
  startReleased();
  letItStart();
  EXPECT_EQ(fetcher_, nullptr);
  setLastCheck(86'401);
  startReleased();
  ASSERT_TRUE(finds(1));
  startReleased();
  letItStart();
  EXPECT_THAT(found_, SizeIs(1)) << "it has just looked";
}

TEST_F(UpdateControllerTest, ItLooksAgainAfterTheClockWasSetBack) {
  setLastCheck(-1'000'000);
  startReleased();
  EXPECT_TRUE(finds(1));
}

TEST_F(UpdateControllerTest, AFailureIsLoggedAndNotTriedAgainThatDay) {
  answers_.clear();
  const Testing::LogRecorder log;
  startReleased();
  ASSERT_TRUE(waitUntil([&] { return !log.lines().empty(); }));
  EXPECT_THAT(log.lines(), ElementsAre("Update check failed: no answer"));
  EXPECT_EQ(store_->status(), "");
  startReleased();
  letItStart();
  EXPECT_EQ(fetcher_, nullptr);
}

TEST_F(UpdateControllerTest, WhoAsksIsToldWhatIsNew) {
  setLastCheck(10);
  startReleased();
  controller_->checkForUpdates();
  EXPECT_EQ(store_->status(), "Checking for updates…");
  ASSERT_TRUE(finds(1));
  EXPECT_EQ(store_->status(), "Nimbrel 1.3 is available");
}

TEST_F(UpdateControllerTest, WhoAsksIsToldThatNothingIs) {
  setLastCheck(10);
  answers_[feedURL] = Testing::feedOf("1.2", downloadURL, download.size(), key_.signatureText(download));
  startReleased();
  controller_->checkForUpdates();
  EXPECT_TRUE(waitUntil([this] { return store_->status() == "Nimbrel 1.2 is the newest version"; }));
  EXPECT_THAT(found_, IsEmpty());
}

TEST_F(UpdateControllerTest, WhoAsksIsToldWhatWentWrong) {
  setLastCheck(10);
  answers_[downloadURL] = "the bad program";
  startReleased();
  controller_->checkForUpdates();
  ASSERT_TRUE(saysFailure());
  EXPECT_EQ(store_->status(), "Update check failed: the signature of version 1.3 is wrong");
  EXPECT_THAT(found_, IsEmpty());
}

TEST_F(UpdateControllerTest, AKeyThatIsNoneFailsBeforeAnythingIsAsked) {
  start({.feedURL = feedURL, .publicKey = "c2hvcnQ="});
  controller_->checkForUpdates();
  EXPECT_EQ(store_->status(), "Update check failed: this build has a damaged key");
  EXPECT_EQ(fetcher_, nullptr);
}

TEST_F(UpdateControllerTest, AskingAgainTakesThePlaceOfALookThatGoesOn) {
  setLastCheck(10);
  isSilent_ = true;
  startReleased();
  controller_->checkForUpdates();
  controller_->checkForUpdates();
  ASSERT_THAT(fetcher_->contexts, SizeIs(2));
  EXPECT_TRUE(fetcher_->contexts.front().isNull());
  EXPECT_FALSE(fetcher_->contexts.back().isNull());
}

TEST_F(UpdateControllerTest, ALookOfItsOwnDoesNotTakeThePlaceOfTheUsers) {
  setLastCheck(10);
  startReleased();
  controller_->checkForUpdates();
  // It would be due.
  setLastCheck(-1'000'000);
  letItStart();
  ASSERT_TRUE(finds(1));
  EXPECT_EQ(store_->status(), "Nimbrel 1.3 is available");
  EXPECT_THAT(fetcher_->asked, ElementsAre(feedURL, downloadURL));
}

TEST_F(UpdateControllerTest, ASkippedVersionIsOnlyFoundByWhoAsks) {
  startReleased();
  ASSERT_TRUE(finds(1));
  controller_->skip(found_.front());
  setLastCheck(90'000);
  startReleased();
  ASSERT_TRUE(waitUntil([this] { return fetcher_ != nullptr && !fetcher_->asked.empty(); }));
  letItStart();
  EXPECT_THAT(fetcher_->asked, ElementsAre(feedURL));
  EXPECT_THAT(found_, SizeIs(1));
  controller_->checkForUpdates();
  EXPECT_TRUE(finds(2));
}

TEST_F(UpdateControllerTest, SavingPutsTheDownloadAmongTheOthersAndShowsItThere) {
  startReleased();
  ASSERT_TRUE(finds(1));
  controller_->save(found_.front());
  ASSERT_TRUE(waitUntil([this] { return !workspace_.revealed.empty(); }));
  const auto path = home_.path("Downloads/nimbrel_1.3.deb");
  EXPECT_THAT(workspace_.revealed, ElementsAre(path));
  EXPECT_EQ(Testing::contentOf(path), download);
  EXPECT_EQ(store_->status(), "Saved nimbrel_1.3.deb");
  EXPECT_THAT(workspace_.files, IsEmpty()) << "nothing is opened or installed";
}

TEST_F(UpdateControllerTest, WhatCannotBeSavedIsSaid) {
  home_.folder().write("Downloads", "a file");
  startReleased();
  ASSERT_TRUE(finds(1));
  controller_->save(found_.front());
  EXPECT_TRUE(waitUntil([this] { return store_->status().starts_with("The update could not be saved: "); }));
  EXPECT_THAT(workspace_.revealed, IsEmpty());
}

TEST_F(UpdateControllerTest, ThisBuildHasPlaceholdersBesideItsProgram) {
  const auto folder = QFileInfo(Testing::programPath("nimbrel")).path().toStdString();
  const auto settings = UpdateSettings::read(folder + "/nimbrel-info.json");
  EXPECT_THAT(settings.feedURL, StartsWith("NIMBREL_"));
  EXPECT_THAT(settings.publicKey, StartsWith("NIMBREL_"));
  EXPECT_FALSE(settings.isConfigured(ProcessRole::mainApplication));
}

}  // namespace
}  // namespace Nimbrel
