#include "Store/SyncRun.h"

#include "StoreFixture.h"
#include "Support/Pictures.h"
#include "Support/Waiting.h"

#include <QSignalSpy>

#include <filesystem>
#include <fstream>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::namesOf;
using ::testing::SizeIs;
using Testing::TemporaryFolder;
using Testing::waitUntil;

constexpr const char* passphrase = "correct horse";

std::size_t filesIn(const std::string& folder) {
  const auto entries = fs::recursive_directory_iterator(folder);
  return static_cast<std::size_t>(
      std::count_if(begin(entries), end(entries), [](const auto& entry) { return entry.is_regular_file(); }));
}

class SyncRunTest : public ::testing::Test {
 protected:
  SyncRunTest() {
    QObject::connect(&run_, &SyncRun::ended, &run_, [this](const Result<SyncResult>& result) {
      outcomes_.push_back(result ? std::to_string(result.value().exported) + " sent, " +
                                       std::to_string(result.value().imported) + " received"
                                 : result.error().message);
    });
  }

  void addPictures(int count) const {
    for (int i = 0; i < count; ++i) folder_.write("library/" + std::to_string(i) + ".png", "picture");
  }
  void start(std::string_view secret = passphrase) {
    run_.start(folder_.path("library"), folder_.path("vault"), secret);
  }

  TemporaryFolder folder_;
  SyncRun run_;
  std::vector<std::string> outcomes_;
};

TEST_F(SyncRunTest, TellsTheOutcomeInALaterTurn) {
  addPictures(3);
  start();
  EXPECT_THAT(outcomes_, IsEmpty());
  ASSERT_TRUE(waitUntil([&] { return !outcomes_.empty(); }));
  EXPECT_THAT(outcomes_, ElementsAre("3 sent, 0 received"));
  EXPECT_EQ(filesIn(folder_.path("vault")), 3U);
}

TEST_F(SyncRunTest, RunsThatOverlapWaitForOneAnother) {
  addPictures(3);
  start();
  start("short");
  start();
  ASSERT_TRUE(waitUntil([&] { return outcomes_.size() == 3; }));
  EXPECT_THAT(outcomes_,
              ElementsAre("3 sent, 0 received", "Use a passphrase with at least 8 characters", "0 sent, 0 received"));
}

TEST_F(SyncRunTest, ProgressIsThereWhileARunIsAndEndsAtTheWhole) {
  addPictures(200);
  std::vector<std::optional<SyncProgress>> told;
  QObject::connect(&run_, &SyncRun::progressChanged, &run_, [&] { told.push_back(run_.progress()); });
  EXPECT_EQ(run_.progress(), std::nullopt);
  start();
  EXPECT_EQ(run_.progress(), SyncProgress());
  ASSERT_TRUE(waitUntil([&] { return !outcomes_.empty(); }));
  ASSERT_GE(told.size(), 3U);
  EXPECT_LE(told.size(), 110U) << "and not once for each file";
  EXPECT_EQ(told.back(), std::nullopt);
  EXPECT_EQ(told[told.size() - 2], (SyncProgress{.done = 200, .all = 200}));
  EXPECT_EQ(run_.progress(), std::nullopt);
}

TEST_F(SyncRunTest, ProgressStaysWhileAnotherRunWaits) {
  addPictures(3);
  std::vector<std::optional<SyncProgress>> atEnds;
  QObject::connect(&run_, &SyncRun::ended, &run_, [&] { atEnds.push_back(run_.progress()); });
  start();
  start();
  ASSERT_TRUE(waitUntil([&] { return atEnds.size() == 2; }));
  EXPECT_THAT(atEnds, ElementsAre(SyncProgress(), std::nullopt));
}

TEST_F(SyncRunTest, GoingAwayStopsARunBetweenTwoFilesAndBeginsNoOther) {
  addPictures(1000);
  bool isTold = false;
  {
    SyncRun run;
    QObject::connect(&run, &SyncRun::ended, [&] { isTold = true; });
    run.start(folder_.path("library"), folder_.path("vault"), passphrase);
    run.start(folder_.path("library"), folder_.path("never made"), passphrase);
    ASSERT_TRUE(waitUntil([&] { return run.progress()->done > 0; }));
  }
  EXPECT_FALSE(isTold);
  EXPECT_FALSE(fs::exists(folder_.path("never made")));
  EXPECT_GT(filesIn(folder_.path("vault")), 0U);
  EXPECT_LT(filesIn(folder_.path("vault")), 1000U);
  for (const auto& entry : fs::directory_iterator(folder_.path("vault"))) {
    EXPECT_FALSE(entry.path().filename().native().starts_with('.')) << entry.path();
  }
}

class StoreSync : public Testing::StoreFixture {
 protected:
  [[nodiscard]] std::string vault() const { return home_.path("vault"); }
  /// All texts of the status until the exchange has ended, in their order.
  [[nodiscard]] std::vector<std::string> statusesOf(Store& store, const std::string& secret = passphrase) const {
    std::vector<std::string> statuses;
    const QObject context;
    bool hasEnded = false;
    QObject::connect(&store, &Store::statusChanged, &context, [&] { statuses.push_back(store.status()); });
    QObject::connect(&store, &Store::syncEnded, &context, [&] { hasEnded = true; });
    store.syncEncrypted(secret);
    EXPECT_TRUE(waitUntil([&] { return hasEnded; }));
    return statuses;
  }
  /// A second home that exchanges with the same vault.
  [[nodiscard]] std::unique_ptr<Store> openOther() {
    auto store = other_.open(ProcessRole::tool);
    store->settings().syncRoot.set(vault());
    return store;
  }

  Testing::StoreHome other_;
};

TEST_F(StoreSync, WithoutAFolderNothingRuns) {
  Testing::writePicture(home_.inLibrary("a.png"), 10, 10, 1);
  EXPECT_THAT(statusesOf(*store_), ElementsAre("Choose a sync folder first"));
  EXPECT_EQ(store_->syncProgress(), std::nullopt);
  EXPECT_THAT(store_->shots(), IsEmpty());
}

TEST_F(StoreSync, AnEmptyLibraryAndAnEmptyVaultComplete) {
  store_->settings().syncRoot.set(vault());
  EXPECT_THAT(statusesOf(*store_),
              ElementsAre("Syncing encrypted library…", "Encrypted sync complete · 0 sent · 0 received"));
}

TEST_F(StoreSync, AShortPassphraseFailsAndTouchesNothing) {
  store_->settings().syncRoot.set(vault());
  EXPECT_THAT(statusesOf(*store_, "1234567"),
              ElementsAre("Syncing encrypted library…", "Sync failed: Use a passphrase with at least 8 characters"));
  EXPECT_FALSE(fs::exists(vault()));
}

TEST_F(StoreSync, WhatCannotBeDoneIsSaidInWords) {
  std::ofstream(vault()).put('x');
  store_->settings().syncRoot.set(vault());
  EXPECT_THAT(statusesOf(*store_),
              ElementsAre("Syncing encrypted library…", "Sync failed: Cannot make the folder " + vault() +
                                                            ": A file stands where a folder is needed"));
}

TEST_F(StoreSync, WhatComesInIsInTheCatalogueWhenTheStatusSaysSo) {
  home_.addFile(home_.inLibrary("2024/2024-01/a.png"));
  home_.addFile(home_.inLibrary("b.png"));
  store_->settings().syncRoot.set(vault());
  EXPECT_THAT(statusesOf(*store_),
              ElementsAre("Syncing encrypted library…", "Encrypted sync complete · 2 sent · 0 received"));
  const auto other = openOther();
  std::size_t shotsWhenComplete = 0;
  QObject::connect(other.get(), &Store::statusChanged, other.get(), [&] { shotsWhenComplete = other->shots().size(); });
  EXPECT_THAT(statusesOf(*other),
              ElementsAre("Syncing encrypted library…", "Encrypted sync complete · 0 sent · 2 received"));
  EXPECT_EQ(shotsWhenComplete, 2U);
  EXPECT_THAT(namesOf(other->shots()), ::testing::UnorderedElementsAre("a.png", "b.png"));
  for (const auto& shot : other->shots()) EXPECT_TRUE(shot->filed);
}

TEST_F(StoreSync, ASecondPressWaitsForTheFirst) {
  home_.addFile(home_.inLibrary("a.png"));
  store_->settings().syncRoot.set(vault());
  std::vector<std::string> outcomes;
  QObject::connect(store_.get(), &Store::syncEnded, store_.get(), [&] { outcomes.push_back(store_->status()); });
  store_->syncEncrypted(passphrase);
  store_->syncEncrypted(passphrase);
  ASSERT_TRUE(waitUntil([&] { return outcomes.size() == 2; }));
  EXPECT_THAT(outcomes, ElementsAre("Encrypted sync complete · 1 sent · 0 received",
                                    "Encrypted sync complete · 0 sent · 0 received"));
}

TEST_F(StoreSync, TellsProgressWhileItRuns) {
  home_.addFile(home_.inLibrary("a.png"));
  store_->settings().syncRoot.set(vault());
  const QSignalSpy told(store_.get(), &Store::syncProgressChanged);
  store_->syncEncrypted(passphrase);
  EXPECT_EQ(store_->syncProgress(), SyncProgress());
  ASSERT_TRUE(waitUntil([&] { return !store_->syncProgress(); }));
  EXPECT_GE(told.count(), 2);
}

TEST_F(StoreSync, AStoreThatGoesWhileAnExchangeRunsLeavesWholeFiles) {
  for (int i = 0; i < 300; ++i) home_.addFile(home_.inLibrary(std::to_string(i) + ".png"));
  store_->settings().syncRoot.set(vault());
  store_->syncEncrypted(passphrase);
  store_.reset();
  const auto other = openOther();
  const auto files = fs::exists(vault()) ? filesIn(vault()) : 0;
  EXPECT_EQ(statusesOf(*other).back(), "Encrypted sync complete · 0 sent · " + std::to_string(files) + " received");
}

}  // namespace
}  // namespace Nimbrel
