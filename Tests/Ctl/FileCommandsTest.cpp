#include "CtlFixture.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;
namespace fs = std::filesystem;

class FileCommandsTest : public Testing::CtlFixture {
 protected:
  void SetUp() override { id_ = importPicture("a.png"); }
  [[nodiscard]] std::string word() const { return std::to_string(id_); }

  ShotID id_ = 0;
};

TEST_F(FileCommandsTest, FilesIntoTheLibrary) {
  EXPECT_EQ(statusOf({"file", word()}), "Filed 1 shot into the library");
  EXPECT_TRUE(row(id_)->filed);
  EXPECT_EQ(row(id_)->path, home_.inLibrary("2023/2023-11/a.png"));
  EXPECT_TRUE(fs::exists(row(id_)->path));
}

TEST_F(FileCommandsTest, FailsWithTheReasonWhenNothingCouldBeFiled) {
  fs::remove(home_.path("a.png"));
  const auto output = ctl({"file", word()});
  EXPECT_EQ(output.status, 1);
  EXPECT_THAT(output.errors, StartsWith("nimbrelctl: Could not file a.png: "));
}

TEST_F(FileCommandsTest, Renames) {
  EXPECT_EQ(statusOf({"rename", word(), "report"}), "");
  EXPECT_EQ(row(id_)->name, "report.png");
  EXPECT_TRUE(fs::exists(home_.path("report.png")));
}

TEST_F(FileCommandsTest, FailsWhenTheFileCannotBeRenamed) {
  fs::remove(home_.path("a.png"));
  const auto output = ctl({"rename", word(), "b.png"});
  EXPECT_EQ(output.status, 1);
  EXPECT_THAT(output.errors, StartsWith("nimbrelctl: Rename failed: "));
}

TEST_F(FileCommandsTest, ShrinksAndWaitsForTheTrash) {
  Testing::writePicture(Testing::grainyPicture(160, 120), home_.path("b.png"));
  const auto store = home_.open(ProcessRole::tool);
  store->importFiles({home_.path("b.png")});
  const auto id = Testing::shotNamed(*store, "b.png")->id;
  EXPECT_THAT(statusOf({"shrink", std::to_string(id)}), StartsWith("Shrank 1 · saved "));
  EXPECT_EQ(row(id)->path, home_.path("b.heic"));
  EXPECT_FALSE(fs::exists(home_.path("b.png")));
}

TEST_F(FileCommandsTest, NothingToShrinkIsNoFailure) {
  home_.folder().write("b.png", "no picture");
  const auto store = home_.open(ProcessRole::tool);
  store->importFiles({home_.path("b.png")});
  EXPECT_EQ(statusOf({"shrink", std::to_string(Testing::shotNamed(*store, "b.png")->id)}), "Nothing to shrink");
}

TEST_F(FileCommandsTest, MovesToTheTrashAndWaitsForIt) {
  EXPECT_EQ(statusOf({"trash", word()}), "Moved 1 to Trash");
  EXPECT_FALSE(row(id_));
  EXPECT_FALSE(fs::exists(home_.path("a.png")));
}

TEST_F(FileCommandsTest, AShotThatIsNamedTwiceIsTakenOnce) {
  EXPECT_EQ(statusOf({"trash", word(), word()}), "Moved 1 to Trash");
  EXPECT_FALSE(row(id_));
}

TEST_F(FileCommandsTest, FailsWhenTheFileIsNotThereToBeTrashed) {
  fs::remove(home_.path("a.png"));
  const auto output = ctl({"trash", word()});
  EXPECT_EQ(output.status, 1);
  EXPECT_THAT(output.errors, StartsWith("nimbrelctl: Trash failed: "));
  EXPECT_TRUE(row(id_));
}

TEST_F(FileCommandsTest, ForgetsAndLeavesTheFile) {
  EXPECT_EQ(statusOf({"forget", word()}), "Removed 1 from the catalogue");
  EXPECT_FALSE(row(id_));
  EXPECT_TRUE(fs::exists(home_.path("a.png")));
}

TEST_F(FileCommandsTest, SuggestsWhatToGetRidOf) {
  const auto list = json({"cleanup"}).array();
  ASSERT_EQ(list.size(), 1);
  EXPECT_EQ(list.first().toObject(), (QJsonObject{{QStringLiteral("id"), qint64{id_}},
                                                  {QStringLiteral("reason"), QStringLiteral("Old Inbox item")}}));
  EXPECT_THAT(ctl({"cleanup"}).output, StartsWith("Old Inbox item: "));
  EXPECT_EQ(statusOf({"cleanup", "--trash"}), "Moved 1 to Trash");
  EXPECT_FALSE(row(id_));
  EXPECT_EQ(statusOf({"cleanup", "--trash"}), "");
}

TEST_F(FileCommandsTest, PurgesTheOldestFirst) {
  const auto younger = importPicture("younger.png", 100);
  EXPECT_THAT(Testing::idsIn(json({"purge", "--days", "365"}).array()), ElementsAre(id_, younger));
  EXPECT_THAT(Testing::idsIn(json({"purge", "--days", "100000"}).array()), ::testing::IsEmpty());
  EXPECT_EQ(statusOf({"file", word()}), "Filed 1 shot into the library");
  EXPECT_THAT(Testing::idsIn(json({"purge", "--days", "365", "--inbox-only"}).array()), ElementsAre(younger));
  EXPECT_EQ(statusOf({"purge", "--days=30", "--trash"}), "Moved 2 to Trash");
  EXPECT_FALSE(row(younger));
}

TEST_F(FileCommandsTest, APurgeNeedsANumberOfDays) {
  EXPECT_EQ(ctl({"purge"}).status, 2);
  for (const auto* days : {"", "many", "-1", "1.5", "99999999999999999999"}) {
    EXPECT_EQ(ctl({"purge", "--days", days}).status, 2) << days;
  }
  EXPECT_TRUE(row(id_));
}

class DuplicatesTrashTest : public FileCommandsTest {
 protected:
  void SetUp() override {
    FileCommandsTest::SetUp();
    newer_ = importPicture("newer.png", 60);
    newest_ = importPicture("newest.png", 120);
    const auto store = home_.open(ProcessRole::tool);
    for (const auto id : {id_, newer_, newest_}) store->database().setHash(id, 0xFF00);
  }
  [[nodiscard]] std::vector<std::string> remaining() {
    return Testing::namesOf(home_.open(ProcessRole::tool)->shots());
  }

  ShotID newer_ = 0;
  ShotID newest_ = 0;
};

TEST_F(DuplicatesTrashTest, KeepsTheNewestOfEachGroup) {
  EXPECT_EQ(statusOf({"duplicates", "--trash"}), "Moved 2 to Trash");
  EXPECT_THAT(remaining(), ElementsAre("newest.png"));
  EXPECT_EQ(statusOf({"duplicates", "--trash"}), "");
}

TEST_F(DuplicatesTrashTest, KeepsTheOneThatWasAskedFor) {
  EXPECT_EQ(statusOf({"duplicates", "--trash", "--keep", std::to_string(newer_)}), "Moved 2 to Trash");
  EXPECT_THAT(remaining(), ElementsAre("newer.png"));
}

TEST_F(DuplicatesTrashTest, KeepsAllThatWereAskedFor) {
  EXPECT_EQ(statusOf({"duplicates", "--trash", "--keep", std::to_string(id_), std::to_string(newer_)}),
            "Moved 1 to Trash");
  EXPECT_THAT(remaining(), ElementsAre("newer.png", "a.png"));
}

TEST_F(DuplicatesTrashTest, OnlyLooksWithoutBeingAskedForMore) {
  EXPECT_EQ(json({"duplicates"}).array().size(), 1);
  EXPECT_EQ(ctl({"duplicates", "--keep", std::to_string(newer_)}).status, 2);
  EXPECT_EQ(ctl({"duplicates", std::to_string(newer_)}).status, 2);
  EXPECT_EQ(ctl({"duplicates", "--trash", "--keep", "999"}).status, 1);
  EXPECT_EQ(remaining().size(), 3U);
}

}  // namespace
}  // namespace Nimbrel
