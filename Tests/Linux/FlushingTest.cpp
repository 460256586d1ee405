// Files are told to the disk before they are told to anybody else.

#include "Linux/Files/Flushing.h"

#include "Linux/Files/ReservedFile.h"
#include "Platform/FileGroup.h"
#include "Platform/NewFile.h"
#include "RefusedCalls.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <utility>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::withAnsweredCall;
using Testing::withRefusedCalls;

class Flushing : public ::testing::Test {
 protected:
  [[nodiscard]] std::string path() const { return folder_.path("a"); }
  [[nodiscard]] std::set<std::string> names() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path())) names.insert(entry.path().filename());
    return names;
  }

  // Three ways to make a file; each returns whether that worked.
  [[nodiscard]] bool makeInGroup() const {
    auto file = PendingFile::beside(path());
    FileGroup group;
    return file && !file.value().write("ours") && !group.add(std::move(file).value()) && !group.finish();
  }
  [[nodiscard]] bool makeAtOnce() const { return !NewFile::write(path(), "ours"); }
  [[nodiscard]] bool makeReserved() const {
    ReservedFile file(path());
    if (file.error() != 0 || !(std::ofstream(file.contentPath()) << "ours" << std::flush)) return false;
    return file.commit() == 0;
  }

  /// The same while the folder cannot be flushed, and somebody else puts a file at the name before that is known.
  template <class Make>
  [[nodiscard]] int exitWhenAnotherComes(Make make) const {
    folder_.write("other", "theirs");
    int flushes = 0;
    const auto flushOrFail = [&]() -> long {
      if (++flushes == 1) return 0;
      ::rename(folder_.path("other").c_str(), path().c_str());
      return -EIO;
    };
    return withAnsweredCall(SYS_fsync, flushOrFail, [&] { return make() ? 1 : 0; });
  }
  /// The same when nobody comes.
  template <class Make>
  [[nodiscard]] int exitWhenTheFolderFails(Make make) const {
    int flushes = 0;
    return withAnsweredCall(
        SYS_fsync, [&]() -> long { return ++flushes == 1 ? 0 : -EIO; }, [&] { return make() ? 1 : 0; });
  }

  Testing::TemporaryFolder folder_;
};

TEST_F(Flushing, FileSystemsWithNothingToFlushAreNoError) {
  for (const int error : {EINVAL, ENOSYS, EOPNOTSUPP}) {
    EXPECT_EQ(withRefusedCalls({{SYS_fsync, error}}, [&] { return flushFolder(folder_.path()); }), 0) << error;
    EXPECT_EQ(withRefusedCalls({{SYS_fsync, error}}, [&] { return makeInGroup() ? 0 : 1; }), 0) << error;
    fs::remove(path());
    EXPECT_EQ(withRefusedCalls({{SYS_fsync, error}}, [&] { return makeAtOnce() ? 0 : 1; }), 0) << error;
    fs::remove(path());
    EXPECT_EQ(withRefusedCalls({{SYS_fsync, error}}, [&] { return makeReserved() ? 0 : 1; }), 0) << error;
    fs::remove(path());
  }
}

TEST_F(Flushing, AnInterruptedFlushIsMadeAgain) {
  int flushes = 0;
  const auto thirdTime = [&]() -> long { return ++flushes < 3 ? -EINTR : 0; };
  EXPECT_EQ(withAnsweredCall(SYS_fsync, thirdTime, [&] { return flush(STDOUT_FILENO) == 0 ? flushes : 0; }), 3);
}

TEST_F(Flushing, OtherErrorsAreErrors) {
  EXPECT_EQ(flush(-1), EBADF);
  EXPECT_EQ(flushFolder(folder_.path("missing")), ENOENT);
  EXPECT_EQ(withRefusedCalls({{SYS_fsync, EIO}}, [&] { return flushFolder(folder_.path()); }), EIO);
  EXPECT_EQ(
      withRefusedCalls({{SYS_fsync, EIO}}, [&] { return makeInGroup() || makeAtOnce() || makeReserved() ? 1 : 0; }), 0);
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(Flushing, AFileWhoseNameIsNotCertainIsTakenBack) {
  EXPECT_EQ(exitWhenTheFolderFails([&] { return makeAtOnce(); }), 0);
  EXPECT_THAT(names(), IsEmpty());
  EXPECT_EQ(exitWhenTheFolderFails([&] { return makeReserved(); }), 0);
  EXPECT_THAT(names(), IsEmpty());
}

TEST_F(Flushing, WhatSomebodyElsePutsAtTheNameMeanwhileStays) {
  EXPECT_EQ(exitWhenAnotherComes([&] { return makeAtOnce(); }), 0);
  EXPECT_THAT(names(), ElementsAre("a"));
  EXPECT_EQ(contentOf(path()), "theirs");
  fs::remove(path());
  EXPECT_EQ(exitWhenAnotherComes([&] { return makeReserved(); }), 0);
  EXPECT_THAT(names(), ElementsAre("a"));
  EXPECT_EQ(contentOf(path()), "theirs");
}

}  // namespace
}  // namespace Nimbrel
