#include "Linux/Files/DesktopTrash.h"
#include "Linux/Files/TrashInfo.h"

#include "Support/EnvironmentVariable.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"
#include "TrashProgram.h"
#include "Unprivileged.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <ctime>
#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using Testing::EnvironmentVariable;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Not;
using Testing::TemporaryFolder;
using Testing::Unprivileged;
using Testing::waitUntil;

class TrashTest : public ::testing::Test {
 protected:
  /// Empty when all files are in the Trash.
  std::string recycle(const std::vector<std::string>& names) {
    const auto trash = makeDesktopTrash(trash_);
    std::vector<std::string> paths;
    for (const auto& name : names) paths.push_back(folder_.path(name));
    std::optional<std::string> outcome;
    trash->recycle(&context_, paths,
                   [&](const std::optional<Error>& failure) { outcome = failure ? failure->message : std::string(); });
    EXPECT_FALSE(outcome) << "not within the call";
    EXPECT_TRUE(waitUntil([&] { return outcome.has_value(); }));
    return outcome.value_or("no answer");
  }

  [[nodiscard]] bool isThere(const std::string& name) const {
    return fs::exists(fs::symlink_status(folder_.path(name)));
  }
  [[nodiscard]] bool isInTrash(const std::string& name) const { return isThere("data/Trash/files/" + name); }
  [[nodiscard]] std::string infoOf(const std::string& name) const {
    return contentOf(trash_ + "/info/" + name + ".trashinfo");
  }

  TemporaryFolder folder_;
  std::string data_ = folder_.path("data");
  std::string trash_ = data_ + "/Trash";
  QObject context_;
};

TEST_F(TrashTest, MovesAFileAndRemembersWhereItWas) {
  folder_.write("a.png", "content");
  EXPECT_EQ(recycle({"a.png"}), "");
  EXPECT_FALSE(isThere("a.png"));
  EXPECT_EQ(contentOf(trash_ + "/files/a.png"), "content");
  EXPECT_THAT(infoOf("a.png"),
              MatchesRegex("\\[Trash Info\\]\nPath=" + folder_.path("a.png") + "\nDeletionDate=....-..-..T..:..:..\n"));
}

TEST_F(TrashTest, IsForTheUserAlone) {
  folder_.write("a.png", "content");
  EXPECT_EQ(recycle({"a.png"}), "");
  for (const auto& folder : {trash_, trash_ + "/files", trash_ + "/info"}) {
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms::owner_all) << folder;
  }
}

TEST_F(TrashTest, FilesOfOneNameAreNumberedBeforeTheExtension) {
  for (const auto* content : {"one", "two", "three"}) {
    folder_.write("a.png", content);
    EXPECT_EQ(recycle({"a.png"}), "");
  }
  EXPECT_EQ(contentOf(trash_ + "/files/a.png"), "one");
  EXPECT_EQ(contentOf(trash_ + "/files/a 2.png"), "two");
  EXPECT_EQ(contentOf(trash_ + "/files/a 3.png"), "three");
  EXPECT_THAT(infoOf("a 3.png"), HasSubstr("/a.png\n"));
}

TEST_F(TrashTest, LeftoversOfOtherProgramsAreNotOverwritten) {
  folder_.write("data/Trash/files/a.png", "without info");
  folder_.write("data/Trash/info/a 2.png.trashinfo", "without file");
  folder_.write("a.png", "content");
  EXPECT_EQ(recycle({"a.png"}), "");
  EXPECT_EQ(contentOf(trash_ + "/files/a.png"), "without info");
  EXPECT_FALSE(isThere("data/Trash/info/a.png.trashinfo"));
  EXPECT_EQ(infoOf("a 2.png"), "without file");
  EXPECT_EQ(contentOf(trash_ + "/files/a 3.png"), "content");
}

TEST_F(TrashTest, TheSearchForANameEnds) {
  folder_.write("data/Trash/info/a.trashinfo", "");
  for (int i = 2; i <= 1000; ++i) folder_.write("data/Trash/info/a " + std::to_string(i) + ".trashinfo", "");
  folder_.write("a", "content");
  EXPECT_EQ(recycle({"a"}), "The Trash cannot be used: A file of that name is already there");
  EXPECT_TRUE(isThere("a"));
}

TEST_F(TrashTest, TheLongestNamesFit) {
  const auto name = std::string(251, 'n') + ".png";
  for (int i = 0; i < 2; ++i) {
    folder_.write(name, "content");
    EXPECT_EQ(recycle({name}), "");
    EXPECT_FALSE(isThere(name));
  }
  EXPECT_THAT(Testing::trashListed(data_), HasSubstr(folder_.path(name)));
  Testing::restoreFromTrash(data_, folder_.path(name));
  EXPECT_TRUE(isThere(name));
}

TEST_F(TrashTest, TheFirstFailureEndsIt) {
  folder_.write("a", "content");
  folder_.write("c", "content");
  EXPECT_EQ(recycle({"a", "b", "c"}), "The file is not there");
  EXPECT_TRUE(isInTrash("a"));
  EXPECT_TRUE(isThere("c"));
  EXPECT_FALSE(isThere("data/Trash/info/b.trashinfo"));
}

TEST_F(TrashTest, NothingIsDoneForAnEmptyList) { EXPECT_EQ(recycle({}), ""); }

TEST_F(TrashTest, AFolderIsNoFileOfOurs) {
  folder_.write("folder/a", "content");
  EXPECT_EQ(recycle({"folder"}), "It is not a file");
  EXPECT_TRUE(isThere("folder/a"));
}

TEST_F(TrashTest, ALinkGoesAsALink) {
  folder_.write("a", "content");
  fs::create_symlink("a", folder_.path("link"));
  EXPECT_EQ(recycle({"link"}), "");
  EXPECT_TRUE(isThere("a"));
  EXPECT_TRUE(isInTrash("link"));
}

TEST_F(TrashTest, ThePathIsRememberedWithoutLinks) {
  folder_.write("folder/a", "content");
  fs::create_directory_symlink("folder", folder_.path("link"));
  EXPECT_EQ(recycle({"link/a"}), "");
  EXPECT_THAT(infoOf("a"), HasSubstr("Path=" + folder_.path("folder/a") + "\n"));
}

TEST_F(TrashTest, ATrashThatCannotBeWrittenLeavesTheFile) {
  folder_.makeFolder("data/Trash/files");
  folder_.makeFolder("data/Trash/info");
  folder_.write("a", "content");
  for (const auto* locked : {"data/Trash/info", "data/Trash/files"}) {
    ASSERT_EQ(::chmod(folder_.path(locked).c_str(), 0500), 0);
    const Unprivileged unprivileged;
    EXPECT_THAT(recycle({"a"}), HasSubstr("Permission denied")) << locked;
    EXPECT_TRUE(isThere("a"));
    EXPECT_FALSE(isThere("data/Trash/info/a.trashinfo"));
    ASSERT_EQ(::chmod(folder_.path(locked).c_str(), 0700), 0);
  }
}

TEST_F(TrashTest, ATrashThatCannotBeMadeLeavesTheFileAndIsMadeNowhereElse) {
  folder_.makeFolder("data");
  ASSERT_EQ(::chmod(data_.c_str(), 0500), 0);
  folder_.write("a", "content");
  const Unprivileged unprivileged;
  EXPECT_EQ(recycle({"a"}), "The Trash cannot be used: Permission denied");
  EXPECT_TRUE(isThere("a"));
}

TEST_F(TrashTest, AFileInTheWayOfTheTrashIsNamed) {
  folder_.write("data/Trash", "a file");
  folder_.write("a", "content");
  EXPECT_EQ(recycle({"a"}), "The Trash cannot be used: A file stands where a folder is needed");
  EXPECT_TRUE(isThere("a"));
}

TEST_F(TrashTest, AFileThatMustNotLeaveItsFolderStaysAndLeavesNoInfo) {
  folder_.write("locked/a", "content");
  ASSERT_EQ(::chmod(folder_.path("locked").c_str(), 0500), 0);
  const Unprivileged unprivileged;
  EXPECT_EQ(recycle({"locked/a"}), "Permission denied");
  EXPECT_TRUE(isThere("locked/a"));
  EXPECT_FALSE(isThere("data/Trash/info/a.trashinfo"));
}

TEST_F(TrashTest, WhoeverIsGoneIsNotTold) {
  folder_.write("a", "content");
  bool told = false;
  auto context = std::make_unique<QObject>();
  const auto trash = makeDesktopTrash(trash_);
  trash->recycle(context.get(), {folder_.path("a")}, [&](const std::optional<Error>&) { told = true; });
  context.reset();
  EXPECT_TRUE(waitUntil([&] { return isInTrash("a"); }));
  EXPECT_EQ(recycle({}), "");
  EXPECT_FALSE(told);
}

TEST_F(TrashTest, ItsEndWaitsForTheFileAtHand) {
  std::vector<std::string> paths;
  for (int i = 0; i < 50; ++i) paths.push_back(folder_.write(std::to_string(i), "content"));
  makeDesktopTrash(trash_)->recycle(&context_, paths, [](const std::optional<Error>&) {});
  for (int i = 0; i < 50; ++i) {
    const auto name = std::to_string(i);
    EXPECT_NE(isThere(name), isInTrash(name)) << name;
    EXPECT_EQ(isInTrash(name), isThere("data/Trash/info/" + name + ".trashinfo")) << name;
  }
}

class OddName : public TrashTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(OddName, IsFoundAndRestoredByOtherPrograms) {
  folder_.write(GetParam(), "content");
  EXPECT_EQ(recycle({GetParam()}), "");
  EXPECT_THAT(Testing::trashListed(data_), HasSubstr(folder_.path(GetParam()) + "\n"));
  Testing::restoreFromTrash(data_, folder_.path(GetParam()));
  EXPECT_EQ(contentOf(folder_.path(GetParam())), "content");
  EXPECT_THAT(Testing::trashListed(data_), Not(HasSubstr(folder_.path())));
}

INSTANTIATE_TEST_SUITE_P(TrashTest, OddName,
                         ::testing::Values("plain.png", "Bildschirmfoto über Größe.png", "100%.png", "%41.png",
                                           "a  b .png", " a", "line\nfeed.png", "Path=x", "[Trash Info]", "#?;&=+.png",
                                           "..png", ".hidden", "Safari — 2026-03-02.png", "\U0001F600.png"));

TEST_F(TrashTest, BytesThatAreNotUtf8AreRememberedAsTheyAre) {
  folder_.write("a\xFF\xFE.png", "content");
  EXPECT_EQ(recycle({"a\xFF\xFE.png"}), "");
  EXPECT_THAT(infoOf("a\xFF\xFE.png"), HasSubstr("/a%FF%FE.png\n"));
  EXPECT_THAT(Testing::trashListed(data_), HasSubstr(folder_.path("a")));
}

TEST(TrashInfoTest, TheDateIsLocalTime) {
  std::string info;
  {
    const EnvironmentVariable zone("TZ", "XST-5:30");
    ::tzset();
    info = trashInfo("/a b/ä.png", 1'772'452'800);
  }
  ::tzset();
  EXPECT_EQ(info, "[Trash Info]\nPath=/a%20b/%C3%A4.png\nDeletionDate=2026-03-02T17:30:00\n");
}

}  // namespace
}  // namespace Nimbrel
