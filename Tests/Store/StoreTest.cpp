#include "Store/Store.h"

#include "Support/LogRecorder.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QJsonArray>
#include <QSignalSpy>

#include <sqlite3.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::FakeFileEvents;
using ::testing::IsEmpty;
using Testing::namesOf;
using Testing::shotNamed;
using ::testing::SizeIs;
using Testing::StoreHome;
using ::testing::UnorderedElementsAre;

class StoreTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::unique_ptr<Store> openWith(const std::vector<std::string>& names) {
    auto store = home_.open(ProcessRole::mainApplication);
    std::vector<std::string> paths;
    for (const auto& name : names) paths.push_back(home_.addFile(home_.path(name)));
    store->importFiles(paths);
    return store;
  }

  StoreHome home_;
};

TEST_F(StoreTest, StartsEmpty) {
  const auto store = home_.open(ProcessRole::mainApplication);
  EXPECT_THAT(store->shots(), IsEmpty());
  EXPECT_THAT(store->selection(), IsEmpty());
  EXPECT_THAT(store->tags(), IsEmpty());
  EXPECT_EQ(store->status(), "");
  EXPECT_FALSE(store->lastRecordingURL());
  EXPECT_TRUE(store->showMenuBar());
}

TEST_F(StoreTest, ACatalogueThatCannotBeOpenedIsAnError) {
  home_.folder().write(".local/share/Nimbrel", "a file where the folder should be");
  auto opened = Store::open({.role = ProcessRole::tool,
                             .folders = home_.folders(),
                             .clock = [] { return Timestamp{}; },
                             .services = {},
                             .defaults = std::make_unique<Defaults>(home_.folders().preferences, "suite")});
  ASSERT_FALSE(opened);
  EXPECT_THAT(opened.error().message, ::testing::StartsWith("Cannot create "));
}

TEST_F(StoreTest, ReloadKeepsProjectTagsOutOfTheTags) {
  const auto store = openWith({"a.png"});
  store->database().setTags(store->shots().front()->id, {"project:x", "Project:y", "b", "a"});
  store->reload();
  EXPECT_THAT(store->tags(), ElementsAre("Project:y", "a", "b"));
}

TEST_F(StoreTest, ReloadDropsDeletedShotsFromTheSelection) {
  const auto store = openWith({"a.png", "b.png"});
  const auto a = shotNamed(*store, "a.png")->id;
  const auto b = shotNamed(*store, "b.png")->id;
  store->setSelection({a, b});
  store->database().remove(a, Database::IgnorePath::No);
  store->reload();
  EXPECT_THAT(store->selection(), UnorderedElementsAre(b));
  store->database().remove(b, Database::IgnorePath::No);
  store->reload();
  EXPECT_THAT(store->selection(), IsEmpty());
}

TEST_F(StoreTest, ReloadTellsWhatChangedAndNothingElse) {
  const auto store = openWith({"a.png"});
  QSignalSpy shots(store.get(), &Store::shotsChanged);
  QSignalSpy tags(store.get(), &Store::tagsChanged);
  QSignalSpy selection(store.get(), &Store::selectionChanged);
  store->reload();
  EXPECT_EQ(shots.count(), 0);
  store->database().setNote(store->shots().front()->id, "x");
  store->reload();
  EXPECT_EQ(shots.count(), 1);
  store->database().setTags(store->shots().front()->id, {"x"});
  store->reload();
  EXPECT_EQ(shots.count(), 2);
  EXPECT_EQ(tags.count(), 1);
  EXPECT_EQ(selection.count(), 0);
}

TEST_F(StoreTest, ReloadSharesTheShotsThatDidNotChange) {
  const auto store = openWith({"a.png", "b.png"});
  const auto a = shotNamed(*store, "a.png");
  const auto b = shotNamed(*store, "b.png");
  store->database().setNote(b->id, "x");
  store->reload();
  EXPECT_EQ(shotNamed(*store, "a.png"), a);
  EXPECT_NE(shotNamed(*store, "b.png"), b);
}

TEST_F(StoreTest, AShotOfAFormerSnapshotOutlivesAReload) {
  const auto store = openWith({"a.png"});
  const auto shot = store->shots().front();
  store->database().remove(shot->id, Database::IgnorePath::No);
  store->reload();
  EXPECT_EQ(shot->name, "a.png");
}

TEST_F(StoreTest, CountsTheInbox) {
  const auto store = openWith({"a.png", "Pictures/Nimbrel/b.png"});
  EXPECT_EQ(store->inboxCount(), 1U);
}

TEST_F(StoreTest, ANoteWrittenByOneProcessReachesTheOtherWithItsPoll) {
  const auto window = openWith({"a.png"});
  const auto worker = home_.open(ProcessRole::menuBarCompanion);
  window->database().setNote(window->shots().front()->id, "hello");
  window->reload();
  EXPECT_EQ(worker->shots().front()->note, "");
  worker->poll();
  EXPECT_EQ(worker->shots().front()->note, "hello");
  worker->database().setOCR(worker->shots().front()->id, "text", {});
  worker->reload();
  window->poll();
  EXPECT_EQ(window->shots().front()->ocr, "text");
}

TEST_F(StoreTest, ThePollRunsByItself) {
  const auto window = openWith({"a.png"});
  const auto other = home_.open(ProcessRole::tool);
  other->database().setNote(other->shots().front()->id, "hello");
  EXPECT_TRUE(Testing::waitUntil([&] { return window->shots().front()->note == "hello"; }));
}

TEST_F(StoreTest, APollWithoutChangeReadsNothing) {
  const auto store = openWith({"a.png"});
  // A write of this process's own does not count: whoever makes it reloads.
  store->database().setNote(store->shots().front()->id, "not read yet");
  store->poll();
  EXPECT_EQ(store->shots().front()->note, "");
}

TEST_F(StoreTest, AChangeOfTheLibraryRestartsTheWorkersWatchingAndScans) {
  home_.addFile(home_.path("new library/2026/a.png"));
  FakeFileEvents* events = nullptr;
  const auto worker = home_.open(ProcessRole::menuBarCompanion, &events);
  home_.suiteOfOtherProcess()->set(QStringLiteral("libraryRoot"), QString::fromStdString(home_.path("new library")));
  worker->poll();
  EXPECT_THAT(events->watched, SizeIs(2));
  EXPECT_THAT(events->watched.back(),
              ::testing::Contains(WatchedFolder{home_.path("new library"), WatchDepth::Recursive}));
  EXPECT_THAT(namesOf(worker->shots()), ElementsAre("a.png"));
}

TEST_F(StoreTest, TheMainApplicationIgnoresAChangeOfFoldersInThePoll) {
  home_.addFile(home_.path("new library/2026/a.png"));
  const auto window = home_.open(ProcessRole::mainApplication);
  home_.suiteOfOtherProcess()->set(QStringLiteral("libraryRoot"), QString::fromStdString(home_.path("new library")));
  window->poll();
  EXPECT_THAT(window->shots(), IsEmpty());
}

TEST_F(StoreTest, TheMenuBarIconFollowsTheSettingAndSetsIt) {
  const auto store = home_.open(ProcessRole::mainApplication);
  QSignalSpy told(store.get(), &Store::showMenuBarChanged);
  home_.suiteOfOtherProcess()->set(QStringLiteral("showMenuBar"), false);
  store->poll();
  EXPECT_FALSE(store->showMenuBar());
  store->setShowMenuBar(true);
  EXPECT_TRUE(store->settings().showMenuBar());
  EXPECT_EQ(told.count(), 2);
}

TEST_F(StoreTest, ARecordingThatIsGoneIsClearedAtTheStart) {
  const auto suite = home_.suiteOfOtherProcess();
  suite->set(QStringLiteral("lastRecordingPath"), QString::fromStdString(home_.path("missing.mov")));
  EXPECT_FALSE(home_.open(ProcessRole::mainApplication)->lastRecordingURL());
  suite->synchronize();
  EXPECT_TRUE(suite->value(QStringLiteral("lastRecordingPath")).isUndefined());
}

TEST_F(StoreTest, ARecordingThatIsThereIsKept) {
  const auto path = home_.addFile(home_.path("a.mov"));
  home_.suiteOfOtherProcess()->set(QStringLiteral("lastRecordingPath"), QString::fromStdString(path));
  EXPECT_EQ(home_.open(ProcessRole::mainApplication)->lastRecordingURL(), path);
}

TEST_F(StoreTest, ARecordingOfTheOtherProcessArrivesWithThePoll) {
  const auto store = home_.open(ProcessRole::mainApplication);
  const auto suite = home_.suiteOfOtherProcess();
  suite->set(QStringLiteral("lastRecordingPath"), QStringLiteral("/a.mov"));
  store->poll();
  EXPECT_EQ(store->lastRecordingURL(), "/a.mov");
  suite->remove(QStringLiteral("lastRecordingPath"));
  store->poll();
  EXPECT_FALSE(store->lastRecordingURL());
}

TEST_F(StoreTest, AToolNeitherWatchesNorPolls) {
  FakeFileEvents* events = nullptr;
  const auto tool = home_.open(ProcessRole::tool, &events);
  EXPECT_THAT(events->watched, IsEmpty());
  const auto window = openWith({"a.png"});
  Testing::runEventLoopFor(std::chrono::milliseconds(2500));
  EXPECT_THAT(tool->shots(), IsEmpty());
}

TEST_F(StoreTest, ALockedCatalogueIsEmptyUntilTheLockGoes) {
  const auto path = home_.addFile(home_.desktop("Screenshot 1.png"));
  home_.open(ProcessRole::tool)->importFiles({path});
  const Testing::LogRecorder log;
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(home_.path(".local/share/Nimbrel/nimbrel.sqlite").c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "PRAGMA locking_mode=EXCLUSIVE; PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE", nullptr,
                         nullptr, nullptr),
            SQLITE_OK);
  const auto worker = home_.open(ProcessRole::menuBarCompanion);
  EXPECT_THAT(worker->shots(), IsEmpty());
  sqlite3_close(other);
  worker->poll();
  EXPECT_THAT(namesOf(worker->shots()), ElementsAre("Screenshot 1.png"));
}

TEST_F(StoreTest, ACorruptCatalogueIsEmptyAndNothingFails) {
  home_.folder().write(".local/share/Nimbrel/nimbrel.sqlite", "no catalogue at all" + std::string(4096, 'x'));
  home_.addFile(home_.desktop("Screenshot 1.png"));
  const Testing::LogRecorder log;
  const auto store = home_.open(ProcessRole::menuBarCompanion);
  EXPECT_THAT(store->shots(), IsEmpty());
  EXPECT_EQ(store->status(), "");
  store->poll();
}

}  // namespace
}  // namespace Nimbrel
