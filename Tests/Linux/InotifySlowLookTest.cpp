#include "FileEventsFixture.h"
#include "Linux/Files/NetworkFileSystem.h"
#include "Unprivileged.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Nimbrel {

namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Testing::waitUntil;

bool isNamedRemote(const std::string& path) { return path.find("remote") != std::string::npos; }

auto saysOf(const std::string& folder, const std::string& reason) {
  return AllOf(StartsWith("Nimbrel: "), HasSubstr(folder), HasSubstr(reason));
}

/// Folders that cannot be watched, for one reason or another.
class InotifySlowLook : public Testing::FileEventsFixture {
 protected:
  InotifySlowLook() { pause_ = std::chrono::milliseconds(400); }

  /// From now on folders called "remote" send no events.
  void beginWithRemoteFolders() {
    auto options = quickOptions();
    options.sendsNoEvents = isNamedRemote;
    events_ = makeInotifyFileEvents(options);
  }
};

}  // namespace

TEST_F(InotifySlowLook, AMissingFolderIsLoggedOnceAndWatchedWhenItComes) {
  const auto library = folder_.path("library");
  watchBelow(library);
  watchBelow(library);
  settle();
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library, "missing")));
  EXPECT_TRUE(isTold([&] { folder_.makeFolder("library/one"); }));
  EXPECT_TRUE(isWatched("library/one"));
  EXPECT_EQ(log_.lines().size(), 1U);
}

TEST_F(InotifySlowLook, AMissingFolderThatWasMadeIsWatchedAtOnceWhenItIsGivenAgain) {
  auto options = quickOptions();
  options.missingFolderInterval = Seconds(3600);
  events_ = makeInotifyFileEvents(options);
  watchBelow(folder_.path("library"));
  folder_.makeFolder("library");
  watchBelow(folder_.path("library"));
  EXPECT_TRUE(isWatched("library"));
}

TEST_F(InotifySlowLook, AFileInPlaceOfAFolderIsLoggedAndTheFolderWatchedWhenItComes) {
  const auto library = folder_.write("library", "content");
  watchBelow(library);
  settle();
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library, "no folder")));
  EXPECT_TRUE(isTold([&] {
    remove("library");
    folder_.makeFolder("library");
  }));
  EXPECT_TRUE(isWatched("library"));
}

TEST_F(InotifySlowLook, APathThatCanBeNoFolderIsLoggedOnOneLine) {
  for (const std::string& path : {std::string(), folder_.path(std::string(300, 'n')), std::string("a\0b", 3)}) {
    watchBelow(path);
  }
  watchBelow(folder_.path("line\nfeed"));
  settle();
  EXPECT_EQ(log_.lines().size(), 4U);
  EXPECT_THAT(log_.lines().back(), saysOf(folder_.path("line feed"), "missing"));
}

TEST_F(InotifySlowLook, AFolderRemovedAndMadeAgainIsWatchedAgain) {
  const auto library = folder_.makeFolder("library");
  watchBelow(library);
  EXPECT_TRUE(isTold([&] { remove("library"); }));
  settle();
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library, "missing")));
  EXPECT_TRUE(isTold([&] { folder_.makeFolder("library/one"); }));
  EXPECT_TRUE(isWatched("library/one"));
  EXPECT_TRUE(isTold([&] { remove("library"); }));
  EXPECT_EQ(log_.lines().size(), 2U) << "it has vanished once more";
}

TEST_F(InotifySlowLook, AFolderReplacedBetweenTwoEventsIsWatched) {
  folder_.makeFolder("library");
  watchBelow(folder_.path("library"));
  EXPECT_TRUE(isTold([&] {
    remove("library");
    folder_.makeFolder("library");
  }));
  EXPECT_TRUE(isWatched("library"));
  EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(InotifySlowLook, AFolderReplacedWhileAProgramHoldsItOpenIsWatched) {
  const auto library = folder_.makeFolder("library");
  watchBelow(library);
  const int held = ::open(library.c_str(), O_RDONLY | O_DIRECTORY);
  EXPECT_TRUE(isTold([&] {
    remove("library");
    folder_.makeFolder("library");
  }));
  EXPECT_TRUE(isWatched("library"));
  ::close(held);
}

TEST_F(InotifySlowLook, AFolderRenamedAwayAndBackIsWatchedAgain) {
  folder_.makeFolder("library/one");
  watchBelow(folder_.path("library"));
  EXPECT_TRUE(isTold([&] { rename("library", "elsewhere"); }));
  EXPECT_TRUE(isNotTold([&] { folder_.write("elsewhere/one/file", "content"); }));
  EXPECT_TRUE(isTold([&] { rename("elsewhere", "library"); }));
  EXPECT_TRUE(isWatched("library/one"));
}

TEST_F(InotifySlowLook, AFolderMovedAwayWithTheOneAboveItIsMissed) {
  const auto library = folder_.makeFolder("above/middle/library");
  watchBelow(library);
  EXPECT_TRUE(isTold([&] { rename("above", "elsewhere"); }));
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library, "missing")));
  EXPECT_TRUE(isTold([&] { rename("elsewhere", "above"); }));
  EXPECT_TRUE(isWatched("above/middle/library"));
}

TEST_F(InotifySlowLook, ALinkThatLeadsToAnotherFolderIsFollowedThere) {
  folder_.makeFolder("former");
  folder_.makeFolder("present");
  fs::create_directory_symlink("former", folder_.path("link"));
  watchFlat(folder_.path("link"));
  EXPECT_TRUE(isTold([&] {
    remove("link");
    fs::create_directory_symlink("present", folder_.path("link"));
  }));
  EXPECT_TRUE(isTold([&] { folder_.write("present/file", "content"); }));
  EXPECT_TRUE(isNotTold([&] { folder_.write("former/file", "content"); }));
}

TEST_F(InotifySlowLook, AnUnreadableFolderIsLookedAtUntilItCanBeWatched) {
  const auto library = folder_.makeFolder("library");
  const Testing::Unprivileged unprivileged;
  ASSERT_EQ(::chmod(library.c_str(), 0300), 0);
  watchFlat(library);
  EXPECT_TRUE(isTold([&] { folder_.write("library/file", "content"); }));
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library, "Permission denied")));
  ASSERT_EQ(::chmod(library.c_str(), 0700), 0);
  EXPECT_TRUE(waitUntil([] { return watchCount() > 0; }));
  EXPECT_TRUE(isWatched("library"));
}

TEST_F(InotifySlowLook, AFolderThatSendsNoEventsIsLookedAt) {
  beginWithRemoteFolders();
  const auto library = folder_.makeFolder("remote");
  folder_.makeFolder("remote/one");
  watchBelow(library);
  EXPECT_TRUE(waitUntil([&] { return calls_ > 0; })) << "what came before the first look cannot be known";
  EXPECT_TRUE(isNotTold([] {}));
  EXPECT_TRUE(isTold([&] { folder_.write("remote/one/file", "content"); }));
  EXPECT_TRUE(isTold([&] { folder_.write("remote/one/two/file", "content"); }));
  EXPECT_TRUE(isTold([&] { rename("remote/one/two/file", "remote/one/two/other"); }));
  EXPECT_TRUE(isTold([&] { remove("remote/one/two"); }));
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library, "does not tell of all changes")));
}

TEST_F(InotifySlowLook, AFlatFolderThatSendsNoEventsIsLookedAtWithoutThoseBelowIt) {
  beginWithRemoteFolders();
  folder_.makeFolder("remote/one");
  watchFlat(folder_.path("remote"));
  EXPECT_TRUE(isTold([&] { folder_.write("remote/file", "content"); }));
  EXPECT_TRUE(isNotTold([&] { folder_.write("remote/one/file", "content"); }));
}

TEST_F(InotifySlowLook, APartThatSendsNoEventsMakesTheWholeFolderBeLookedAt) {
  beginWithRemoteFolders();
  const auto library = folder_.makeFolder("library");
  folder_.makeFolder("library/one/remote");
  folder_.makeFolder("library/other");
  watchBelow(library);
  EXPECT_TRUE(isTold([&] { folder_.write("library/one/remote/file", "content"); }));
  EXPECT_TRUE(isTold([&] { folder_.write("library/other/file", "content"); }));
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library, "does not tell of all changes")));
}

TEST_F(InotifySlowLook, AFolderThatSendsNoEventsMayGoAndComeBack) {
  beginWithRemoteFolders();
  const auto library = folder_.makeFolder("remote");
  watchBelow(library);
  EXPECT_TRUE(isTold([&] { remove("remote"); }));
  EXPECT_TRUE(isTold([&] { folder_.makeFolder("remote"); }));
  EXPECT_TRUE(isTold([&] { folder_.write("remote/file", "content"); }));
}

TEST_F(InotifySlowLook, AFolderThatIsLookedAtAndGivenAgainIsNotTakenForChanged) {
  beginWithRemoteFolders();
  watchBelow(folder_.makeFolder("remote"));
  EXPECT_TRUE(isNotTold([&] { watchBelow(folder_.path("remote")); }));
  EXPECT_TRUE(isTold([&] { folder_.write("remote/file", "content"); }));
  EXPECT_EQ(log_.lines().size(), 1U);
}

TEST_F(InotifySlowLook, MayBeDestroyedWhileAFolderIsLookedAt) {
  beginWithRemoteFolders();
  for (int folder = 0; folder < 50; ++folder) folder_.makeFolder("remote/" + std::to_string(folder));
  watchBelow(folder_.path("remote"));
  events_.reset();
  EXPECT_TRUE(isNotTold([] {}));
}

TEST(NetworkFileSystem, IsToldByTheNumbersOfTheKernel) {
  for (const std::uint32_t type : {0x6969U, 0x517BU, 0xFF534D42U, 0xFE534D42U, 0x65735546U, 0x01021997U, 0x5346414FU,
                                   0x6B414653U, 0x73757245U, 0x00C36400U}) {
    EXPECT_TRUE(NetworkFileSystem::isType(type)) << std::hex << type;
  }
  // ext4, XFS, Btrfs, tmpfs, overlay, FAT, exFAT, NTFS, ZFS, F2FS, bcachefs.
  for (const std::uint32_t type : {0xEF53U, 0x58465342U, 0x9123683EU, 0x01021994U, 0x794C7630U, 0x4D44U, 0x2011BAB0U,
                                   0x7366746EU, 0x2FC12FC1U, 0xF2F52010U, 0xCA451A4EU, 0U}) {
    EXPECT_FALSE(NetworkFileSystem::isType(type)) << std::hex << type;
  }
}

TEST(NetworkFileSystem, IsNotWhereTheKernelKeepsItsOwnFiles) {
  EXPECT_FALSE(NetworkFileSystem::holds("/proc"));
  EXPECT_FALSE(NetworkFileSystem::holds("/proc/no such folder"));
}

}  // namespace Nimbrel
