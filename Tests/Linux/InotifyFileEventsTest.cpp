#include "FileEventsFixture.h"
#include "Unprivileged.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QTimer>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <fstream>

namespace Nimbrel {

namespace {

namespace fs = std::filesystem;
using ::testing::IsEmpty;
using Testing::runEventLoopFor;
using Testing::waitUntil;

class InotifyFileEvents : public Testing::FileEventsFixture {
 protected:
  /// The usual library: a folder that holds two levels of others.
  void watchLibrary() {
    folder_.makeFolder("library/one/two");
    watchBelow(folder_.path("library"));
  }
};

}  // namespace

TEST_F(InotifyFileEvents, EachKindOfChangeToAnEntryIsTold) {
  watchFlat(folder_.path());
  const auto file = folder_.path("file");
  EXPECT_TRUE(isTold([&] { folder_.write("file", "content"); })) << "created";
  EXPECT_TRUE(isTold([&] { folder_.write("file", "other"); })) << "written in place";
  EXPECT_TRUE(isTold([&] { ASSERT_EQ(::setxattr(file.c_str(), "user.x", "1", 1, 0), 0); })) << "attribute";
  EXPECT_TRUE(isTold([&] { rename("file", "renamed"); })) << "renamed";
  EXPECT_TRUE(isTold([&] { remove("renamed"); })) << "removed";
}

TEST_F(InotifyFileEvents, MovesInAndOutAreTold) {
  folder_.makeFolder("watched");
  folder_.write("file", "content");
  watchFlat(folder_.path("watched"));
  EXPECT_TRUE(isTold([&] { rename("file", "watched/file"); }));
  EXPECT_TRUE(isTold([&] { rename("watched/file", "file"); }));
}

TEST_F(InotifyFileEvents, NothingIsToldWhileNothingChanges) {
  folder_.write("library/file", "content");
  watchBelow(folder_.path("library"));
  EXPECT_TRUE(isNotTold([&] { EXPECT_EQ(Testing::contentOf(folder_.path("library/file")), "content"); }));
  EXPECT_TRUE(isNotTold([&] { folder_.write("beside the library", "content"); }));
  EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(InotifyFileEvents, HiddenEntriesDoNotCount) {
  watchLibrary();
  EXPECT_TRUE(isNotTold([&] { folder_.write("library/.file", "content"); }));
  EXPECT_TRUE(isNotTold([&] { folder_.write("library/one/.folder/file", "content"); }));
  EXPECT_TRUE(isTold([&] { rename("library/.file", "library/file"); }));
  EXPECT_TRUE(isTold([&] { rename("library/one/.folder", "library/one/folder"); }));
  EXPECT_TRUE(isWatched("library/one/folder"));
}

TEST_F(InotifyFileEvents, AFolderThatIsHiddenItselfCanBeWatched) {
  folder_.makeFolder(".hidden/one");
  watchBelow(folder_.path(".hidden"));
  EXPECT_TRUE(isWatched(".hidden/one"));
}

TEST_F(InotifyFileEvents, AFlatFolderTellsOfItsOwnEntriesOnly) {
  folder_.makeFolder("watched/sub");
  watchFlat(folder_.path("watched"));
  EXPECT_TRUE(isNotTold([&] { folder_.write("watched/sub/file", "content"); }));
  EXPECT_TRUE(isWatched("watched"));
}

TEST_F(InotifyFileEvents, ARecursiveFolderTellsOfAllBelowIt) {
  watchLibrary();
  EXPECT_TRUE(isWatched("library"));
  EXPECT_TRUE(isWatched("library/one"));
  EXPECT_TRUE(isWatched("library/one/two"));
}

TEST_F(InotifyFileEvents, FoldersThatComeLaterAreWatchedWithAllBelowThem) {
  watchLibrary();
  EXPECT_TRUE(isTold([&] { folder_.makeFolder("library/new/newer/newest"); }));
  settle();
  EXPECT_TRUE(isWatched("library/new"));
  EXPECT_TRUE(isWatched("library/new/newer/newest"));
}

TEST_F(InotifyFileEvents, FilesInAFolderThatHasJustAppearedAreNotMissed) {
  watchLibrary();
  settle();
  // The folder alone is announced, so that only the file found in it can be what is told.
  events_->expectOwnChange(folder_.path("library/new"));
  folder_.write("library/new/file", "content");
  EXPECT_TRUE(waitUntil([&] { return calls_ > 0; }));
}

TEST_F(InotifyFileEvents, AFolderMovedInIsWatchedWithAllBelowIt) {
  watchLibrary();
  folder_.makeFolder("outside/below");
  EXPECT_TRUE(isTold([&] { rename("outside", "library/inside"); }));
  EXPECT_TRUE(isWatched("library/inside/below"));
}

TEST_F(InotifyFileEvents, AFolderMovedOutIsWatchedNoLonger) {
  watchLibrary();
  EXPECT_TRUE(isTold([&] { rename("library/one", "outside"); }));
  EXPECT_TRUE(isNotTold([&] { folder_.write("outside/file", "content"); }));
  EXPECT_TRUE(isNotTold([&] { folder_.write("outside/two/file", "content"); }));
  EXPECT_TRUE(isWatched("library"));
}

TEST_F(InotifyFileEvents, ARenamedFolderIsWatchedUnderItsNewName) {
  watchLibrary();
  EXPECT_TRUE(isTold([&] { rename("library/one", "library/uno"); }));
  EXPECT_TRUE(isWatched("library/uno/two"));
  // The old name stands for nothing any more, not even for what an announcement would cover.
  events_->expectOwnChange(folder_.path("library/one/two/file"));
  EXPECT_TRUE(isTold([&] { folder_.write("library/uno/two/file", "content"); }));
}

TEST_F(InotifyFileEvents, AFolderRemovedAndMadeAgainIsWatched) {
  watchLibrary();
  EXPECT_TRUE(isTold([&] {
    remove("library/one");
    folder_.makeFolder("library/one/two");
  }));
  EXPECT_TRUE(isWatched("library/one/two"));
}

TEST_F(InotifyFileEvents, FoldersThatSwapTheirNamesAreBothWatched) {
  watchLibrary();
  folder_.makeFolder("library/other/three");
  settle();
  EXPECT_TRUE(isTold([&] {
    rename("library/one", "library/aside");
    rename("library/other", "library/one");
    rename("library/aside", "library/other");
  }));
  EXPECT_TRUE(isWatched("library/one/three"));
  EXPECT_TRUE(isWatched("library/other/two"));
}

TEST_F(InotifyFileEvents, LinksToFoldersAreNotFollowed) {
  watchLibrary();
  folder_.makeFolder("outside");
  fs::create_directory_symlink(folder_.path("library"), folder_.path("library/loop"));
  fs::create_directory_symlink(folder_.path("outside"), folder_.path("library/link"));
  EXPECT_TRUE(isNotTold([&] { folder_.write("outside/file", "content"); }));
  EXPECT_TRUE(isWatched("library/one"));
}

TEST_F(InotifyFileEvents, AWatchedFolderMayBeALink) {
  folder_.makeFolder("library/one");
  fs::create_directory_symlink(folder_.path("library"), folder_.path("link"));
  watchBelow(folder_.path("link"));
  EXPECT_TRUE(isTold([&] { folder_.write("library/one/file", "content"); }));
  EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(InotifyFileEvents, AFolderMadeReadableIsWatched) {
  watchLibrary();
  folder_.makeFolder("library/closed/below");
  settle();
  const Testing::Unprivileged unprivileged;
  ASSERT_EQ(::chmod(folder_.path("library/closed").c_str(), 0), 0);
  watch({});
  watchBelow(folder_.path("library"));
  EXPECT_TRUE(isTold([&] { ASSERT_EQ(::chmod(folder_.path("library/closed").c_str(), 0700), 0); }));
  EXPECT_TRUE(isWatched("library/closed/below"));
}

TEST_F(InotifyFileEvents, AFolderMayBeWatchedFlatAndAsAPartOfAnother) {
  folder_.makeFolder("library/one/two");
  const WatchedFolder flat{folder_.path("library/one"), WatchDepth::Flat};
  const WatchedFolder whole{folder_.path("library"), WatchDepth::Recursive};
  for (const auto& folders : {std::vector{flat, whole}, std::vector{whole, flat}, std::vector{whole, whole, flat}}) {
    watch(folders);
    EXPECT_TRUE(isWatched("library/one"));
    EXPECT_TRUE(isWatched("library/one/two"));
    EXPECT_TRUE(isTold([&] { folder_.makeFolder("library/one/new"); }));
    EXPECT_TRUE(isWatched("library/one/new"));
    remove("library/one/new");
  }
  watch({flat});
  EXPECT_TRUE(isWatched("library/one"));
  EXPECT_TRUE(isNotTold([&] { folder_.write("library/one/two/file", "content"); }));
  EXPECT_TRUE(isNotTold([&] { folder_.write("library/file", "content"); }));
}

TEST_F(InotifyFileEvents, NamesMayBeAnyBytes) {
  const std::string name = "library/line\nfeed \xff";
  folder_.makeFolder(name);
  watchBelow(folder_.path("library"));
  EXPECT_TRUE(isWatched(name));
  folder_.makeFolder(name + "/\xfe");
  EXPECT_TRUE(isWatched(name + "/\xfe"));
}

TEST_F(InotifyFileEvents, SlashesAtTheEndOfAFolderDoNotMatter) {
  watchLibrary();
  watchBelow(folder_.path("library//"));
  settle();
  events_->expectOwnChange(folder_.path("library/file"));
  EXPECT_TRUE(isNotTold([&] { folder_.write("library/file", "content"); }));
  EXPECT_TRUE(isWatched("library/one"));
}

TEST_F(InotifyFileEvents, AnOverflowOfTheQueueIsAChangeAfterWhichAllIsWatched) {
  watchLibrary();
  folder_.write("library/a", "content");
  folder_.write("library/b", "content");
  std::size_t queueLength = 0;
  std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> queueLength;
  ASSERT_GT(queueLength, 0U);
  EXPECT_TRUE(isTold([&] {
    // Two files in turn, since the kernel joins events that are alike.
    for (std::size_t event = 0; event <= queueLength; ++event) {
      ::chmod(folder_.path(event % 2 == 0 ? "library/a" : "library/b").c_str(), 0600);
    }
    folder_.makeFolder("library/lost");
  }));
  EXPECT_TRUE(isWatched("library/lost"));
}

TEST_F(InotifyFileEvents, WatchingOtherFoldersEndsTheFormerWatching) {
  folder_.makeFolder("former");
  folder_.makeFolder("present");
  watchBelow(folder_.path("former"));
  watchBelow(folder_.path("present"));
  EXPECT_TRUE(isNotTold([&] { folder_.write("former/file", "content"); }));
  EXPECT_TRUE(isWatched("present"));
}

TEST_F(InotifyFileEvents, AnEmptyListEndsTheWatching) {
  watchLibrary();
  folder_.write("library/file", "content");
  watch({});
  runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(calls_, 0) << "what came before is told no more";
  EXPECT_TRUE(isNotTold([&] { folder_.write("library/other", "content"); }));
  watchBelow(folder_.path("library"));
  EXPECT_TRUE(isWatched("library/one"));
}

TEST_F(InotifyFileEvents, AChangeJustBeforeTheSameFolderIsWatchedAgainIsTold) {
  watchLibrary();
  settle();
  folder_.write("library/one/file", "content");
  watch({{folder_.path("library"), WatchDepth::Recursive}, {folder_.path(), WatchDepth::Flat}});
  EXPECT_TRUE(waitUntil([&] { return calls_ > 0; }));
}

TEST_F(InotifyFileEvents, MayBeDestroyedWithChangesPending) {
  watchLibrary();
  settle();
  folder_.write("library/file", "content");
  events_.reset();
  runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_EQ(calls_, 0);
}

TEST_F(InotifyFileEvents, MayBeDestroyedInsideTheCallback) {
  folder_.makeFolder("library");
  events_->watch({{folder_.path("library"), WatchDepth::Recursive}}, Seconds(0), [this] {
    events_.reset();
    ++calls_;
  });
  folder_.write("library/file", "content");
  EXPECT_TRUE(waitUntil([&] { return calls_ > 0; }));
  EXPECT_EQ(events_, nullptr);
}

TEST_F(InotifyFileEvents, MayBeGivenOtherFoldersInsideTheCallback) {
  folder_.makeFolder("former");
  folder_.makeFolder("present");
  events_->watch({{folder_.path("former"), WatchDepth::Flat}}, Seconds(0),
                 [this] { watchFlat(folder_.path("present")); });
  folder_.write("former/file", "content");
  EXPECT_TRUE(waitUntil([&] {
    static_cast<void>(folder_.write("present/file", "content"));
    return calls_ > 0;
  }));
  EXPECT_TRUE(isNotTold([&] { folder_.write("former/other", "content"); }));
}

TEST_F(InotifyFileEvents, NothingRunsWhileAllFoldersAreWatched) {
  watchLibrary();
  EXPECT_TRUE(isWatched("library"));
  int awakenings = 0;
  const QObject context;
  QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &context,
                   [&] { ++awakenings; });
  QEventLoop loop;
  QTimer::singleShot(600, &loop, &QEventLoop::quit);
  loop.exec();
  // One of the slow looks alone would account for fifteen.
  EXPECT_LT(awakenings, 10);
}

}  // namespace Nimbrel
