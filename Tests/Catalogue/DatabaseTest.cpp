#include "Catalogue/Database.h"

#include "Support/LogRecorder.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <sqlite3.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::LogRecorder;
using Testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;
using Strings = std::vector<std::string>;

Shot found(const std::string& path, double date = 100) {
  Shot shot;
  shot.path = path;
  shot.name = path.substr(path.rfind('/') + 1);
  shot.date = timestamp(date);
  shot.added = timestamp(date + 0.25);
  return shot;
}

std::vector<ShotID> idsOf(const ShotList& shots) {
  std::vector<ShotID> ids;
  for (const auto& shot : shots) ids.push_back(shot->id);
  return ids;
}

class DatabaseTest : public ::testing::Test {
 protected:
  void SetUp() override {
    auto opened = Database::open(file());
    ASSERT_TRUE(opened) << opened.error().message;
    database_ = std::move(opened).value();
  }

  [[nodiscard]] std::string file() const { return folder_.path("Nimbrel/nimbrel.sqlite"); }

  /// Runs a statement over a connection of its own, as another process would.
  void runElsewhere(const std::string& sql) const {
    sqlite3* connection = nullptr;
    ASSERT_EQ(sqlite3_open(file().c_str(), &connection), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(connection, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(connection);
    sqlite3_close(connection);
  }

  TemporaryFolder folder_;
  std::unique_ptr<Database> database_;
};

TEST_F(DatabaseTest, AShotThatWasInsertedReadsBack) {
  auto shot = found("/s/Screenshot.png", 1234.5678);
  shot.bytes = std::int64_t{1} << 40;
  shot.width = 1440;
  shot.height = 900;
  shot.appName = "Términal";
  shot.captureType = "window";
  shot.filed = true;
  shot.tags = {"a", "project:b"};
  shot.bundleID = "org.example.terminal";
  shot.appAttributionTrusted = true;
  shot.id = database_->insert(shot);
  EXPECT_EQ(database_->shot(shot.id), shot);
}

TEST_F(DatabaseTest, InsertWritesNoTextNoteOrMarks) {
  auto shot = found("/s/a.png");
  shot.ocr = "text";
  shot.ocrDone = true;
  shot.note = "note";
  shot.favorite = true;
  shot.sensitive = {"Email"};
  shot.phash = 7;
  shot.barcodes = {"code"};
  shot.shownName = "name";
  const auto read = database_->shot(database_->insert(shot));
  ASSERT_TRUE(read);
  auto expected = found("/s/a.png");
  expected.id = read->id;
  EXPECT_EQ(*read, expected);
}

TEST_F(DatabaseTest, InsertOfAPathThatExistsReturnsItsIdAndRewritesItsIndexEntryOnly) {
  const auto id = database_->insert(found("/s/a.png"));
  database_->setNote(id, "kept");
  runElsewhere("DELETE FROM shots_fts");
  auto again = found("/s/a.png", 999);
  again.bytes = 5;
  EXPECT_EQ(database_->insert(again), id);
  const auto read = database_->shot(id);
  EXPECT_EQ(read->note, "kept");
  EXPECT_EQ(read->bytes, 0);
  EXPECT_EQ(read->date, timestamp(100));
  EXPECT_THAT(*database_->searchIDs("kept"), UnorderedElementsAre(id));
}

TEST_F(DatabaseTest, ShotsComeNewestFirst) {
  const auto old = database_->insert(found("/s/old.png", 1));
  const auto recent = database_->insert(found("/s/new.png", 3));
  const auto middle = database_->insert(found("/s/mid.png", 2));
  EXPECT_THAT(idsOf(database_->allShots({})), ElementsAre(recent, middle, old));
}

TEST_F(DatabaseTest, RowsThatDidNotChangeShareTheirFormerValues) {
  const auto a = database_->insert(found("/s/a.png", 3));
  const auto b = database_->insert(found("/s/b.png", 2));
  const auto c = database_->insert(found("/s/c.png", 1));
  const auto former = database_->allShots({});
  database_->setNote(b, "changed");
  const auto now = database_->allShots(former);
  ASSERT_THAT(idsOf(now), ElementsAre(a, b, c));
  EXPECT_EQ(now[0], former[0]);
  EXPECT_NE(now[1], former[1]);
  EXPECT_EQ(now[1]->note, "changed");
  EXPECT_EQ(now[2], former[2]);
}

TEST_F(DatabaseTest, RowsAreFoundAgainWhenTheirOrderChanged) {
  database_->insert(found("/s/a.png", 3));
  const auto b = database_->insert(found("/s/b.png", 2));
  database_->insert(found("/s/c.png", 1));
  const auto former = database_->allShots({});
  database_->remove(former[0]->id, Database::IgnorePath::No);
  const auto d = database_->insert(found("/s/d.png", 1.5));
  const auto now = database_->allShots(former);
  ASSERT_THAT(idsOf(now), ElementsAre(b, d, former[2]->id));
  EXPECT_EQ(now[0], former[1]);
  EXPECT_EQ(now[2], former[2]);
}

TEST_F(DatabaseTest, AnyChangedColumnMakesANewValue) {
  const auto id = database_->insert(found("/s/a.png"));
  for (const std::string column : {"path='/x'",     "name='x'",      "date=9",
                                   "added=9",       "bytes=9",       "width=9",
                                   "height=9",      "appName='x'",   "captureType='x'",
                                   "filed=1",       "ocr='x'",       "ocrDone=1",
                                   "note='x'",      "tags='x'",      "favorite=1",
                                   "sensitive='x'", "phash=9",       "barcodes='x'",
                                   "bundleID='x'",  "shownName='x'", "appAttributionTrusted=1"}) {
    const auto former = database_->allShots({});
    runElsewhere("UPDATE shots SET " + column);
    const auto now = database_->allShots(former);
    ASSERT_EQ(now.size(), 1U);
    EXPECT_NE(*now[0], *former[0]) << column;
    EXPECT_EQ(*now[0], *database_->shot(id)) << column;
  }
}

TEST_F(DatabaseTest, OnlyTheValueOneIsTrue) {
  const auto id = database_->insert(found("/s/a.png"));
  runElsewhere("UPDATE shots SET filed=2, ocrDone=-1, favorite='yes', appAttributionTrusted=1");
  const auto shot = database_->shot(id);
  EXPECT_FALSE(shot->filed);
  EXPECT_FALSE(shot->ocrDone);
  EXPECT_FALSE(shot->favorite);
  EXPECT_TRUE(shot->appAttributionTrusted);
}

TEST_F(DatabaseTest, ATagListOfOneEmptyTextReadsBackAsTheEmptyList) {
  const auto id = database_->insert(found("/s/a.png"));
  database_->setTags(id, {""});
  EXPECT_THAT(database_->shot(id)->tags, IsEmpty());
}

TEST_F(DatabaseTest, ATagThatHoldsACommaBecomesTwo) {
  const auto id = database_->insert(found("/s/a.png"));
  database_->setTags(id, {"a,b", "c"});
  EXPECT_EQ(database_->shot(id)->tags, (Strings{"a", "b", "c"}));
}

TEST_F(DatabaseTest, CodesKeepEmptyPiecesAndSplitAtLineFeeds) {
  const auto id = database_->insert(found("/s/a.png"));
  database_->setCodes(id, {"one", "two"});
  EXPECT_EQ(database_->shot(id)->barcodes, (Strings{"one", "two"}));
  database_->setCodes(id, {"with\nline feed"});
  EXPECT_EQ(database_->shot(id)->barcodes, (Strings{"with", "line feed"}));
  database_->setCodes(id, {"a", "", "b"});
  EXPECT_EQ(database_->shot(id)->barcodes, (Strings{"a", "", "b"}));
  database_->setCodes(id, {});
  EXPECT_THAT(database_->shot(id)->barcodes, IsEmpty());
}

TEST_F(DatabaseTest, SettingThePathSetsTheName) {
  const auto id = database_->insert(found("/s/a.png"));
  database_->setPath(id, "/library/2026/b c.png", Database::Filed::Yes);
  const auto shot = database_->shot(id);
  EXPECT_EQ(shot->path, "/library/2026/b c.png");
  EXPECT_EQ(shot->name, "b c.png");
  EXPECT_TRUE(shot->filed);
}

TEST_F(DatabaseTest, ARowOfAVanishedFileGivesItsPathToTheFileThatMovesThere) {
  const auto vanished = database_->insert(found("/s/a.png"));
  const auto moved = database_->insert(found("/s/b.png"));
  database_->setNote(vanished, "unmistakable");
  database_->setPath(moved, "/s/a.png", Database::Filed::Yes);
  EXPECT_FALSE(database_->shot(vanished).has_value());
  EXPECT_EQ(database_->shot(moved)->path, "/s/a.png");
  EXPECT_THAT(*database_->searchIDs("unmistakable"), IsEmpty());
  EXPECT_THAT(database_->ignoredPaths(), IsEmpty());
}

TEST_F(DatabaseTest, SettingThePathOfNoRowCostsNoOther) {
  const auto id = database_->insert(found("/s/a.png"));
  database_->setPath(id + 1, "/s/a.png", Database::Filed::Yes);
  EXPECT_FALSE(database_->shot(id)->filed);
}

TEST_F(DatabaseTest, SettingThePathThatARowHasKeepsIt) {
  const auto id = database_->insert(found("/s/a.png"));
  database_->setPath(id, "/s/a.png", Database::Filed::Yes);
  EXPECT_TRUE(database_->shot(id)->filed);
}

TEST_F(DatabaseTest, EachSetterWritesItsColumns) {
  const auto id = database_->insert(found("/s/a.png"));
  database_->setFavorite(id, true);
  database_->setBytes(id, 77);
  database_->setShownName(id, "Mine");
  database_->setHash(id, -5);
  database_->setOCR(id, "text", {"Token", "Email"});
  database_->setApp(id, "Editor", "org.example.editor", Database::Trusted::Yes);
  auto expected = found("/s/a.png");
  expected.id = id;
  expected.favorite = true;
  expected.bytes = 77;
  expected.shownName = "Mine";
  expected.phash = -5;
  expected.ocr = "text";
  expected.ocrDone = true;
  expected.sensitive = {"Token", "Email"};
  expected.appName = "Editor";
  expected.bundleID = "org.example.editor";
  expected.appAttributionTrusted = true;
  EXPECT_EQ(database_->shot(id), expected);
}

TEST_F(DatabaseTest, PendingShotsAreThoseNotDoneNewestFirst) {
  const auto old = database_->insert(found("/s/old.png", 1));
  const auto recent = database_->insert(found("/s/new.png", 2));
  const auto done = database_->insert(found("/s/done.png", 3));
  database_->setOCR(done, "", {});
  database_->setCodes(done, {});
  database_->setHash(done, 1);
  EXPECT_THAT(idsOf(database_->pendingOCR(10)), ElementsAre(recent, old));
  EXPECT_THAT(idsOf(database_->pendingCodes(10)), ElementsAre(recent, old));
  EXPECT_THAT(idsOf(database_->pendingHash(1)), ElementsAre(recent));
}

TEST_F(DatabaseTest, TagsAreDistinctAndInTheOrderOfTheirCodePoints) {
  database_->setTags(database_->insert(found("/s/a.png")), {"b", "project:x", "Z"});
  database_->setTags(database_->insert(found("/s/b.png")), {"b", "é", "a"});
  EXPECT_EQ(database_->allTags(), (Strings{"Z", "a", "b", "project:x", "é"}));
}

TEST_F(DatabaseTest, RemoveWithoutIgnoringLeavesNoTrace) {
  const auto id = database_->insert(found("/s/a.png"));
  database_->remove(id, Database::IgnorePath::No);
  EXPECT_FALSE(database_->shot(id));
  EXPECT_THAT(database_->indexedPaths(), IsEmpty());
  EXPECT_THAT(database_->ignoredPaths(), IsEmpty());
  EXPECT_THAT(*database_->searchIDs("a"), IsEmpty());
}

TEST_F(DatabaseTest, RemoveWithIgnoringKeepsThePathAsIgnoredUntilItIsUnignored) {
  database_->remove(database_->insert(found("/s/a.png")), Database::IgnorePath::Yes);
  EXPECT_THAT(database_->ignoredPaths(), UnorderedElementsAre("/s/a.png"));
  database_->unignore("/s/a.png");
  EXPECT_THAT(database_->ignoredPaths(), IsEmpty());
}

TEST_F(DatabaseTest, RemovingARowThatIsGoneIgnoresNothing) {
  database_->remove(12, Database::IgnorePath::Yes);
  EXPECT_THAT(database_->ignoredPaths(), IsEmpty());
}

TEST_F(DatabaseTest, NamesOfAnyBytesReadBackAsTheyAre) {
  for (const std::string path : {"/s/\xFF\xFE.png", "/s/line\nfeed.png", "/s/quo\"te's.png", "/s/back\\slash.png"}) {
    const auto id = database_->insert(found(path));
    ASSERT_NE(id, 0);
    EXPECT_EQ(database_->shot(id)->path, path);
    EXPECT_TRUE(database_->indexedPaths().contains(path));
  }
}

TEST_F(DatabaseTest, TheDataVersionChangesWithCommitsOfOthersOnly) {
  const auto before = database_->dataVersion();
  database_->insert(found("/s/a.png"));
  EXPECT_EQ(database_->dataVersion(), before);
  runElsewhere("UPDATE shots SET note='x'");
  EXPECT_NE(database_->dataVersion(), before);
}

TEST_F(DatabaseTest, OwnChangesGrowWithWritesOfThisConnection) {
  const auto before = database_->ownChanges();
  runElsewhere("INSERT INTO ignored VALUES ('/x')");
  EXPECT_EQ(database_->ownChanges(), before);
  database_->insert(found("/s/a.png"));
  EXPECT_GT(database_->ownChanges(), before);
}

TEST_F(DatabaseTest, AStatementThatCannotBePreparedIsLoggedAndDoesNothing) {
  const LogRecorder log;
  runElsewhere("DROP TABLE ignored");
  EXPECT_THAT(database_->allTags(), IsEmpty());  // reads the tables of the file anew
  EXPECT_THAT(database_->ignoredPaths(), IsEmpty());
  database_->unignore("/x");
  EXPECT_THAT(log.lines(),
              ElementsAre("Nimbrel SQL error: no such table: ignored — SELECT path FROM ignored",
                          "Nimbrel SQL error: no such table: ignored — DELETE FROM ignored WHERE path = ?"));
}

}  // namespace
}  // namespace Nimbrel
