#include "Platform/NewFile.h"

#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using Testing::TemporaryFolder;

std::size_t entriesOf(const std::string& folder) {
  return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}));
}

TEST(NewFile, IsWhatWasWritten) {
  const TemporaryFolder folder;
  const std::string bytes("a\0b\n", 4);
  EXPECT_FALSE(NewFile::write(folder.path("a"), bytes));
  EXPECT_EQ(contentOf(folder.path("a")), bytes);
  EXPECT_EQ(entriesOf(folder.path("")), 1U) << "nothing else is left";
}

TEST(NewFile, IsAsOpenAsAnyNewFile) {
  const TemporaryFolder folder;
  const auto mask = ::umask(022);
  EXPECT_FALSE(NewFile::write(folder.path("a"), "x"));
  ::umask(mask);
  EXPECT_EQ(fs::status(folder.path("a")).permissions(), static_cast<fs::perms>(0644));
}

TEST(NewFile, NeverReplaces) {
  const TemporaryFolder folder;
  folder.write("a", "old");
  EXPECT_TRUE(NewFile::write(folder.path("a"), "new"));
  EXPECT_EQ(contentOf(folder.path("a")), "old");
  EXPECT_EQ(entriesOf(folder.path("")), 1U);
}

TEST(NewFile, NeedsItsFolder) {
  const TemporaryFolder folder;
  EXPECT_TRUE(NewFile::write(folder.path("no/a"), "x"));
}

TEST(NewFile, APathWithAZeroIsRefused) {
  const TemporaryFolder folder;
  EXPECT_TRUE(NewFile::write(folder.path(std::string("a\0b", 3)), "x"));
  EXPECT_EQ(entriesOf(folder.path("")), 0U);
}

TEST(NewFile, LeavesNothingOnAFullDisk) {
  const TemporaryFolder folder;
  const int status = Testing::onSmallDisk(folder.path(""), 64 * 1024, [&] {
    const bool failed = NewFile::write(folder.path("a"), std::string(1 << 20, 'x')).has_value();
    return failed && entriesOf(folder.path("")) == 0 ? 0 : 1;
  });
  EXPECT_EQ(status, 0);
}

TEST(NewFile, IsGoneOnceItIsTakenBack) {
  const TemporaryFolder folder;
  EXPECT_FALSE(NewFile::write(folder.path("a"), "x"));
  NewFile::discard(folder.path("a"));
  EXPECT_EQ(entriesOf(folder.path("")), 0U);
}

}  // namespace
}  // namespace Nimbrel
