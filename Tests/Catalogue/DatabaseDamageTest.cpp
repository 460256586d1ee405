#include "Catalogue/Database.h"

#include "Support/LogRecorder.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <sqlite3.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using Testing::contentOf;
using ::testing::Each;
using ::testing::IsEmpty;
using Testing::LogRecorder;
using ::testing::MatchesRegex;
using ::testing::Not;
using ::testing::StartsWith;
using Testing::TemporaryFolder;

Shot found(const std::string& path) {
  Shot shot;
  shot.path = path;
  shot.name = path.substr(path.rfind('/') + 1);
  return shot;
}

class DatabaseDamageTest : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
  std::string file_ = folder_.path("Nimbrel/nimbrel.sqlite");
  LogRecorder log_;
};

TEST_F(DatabaseDamageTest, AFolderThatCannotBeMadeIsAnError) {
  folder_.write("Nimbrel", "a file where the folder should be");
  const auto opened = Database::open(file_);
  ASSERT_FALSE(opened);
  EXPECT_THAT(opened.error().message, StartsWith("Cannot create " + folder_.path("Nimbrel")));
}

TEST_F(DatabaseDamageTest, AFileThatCannotBeOpenedIsAnError) {
  folder_.makeFolder("Nimbrel/nimbrel.sqlite");
  const auto opened = Database::open(file_);
  ASSERT_FALSE(opened);
  EXPECT_EQ(opened.error().message, "Cannot open database at " + file_);
}

TEST_F(DatabaseDamageTest, ACorruptFileOpensIsEmptyAndIsLeftAsItIs) {
  const std::string garbage = "this is no catalogue, " + std::string(5000, 'x');
  folder_.write("Nimbrel/nimbrel.sqlite", garbage);
  {
    const auto database = Database::open(file_).value();
    EXPECT_THAT(database->allShots({}), IsEmpty());
    EXPECT_EQ(database->insert(found("/s/a.png")), 0);
    EXPECT_EQ(database->searchIDs("a"), ShotIDSet{});
  }
  EXPECT_EQ(contentOf(file_), garbage);
  EXPECT_THAT(log_.lines(), Not(IsEmpty()));
  EXPECT_THAT(log_.lines(), Each(StartsWith("Nimbrel SQL error: file is not a database — ")));
}

TEST_F(DatabaseDamageTest, AFileCutShortIsReadAsFarAsItGoes) {
  {
    const auto database = Database::open(file_).value();
    for (int i = 0; i < 300; ++i) database->insert(found("/s/" + std::to_string(i) + ".png"));
  }
  std::filesystem::resize_file(file_, std::filesystem::file_size(file_) / 2);
  const auto database = Database::open(file_).value();
  for (const auto& shot : database->allShots({})) EXPECT_THAT(shot->path, MatchesRegex("/s/[0-9]+\\.png"));
  static_cast<void>(database->insert(found("/s/new.png")));
  static_cast<void>(database->searchIDs("png"));
}

TEST_F(DatabaseDamageTest, AWriteThatMeetsALockIsLostWithoutAWordAndReadsGoOn) {
  const auto database = Database::open(file_).value();
  const auto id = database->insert(found("/s/a.png"));
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(file_.c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  database->setNote(id, "lost");
  EXPECT_EQ(database->insert(found("/s/b.png")), 0);
  EXPECT_EQ(database->shot(id)->note, "");
  ASSERT_EQ(sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
  sqlite3_close(other);
  EXPECT_THAT(log_.lines(), IsEmpty());
  database->setNote(id, "kept");
  EXPECT_EQ(database->shot(id)->note, "kept");
}

TEST_F(DatabaseDamageTest, AnExclusivelyLockedFileOpensAndIsEmptyUntilTheLockGoes) {
  Database::open(file_).value()->insert(found("/s/a.png"));
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(file_.c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "PRAGMA locking_mode=EXCLUSIVE; PRAGMA journal_mode=DELETE; BEGIN EXCLUSIVE", nullptr,
                         nullptr, nullptr),
            SQLITE_OK);
  const auto database = Database::open(file_).value();
  EXPECT_THAT(database->allShots({}), IsEmpty());
  EXPECT_EQ(database->insert(found("/s/b.png")), 0);
  EXPECT_EQ(database->dataVersion(), 0);
  sqlite3_close(other);
  EXPECT_EQ(database->allShots({}).size(), 1U);
}

TEST_F(DatabaseDamageTest, AFullDiskLosesTheInsertAndNothingElse) {
  const auto disk = folder_.makeFolder("disk");
  const auto outcome = Testing::onSmallDisk(disk, 512 << 10, [&] {
    auto opened = Database::open(disk + "/Nimbrel/nimbrel.sqlite");
    if (!opened) return 1;
    auto& database = *opened.value();
    std::size_t added = 0;
    ShotID last = 1;
    for (int i = 0; i < 2000 && last != 0; ++i) {
      last = database.insert(found("/s/" + std::string(400, 'n') + std::to_string(i) + ".png"));
      if (last != 0) ++added;
    }
    if (last != 0) return 2;  // the disk never filled up
    return database.allShots({}).size() == added && added > 0 ? 0 : 3;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(DatabaseDamageTest, AReadOnlyFileOpensReadsAndLosesItsWrites) {
  const auto disk = folder_.makeFolder("disk");
  Database::open(disk + "/nimbrel.sqlite").value()->insert(found("/s/a.png"));
  // Permissions do not hold root back, a disk mounted read-only does.
  const auto outcome = Testing::onReadOnlyDisk(disk, [&] {
    auto opened = Database::open(disk + "/nimbrel.sqlite");
    if (!opened) return 1;
    if (opened.value()->insert(found("/s/b.png")) != 0) return 2;
    return 0;
  });
  EXPECT_EQ(outcome, 0);
  EXPECT_EQ(Database::open(disk + "/nimbrel.sqlite").value()->allShots({}).size(), 1U);
}

}  // namespace
}  // namespace Nimbrel
