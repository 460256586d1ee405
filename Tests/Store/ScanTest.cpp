#include "Support/Pictures.h"
#include "Support/SmallDisk.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::FakeFileEvents;
using ::testing::IsEmpty;
using Testing::namesOf;
using Testing::shotNamed;
using Testing::StoreHome;
using ::testing::UnorderedElementsAre;
using Testing::waitUntil;

class ScanTest : public ::testing::Test {
 protected:
  StoreHome home_;
};

TEST_F(ScanTest, ScreenshotsOfTheSourcesWaitAndImagesOfTheLibraryAreFiled) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  home_.addFile(home_.desktop("holiday.png"));
  home_.addFile(home_.inLibrary("2026/2026-03/anything.jpg"));
  const auto store = home_.open(ProcessRole::headless);
  EXPECT_THAT(namesOf(store->shots()), UnorderedElementsAre("Screenshot 1.png", "anything.jpg"));
  EXPECT_FALSE(shotNamed(*store, "Screenshot 1.png")->filed);
  EXPECT_TRUE(shotNamed(*store, "anything.jpg")->filed);
  EXPECT_EQ(store->status(), "Added 2 shots");
  EXPECT_EQ(store->inboxCount(), 1U);
}

TEST_F(ScanTest, ARecordHoldsTheFactsOfItsFile) {
  const auto path = home_.desktop("Screenshot 1.png");
  Testing::writePicture(path, 120, 80);
  Testing::setModificationTime(path, 1'700'000'000);
  const auto store = home_.open(ProcessRole::headless);
  const auto shot = shotNamed(*store, "Screenshot 1.png");
  EXPECT_EQ(shot->path, path);
  EXPECT_EQ(shot->date, timestamp(1'700'000'000));
  EXPECT_EQ(shot->added, home_.now);
  EXPECT_EQ(shot->bytes, static_cast<std::int64_t>(std::filesystem::file_size(path)));
  EXPECT_EQ(shot->pixels(), "120 × 80");
  EXPECT_EQ(shot->appName, "");
  EXPECT_FALSE(shot->appAttributionTrusted);
}

TEST_F(ScanTest, OneShotIsOneShot) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  EXPECT_EQ(home_.open(ProcessRole::headless)->status(), "Added 1 shot");
}

TEST_F(ScanTest, TheStatusIsNotTouchedWhenNothingWasAdded) {
  const auto store = home_.open(ProcessRole::headless);
  store->importFiles({});
  store->scan();
  EXPECT_EQ(store->status(), "Nothing new to import");
}

TEST_F(ScanTest, FilesThatCannotBeReadAreCataloguedWithFallbacks) {
  for (const auto* name : {"Screenshot empty.png", "Screenshot cut.jpg", "Screenshot misnamed.heic"}) {
    home_.addFile(home_.desktop(name));
  }
  const auto store = home_.open(ProcessRole::headless);
  ASSERT_EQ(store->shots().size(), 3U);
  for (const auto& shot : store->shots()) EXPECT_FALSE(shot->pixels());
}

TEST_F(ScanTest, NamesOfAnyBytesAreCatalogued) {
  for (const std::string name : {"Screenshot \xFF\xFE.png", "Screenshot line\nfeed.png", "Screenshot \"it's\".png"}) {
    home_.addFile(home_.desktop(name));
  }
  const auto store = home_.open(ProcessRole::headless);
  EXPECT_EQ(store->shots().size(), 3U);
  store->scan();
  EXPECT_EQ(store->shots().size(), 3U);
}

TEST_F(ScanTest, AFileInASubfolderOfASourceIsNotFound) {
  home_.addFile(home_.desktop("below/Screenshot 1.png"));
  EXPECT_THAT(home_.open(ProcessRole::headless)->shots(), IsEmpty());
}

TEST_F(ScanTest, WithoutSourcesTheLibraryIsWalkedAllTheSame) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  home_.addFile(home_.inLibrary("a.png"));
  const auto store = home_.open(ProcessRole::mainApplication);
  store->settings().sources.set({});
  store->scan();
  EXPECT_THAT(namesOf(store->shots()), ElementsAre("a.png"));
}

TEST_F(ScanTest, AForgottenPathStaysOutAndAnImportBringsItBack) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = home_.open(ProcessRole::headless);
  store->database().remove(store->shots().front()->id, Database::IgnorePath::Yes);
  store->scan();
  EXPECT_THAT(store->shots(), IsEmpty());
  store->importFiles({path});
  EXPECT_EQ(store->shots().size(), 1U);
}

TEST_F(ScanTest, AFileThatIsGoneLosesItsRowAndIsWelcomeWhenItComesBack) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = home_.open(ProcessRole::headless);
  std::filesystem::remove(path);
  store->scan();
  EXPECT_THAT(store->shots(), IsEmpty());
  EXPECT_THAT(store->database().ignoredPaths(), IsEmpty());
  home_.addFile(path);
  store->scan();
  EXPECT_EQ(store->shots().size(), 1U);
}

TEST_F(ScanTest, ARowThatAnotherProcessMovedStays) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = home_.open(ProcessRole::mainApplication);
  store->scan();
  const auto other = home_.open(ProcessRole::tool);
  other->addTag("kept", other->shots());
  other->fileAll();
  store->scan();
  ASSERT_EQ(store->shots().size(), 1U);
  EXPECT_THAT(store->shots().front()->tags, ElementsAre("kept"));
}

TEST_F(ScanTest, AnotherFileThatGotTheIdOfOneThatIsGoneStays) {
  const auto gone = home_.addFile(home_.path("gone.png"));
  const auto store = home_.open(ProcessRole::mainApplication);
  store->importFiles({gone});
  const auto id = store->shots().front()->id;
  const auto other = home_.open(ProcessRole::tool);
  other->database().remove(id, Database::IgnorePath::No);
  other->importFiles({home_.addFile(home_.path("other.png"))});
  ASSERT_EQ(shotNamed(*other, "other.png")->id, id);
  other->importFiles({gone});
  std::filesystem::remove(gone);
  store->scan();
  EXPECT_THAT(namesOf(store->shots()), UnorderedElementsAre("gone.png", "other.png")) << "one is gone, under a new id";
  store->scan();
  EXPECT_THAT(namesOf(store->shots()), ElementsAre("other.png"));
}

TEST_F(ScanTest, AScanThatFindsNothingNewFilesWhatWaitsInTheInbox) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = home_.open(ProcessRole::mainApplication);
  store->scan();
  ASSERT_EQ(store->inboxCount(), 1U);
  store->settings().autoFile.set(true);
  store->scan();
  EXPECT_EQ(store->inboxCount(), 0U);
  EXPECT_FALSE(std::filesystem::exists(home_.desktop("Screenshot 1.png")));
  EXPECT_EQ(store->status(), "Filed 1 shot into the library");
}

TEST_F(ScanTest, AShotOutsideOfAllFoldersStaysWhileItsFileIsThere) {
  const auto path = home_.addFile(home_.path("elsewhere/a.png"));
  const auto store = home_.open(ProcessRole::mainApplication);
  store->importFiles({path});
  store->scan();
  EXPECT_EQ(store->shots().size(), 1U);
  std::filesystem::remove(path);
  store->scan();
  EXPECT_THAT(store->shots(), IsEmpty());
}

TEST_F(ScanTest, AFileThatTheUserMovedIsANewShot) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = home_.open(ProcessRole::headless);
  store->database().setNote(store->shots().front()->id, "lost");
  std::filesystem::rename(path, home_.desktop("Screenshot 2.png"));
  store->scan();
  ASSERT_EQ(store->shots().size(), 1U);
  EXPECT_EQ(store->shots().front()->name, "Screenshot 2.png");
  EXPECT_EQ(store->shots().front()->note, "");
}

TEST_F(ScanTest, ASourceInsideTheLibraryCountsTwiceAndItsShotsWait) {
  home_.addFile(home_.inLibrary("in/Screenshot 1.png"));
  const auto store = home_.open(ProcessRole::mainApplication);
  store->settings().sources.set({home_.inLibrary("in")});
  store->scan();
  ASSERT_EQ(store->shots().size(), 1U);
  EXPECT_FALSE(store->shots().front()->filed);
  EXPECT_EQ(store->status(), "Added 2 shots");
}

TEST_F(ScanTest, ALibraryThatDoesNotExistIsNeitherWatchedNorMade) {
  FakeFileEvents* events = nullptr;
  const auto store = home_.open(ProcessRole::menuBarCompanion, &events);
  ASSERT_EQ(events->watched.size(), 1U);
  EXPECT_THAT(events->watched[0], ElementsAre(WatchedFolder{home_.path("Desktop"), WatchDepth::Flat}));
  EXPECT_FALSE(std::filesystem::exists(home_.inLibrary("")));
  std::filesystem::create_directories(home_.inLibrary(""));
  store->restartWatching();
  EXPECT_THAT(events->watched[1], ElementsAre(WatchedFolder{home_.path("Desktop"), WatchDepth::Flat},
                                              WatchedFolder{home_.path("Pictures/Nimbrel"), WatchDepth::Recursive}));
}

TEST_F(ScanTest, OnlyAWorkerWatches) {
  FakeFileEvents* events = nullptr;
  const auto store = home_.open(ProcessRole::mainApplication, &events);
  store->restartWatching();
  EXPECT_THAT(events->watched, IsEmpty());
}

TEST_F(ScanTest, ABurstOfEventsEndsInOneScan) {
  FakeFileEvents* events = nullptr;
  const auto store = home_.open(ProcessRole::menuBarCompanion, &events);
  QSignalSpy statuses(store.get(), &Store::statusChanged);
  home_.addFile(home_.desktop("Screenshot 1.png"));
  events->change();
  home_.addFile(home_.desktop("Screenshot 2.png"));
  events->change();
  EXPECT_THAT(store->shots(), IsEmpty());
  ASSERT_TRUE(waitUntil([&] { return !store->shots().empty(); }));
  EXPECT_EQ(store->status(), "Added 2 shots");
  EXPECT_EQ(statuses.count(), 1);
}

TEST_F(ScanTest, AFileThatAnotherProcessAddedMeanwhileIsTakenAsItIs) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto window = home_.open(ProcessRole::mainApplication);
  const auto worker = home_.open(ProcessRole::headless);
  window->scan();
  EXPECT_EQ(window->shots().size(), 1U);
  EXPECT_EQ(window->shots().front()->id, worker->shots().front()->id);
}

TEST_F(ScanTest, AScanThatFindsNothingTellsNothing) {
  home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto store = home_.open(ProcessRole::headless);
  QSignalSpy shots(store.get(), &Store::shotsChanged);
  store->scan();
  EXPECT_EQ(shots.count(), 0);
}

TEST_F(ScanTest, AScanSeesWhatAnotherProcessChanged) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  const auto window = home_.open(ProcessRole::mainApplication);
  const auto worker = home_.open(ProcessRole::headless);
  window->scan();
  worker->database().setNote(worker->shots().front()->id, "theirs");
  window->scan();
  EXPECT_EQ(window->shots().front()->note, "theirs");
}

TEST_F(ScanTest, OnAFullDiskNothingIsLostButTheNewRows) {
  for (int i = 0; i < 50; ++i)
    home_.addFile(home_.desktop("Screenshot " + std::string(150, 'n') + std::to_string(i) + ".png"));
  const auto disk = home_.folder().makeFolder(".local/share/Nimbrel");
  const auto outcome = Testing::onSmallDisk(disk, 160 << 10, [&] {
    auto store = home_.open(ProcessRole::mainApplication);
    store->scan();
    return store->shots().size() < 50 ? 0 : 1;
  });
  EXPECT_EQ(outcome, 0);
  for (int i = 0; i < 50; ++i) {
    EXPECT_TRUE(
        std::filesystem::exists(home_.desktop("Screenshot " + std::string(150, 'n') + std::to_string(i) + ".png")));
  }
}

}  // namespace
}  // namespace Nimbrel
