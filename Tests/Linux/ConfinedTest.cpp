#include "FileEventsFixture.h"
#include "Platform/UserFolders.h"
#include "Support/EnvironmentVariable.h"

#include <QProcess>

#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <string>

namespace Nimbrel {

namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using Testing::EnvironmentVariable;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Testing::waitUntil;

class SystemLimit {
 public:
  explicit SystemLimit(const std::string& name) : path_("/proc/sys/user/" + name) { std::ifstream(path_) >> former_; }
  ~SystemLimit() { set(former_); }
  SystemLimit(const SystemLimit&) = delete;
  SystemLimit& operator=(const SystemLimit&) = delete;

  void set(int value) const { std::ofstream(path_) << value << std::flush; }

 private:
  std::string path_;
  int former_ = 0;
};

auto saysOf(const std::string& folder, const std::string& reason) {
  return AllOf(StartsWith("Nimbrel: "), HasSubstr(folder), HasSubstr(reason));
}

class InotifyLimit : public Testing::FileEventsFixture {
 protected:
  InotifyLimit() { pause_ = std::chrono::milliseconds(400); }

  void makeLibrary(int folders) const {
    for (int folder = 0; folder < folders; ++folder) folder_.makeFolder("library/" + std::to_string(folder) + "/below");
  }

  SystemLimit watches_{"max_inotify_watches"};
  SystemLimit instances_{"max_inotify_instances"};
  std::string library_ = folder_.path("library");
};

class Mounts : public Testing::FileEventsFixture {
 protected:
  void mount(std::string_view name) const {
    ASSERT_EQ(::mount("nothing", folder_.path(name).c_str(), "tmpfs", 0, nullptr), 0) << std::strerror(errno);
  }
  void unmount(std::string_view name) const {
    ASSERT_EQ(::umount2(folder_.path(name).c_str(), MNT_DETACH), 0) << std::strerror(errno);
  }
};

}  // namespace

TEST_F(InotifyLimit, AFolderBeyondTheLimitIsLoggedOnceAndLookedAt) {
  makeLibrary(10);
  watches_.set(8);
  watchBelow(library_);
  watchBelow(library_);
  EXPECT_TRUE(isTold([&] { folder_.write("library/7/below/file", "content"); }));
  EXPECT_TRUE(isTold([&] { folder_.write("library/7/new/file", "content"); }));
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library_, "limit")));
}

TEST_F(InotifyLimit, TheWatchesOfAFolderBeyondTheLimitAreLeftToOthers) {
  makeLibrary(10);
  watches_.set(8);
  watchBelow(library_);
  settle();
  EXPECT_EQ(watchCount(), 0);
  const auto small = folder_.makeFolder("small");
  watch({{library_, WatchDepth::Recursive}, {small, WatchDepth::Flat}});
  EXPECT_TRUE(isWatched("small"));
  EXPECT_TRUE(isWatched("library/7/below"));
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library_, "limit")));
}

TEST_F(InotifyLimit, AFolderIsWatchedOnceTheLimitAllowsIt) {
  makeLibrary(10);
  watches_.set(8);
  watchBelow(library_);
  EXPECT_TRUE(isTold([&] {
    watches_.set(1000);
    EXPECT_TRUE(waitUntil([] { return watchCount() > 20; }));
  })) << "what came since the last look cannot be known";
  EXPECT_TRUE(isWatched("library/9/below"));
}

TEST_F(InotifyLimit, AFolderThatGrowsBeyondTheLimitIsLookedAtFromThen) {
  makeLibrary(2);
  watches_.set(12);
  watchBelow(library_);
  EXPECT_THAT(log_.lines(), IsEmpty());
  EXPECT_TRUE(isTold([&] { makeLibrary(20); }));
  EXPECT_TRUE(isTold([&] { folder_.write("library/19/below/file", "content"); }));
  EXPECT_TRUE(isTold([&] { folder_.write("library/0/file", "content"); }));
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library_, "limit")));
}

TEST_F(InotifyLimit, AFlatFolderBeyondTheLimitIsLookedAt) {
  makeLibrary(1);
  watches_.set(0);
  watchFlat(library_);
  EXPECT_TRUE(isTold([&] { folder_.write("library/file", "content"); }));
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library_, "limit")));
}

TEST_F(InotifyLimit, AFolderIsWatchedWithoutTheFoldersAboveItWhenTheLimitAllowsNoMore) {
  makeLibrary(1);
  watches_.set(1);
  watchFlat(library_);
  EXPECT_EQ(watchCount(), 1);
  EXPECT_TRUE(isWatched("library"));
  EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(InotifyLimit, WithoutAQueueForEventsFoldersAreLookedAtUntilThereIsOne) {
  makeLibrary(1);
  instances_.set(0);
  watchBelow(library_);
  EXPECT_TRUE(isTold([&] { folder_.write("library/0/below/file", "content"); }));
  EXPECT_THAT(log_.lines(), ElementsAre(saysOf(library_, "limit")));
  instances_.set(10);
  EXPECT_TRUE(waitUntil([] { return watchCount() >= 3; }));
  EXPECT_TRUE(isWatched("library/0/below"));
}

TEST_F(Mounts, AFileSystemMountedOverAWatchedFolderIsWatchedInItsPlace) {
  folder_.makeFolder("disk");
  watchBelow(folder_.path("disk"));
  EXPECT_TRUE(isTold([&] { mount("disk"); }));
  EXPECT_TRUE(isWatched("disk"));
  EXPECT_TRUE(isTold([&] { unmount("disk"); }));
  EXPECT_TRUE(isWatched("disk"));
  EXPECT_TRUE(isTold([&] { mount("disk"); }));
  EXPECT_TRUE(isWatched("disk"));
  unmount("disk");
}

TEST_F(Mounts, AFileSystemMountedInsideAWatchedFolderIsWatchedAsItsPart) {
  folder_.makeFolder("library/disk");
  watchBelow(folder_.path("library"));
  EXPECT_TRUE(isTold([&] { mount("library/disk"); }));
  EXPECT_TRUE(isWatched("library/disk"));
  EXPECT_TRUE(isTold([&] { unmount("library/disk"); }));
  EXPECT_TRUE(isWatched("library/disk"));
}

TEST_F(Mounts, AFolderOnAFileSystemThatIsMountedLaterIsWatchedAtOnce) {
  auto options = quickOptions();
  options.missingFolderInterval = Seconds(3600);
  events_ = makeInotifyFileEvents(options);
  folder_.makeFolder("disk");
  mount("disk");
  folder_.makeFolder("disk/library");
  ASSERT_EQ(::mount(folder_.path("disk").c_str(), folder_.makeFolder("aside").c_str(), nullptr, MS_BIND, nullptr), 0);
  unmount("disk");
  watchBelow(folder_.path("disk/library"));
  EXPECT_TRUE(isTold([&] {
    ASSERT_EQ(::mount(folder_.path("aside").c_str(), folder_.path("disk").c_str(), nullptr, MS_BIND, nullptr), 0);
  }));
  EXPECT_TRUE(isWatched("disk/library"));
  EXPECT_TRUE(isTold([&] { unmount("disk"); }));
  unmount("aside");
}

TEST_F(Mounts, MountsElsewhereAreNotTold) {
  folder_.makeFolder("library/one");
  folder_.makeFolder("elsewhere");
  watchBelow(folder_.path("library"));
  EXPECT_TRUE(isNotTold([&] { mount("elsewhere"); }));
  EXPECT_TRUE(isNotTold([&] { unmount("elsewhere"); }));
  EXPECT_TRUE(isWatched("library/one"));
}

TEST(AccountWithoutHome, HasNoFolders) {
  const EnvironmentVariable home("HOME", std::nullopt);
  EXPECT_EQ(::getuid(), 54321U);
  EXPECT_FALSE(UserFolders::ofCurrentUser().has_value());
}

TEST(SystemLog, GetsEachLineAsOneAndStandardErrorAsItIs) {
  ASSERT_EQ(::mount("nothing", "/dev", "tmpfs", 0, nullptr), 0);
  sockaddr_un address{AF_UNIX, "/dev/log"};
  const int log = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  ASSERT_EQ(::bind(log, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  QProcess helper;
  helper.start(QStringLiteral(NIMBREL_HELPER_PROGRAM), {QStringLiteral("log")});
  const bool finished = helper.waitForFinished();
  std::array<char, 1000> buffer{};
  const auto length = ::recv(log, buffer.data(), buffer.size(), 0);
  ::close(log);
  ASSERT_EQ(::umount2("/dev", MNT_DETACH), 0);
  ASSERT_TRUE(finished) << helper.errorString().toStdString();
  EXPECT_EQ(helper.readAllStandardError(), "Nimbrel: 100 %s on\ntwo lines\n");
  ASSERT_GT(length, 0);
  const std::string line(buffer.data(), static_cast<std::size_t>(length));
  // Facility "user", severity "notice".
  EXPECT_THAT(line,
              AllOf(StartsWith("<13>"), HasSubstr(" nimbrel-helper["), HasSubstr("]: Nimbrel: 100 %s on two lines")));
}

}  // namespace Nimbrel
