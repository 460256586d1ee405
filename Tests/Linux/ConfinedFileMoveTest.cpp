#include "Platform/FileMove.h"
#include "Platform/FileSystem.h"

#include "Mount.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <filesystem>
#include <set>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::Mount;
using Testing::TemporaryFolder;

constexpr const char* attribute = "user.kMDItemScreenCaptureType";

std::string attributeOf(const std::string& path) {
  std::array<char, 100> value{};
  const auto length = ::getxattr(path.c_str(), attribute, value.data(), value.size());
  return length < 0 ? "none" : std::string(value.data(), static_cast<std::size_t>(length));
}

class MoveToAnotherDisk : public ::testing::Test {
 protected:
  MoveToAnotherDisk() {
    folder_.makeFolder("disk");
    folder_.makeFolder("aside");
  }

  /// From "a" to "b" on the disk; empty when that worked.
  [[nodiscard]] std::string move() const {
    const auto failure = FileMove::move(source_, target_);
    return failure ? failure->message : "";
  }

  /// All that is on the disk, what is hidden as well.
  [[nodiscard]] std::set<std::string> namesOnDisk() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_.path("disk"))) names.insert(entry.path().filename());
    return names;
  }

  TemporaryFolder folder_;
  std::string source_ = folder_.write("a", "content");
  std::string target_ = folder_.path("disk/b");
};

TEST_F(MoveToAnotherDisk, ContentTimesPermissionsAndAttributesComeAlong) {
  const auto disk = Mount::again(folder_.path("aside"), folder_.path("disk"));
  ASSERT_EQ(::chmod(source_.c_str(), 0640), 0);
  ASSERT_EQ(::setxattr(source_.c_str(), attribute, "window", 6, 0), 0);
  const std::array<timespec, 2> times{timespec{1'600'000'000, 5}, timespec{1'700'000'000, 7}};
  ASSERT_EQ(::utimensat(AT_FDCWD, source_.c_str(), times.data(), 0), 0);
  EXPECT_EQ(move(), "");
  struct stat facts {};
  ASSERT_EQ(::stat(target_.c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mode & 07777, 0640U);
  EXPECT_EQ(facts.st_atim.tv_sec, 1'600'000'000);
  EXPECT_EQ(facts.st_mtim.tv_sec, 1'700'000'000);
  EXPECT_EQ(facts.st_mtim.tv_nsec, 7);
  EXPECT_EQ(attributeOf(target_), "window");
  EXPECT_EQ(contentOf(target_), "content");
  EXPECT_FALSE(fs::exists(source_));
  EXPECT_THAT(namesOnDisk(), ElementsAre("b"));
}

TEST_F(MoveToAnotherDisk, AttributesThatItCannotKeepArePassedOver) {
  const auto disk = Mount::ofKind("ramfs", folder_.path("disk"));
  ASSERT_EQ(::setxattr(source_.c_str(), attribute, "window", 6, 0), 0);
  EXPECT_EQ(move(), "");
  EXPECT_EQ(attributeOf(target_), "none");
  EXPECT_EQ(contentOf(target_), "content");
}

TEST_F(MoveToAnotherDisk, NothingIsOverwritten) {
  const auto disk = Mount::ofKind("tmpfs", folder_.path("disk"));
  folder_.write("disk/b", "other");
  EXPECT_EQ(move(), "A file of that name is already there");
  EXPECT_EQ(contentOf(source_), "content");
  EXPECT_EQ(contentOf(target_), "other");
  EXPECT_THAT(namesOnDisk(), ElementsAre("b"));
}

TEST_F(MoveToAnotherDisk, AFullDiskCostsNothing) {
  const auto disk = Mount::ofKind("tmpfs", folder_.path("disk"), "size=64k");
  folder_.write("a", std::string(200'000, 'x'));
  EXPECT_EQ(move(), "No space left on the disk");
  EXPECT_EQ(contentOf(source_), std::string(200'000, 'x'));
  EXPECT_THAT(namesOnDisk(), IsEmpty());
}

TEST_F(MoveToAnotherDisk, AReadOnlyDiskCostsNothing) {
  const auto disk = Mount::readOnly(folder_.path("disk"));
  EXPECT_EQ(move(), "The disk is read-only");
  EXPECT_EQ(contentOf(source_), "content");
}

TEST_F(MoveToAnotherDisk, AFileThatCannotBeTakenAwayIsNotCopied) {
  folder_.write("fixed/a", "content");
  const auto fixed = Mount::readOnly(folder_.path("fixed"));
  const auto failure = FileMove::move(folder_.path("fixed/a"), target_);
  EXPECT_EQ(failure, Error{"The disk is read-only"});
  EXPECT_THAT(namesOnDisk(), IsEmpty());
  EXPECT_EQ(contentOf(folder_.path("fixed/a")), "content");
}

TEST_F(MoveToAnotherDisk, ALinkIsMovedAsALink) {
  const auto disk = Mount::ofKind("tmpfs", folder_.path("disk"));
  fs::remove(source_);
  fs::create_symlink("/nowhere", source_);
  EXPECT_EQ(move(), "");
  EXPECT_EQ(fs::read_symlink(target_), "/nowhere");
  EXPECT_FALSE(fs::is_symlink(source_));
}

TEST_F(MoveToAnotherDisk, ALinkDoesNotOverwriteEither) {
  const auto disk = Mount::ofKind("tmpfs", folder_.path("disk"));
  fs::remove(source_);
  fs::create_symlink("/nowhere", source_);
  folder_.write("disk/b", "other");
  EXPECT_EQ(move(), "A file of that name is already there");
  EXPECT_TRUE(fs::is_symlink(source_));
  EXPECT_EQ(contentOf(target_), "other");
}

TEST_F(MoveToAnotherDisk, ACrashOnTheWayLeavesTheFileAndNothingThatLooksLikeAnother) {
  const auto disk = Mount::ofKind("tmpfs", folder_.path("disk"));
  const std::string content(1 << 20, 'x');
  folder_.write("a", content);
  // The system ends a process that writes a file beyond its limit.
  const auto child = ::fork();
  if (child == 0) {
    const rlimit limit{300'000, 300'000};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
    ::_exit(FileMove::move(source_, target_) ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ);
  EXPECT_EQ(contentOf(source_), content);
  EXPECT_EQ(namesOnDisk().size(), 1U);
  int found = 0;
  FileSystem::forEachFileBelow(folder_.path("disk"), [&](const std::string&) { ++found; });
  EXPECT_EQ(found, 0);
  EXPECT_EQ(move(), "") << "the rest of the crash is in nobody's way";
}

}  // namespace
}  // namespace Nimbrel
