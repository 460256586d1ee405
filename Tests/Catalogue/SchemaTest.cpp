#include "Catalogue/Database.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <sqlite3.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using Testing::TemporaryFolder;

/// A connection of the test's own to a catalogue file.
class Connection {
 public:
  explicit Connection(const std::string& file) { EXPECT_EQ(sqlite3_open(file.c_str(), &connection_), SQLITE_OK); }
  ~Connection() { sqlite3_close(connection_); }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// The first column of all rows, one a line.
  [[nodiscard]] std::string ask(const std::string& sql) const {
    std::string answer;
    const auto collect = [](void* text, int, char** values, char**) {
      *static_cast<std::string*>(text) += std::string(values[0] == nullptr ? "NULL" : values[0]) + "\n";
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(connection_, sql.c_str(), collect, &answer, nullptr), SQLITE_OK)
        << sqlite3_errmsg(connection_);
    return answer;
  }

 private:
  sqlite3* connection_ = nullptr;
};

const std::string firstRelease =
    "CREATE TABLE shots (id INTEGER PRIMARY KEY, path TEXT UNIQUE NOT NULL, name TEXT NOT NULL, date REAL NOT NULL, "
    "added REAL NOT NULL, bytes INTEGER NOT NULL DEFAULT 0, width INTEGER NOT NULL DEFAULT 0, height INTEGER NOT NULL "
    "DEFAULT 0, appName TEXT NOT NULL DEFAULT '', captureType TEXT NOT NULL DEFAULT '', filed INTEGER NOT NULL DEFAULT "
    "0, ocr TEXT NOT NULL DEFAULT '', ocrDone INTEGER NOT NULL DEFAULT 0, note TEXT NOT NULL DEFAULT '', tags TEXT NOT "
    "NULL DEFAULT '', favorite INTEGER NOT NULL DEFAULT 0);"
    "INSERT INTO shots (path, name, date, added, note) VALUES ('/s/a.png', 'a.png', 5, 6, 'kept');"
    "INSERT INTO shots (path, name, date, added, favorite) VALUES ('/s/b.png', 'b.png', 7, 8, 1);";

class SchemaTest : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
  std::string file_ = folder_.path("Nimbrel/nimbrel.sqlite");
};

TEST_F(SchemaTest, AFreshCatalogueHasItsTablesAndIndexes) {
  ASSERT_TRUE(Database::open(file_));
  const Connection connection(file_);
  EXPECT_EQ(connection.ask("SELECT name FROM pragma_table_info('shots')"),
            "id\npath\nname\ndate\nadded\nbytes\nwidth\nheight\nappName\ncaptureType\nfiled\nocr\nocrDone\nnote\ntags\n"
            "favorite\nsensitive\nphash\nbarcodes\ncodesDone\nbundleID\nshownName\nappAttributionTrusted\n");
  EXPECT_EQ(
      connection.ask("SELECT sql FROM sqlite_master WHERE name IN ('ignored','shots_date','shots_filed') ORDER BY 1"),
      "CREATE INDEX shots_date ON shots(date)\nCREATE INDEX shots_filed ON shots(filed)\n"
      "CREATE TABLE ignored (path TEXT PRIMARY KEY)\n");
  EXPECT_EQ(
      connection.ask("SELECT sql FROM sqlite_master WHERE name = 'shots_fts'"),
      "CREATE VIRTUAL TABLE shots_fts USING fts5(\n    name, appName, ocr, note, tags, tokenize='unicode61'\n)\n");
  EXPECT_EQ(connection.ask("PRAGMA journal_mode"), "wal\n");
}

TEST_F(SchemaTest, TheColumnsOfTheFirstReleaseAreWrittenAsTheyAlwaysWere) {
  ASSERT_TRUE(Database::open(file_));
  const auto sql = Connection(file_).ask("SELECT sql FROM sqlite_master WHERE name = 'shots'");
  EXPECT_TRUE(
      sql.starts_with("CREATE TABLE shots (\n    id INTEGER PRIMARY KEY,\n    path TEXT UNIQUE NOT NULL,\n    "
                      "name TEXT NOT NULL,\n    date REAL NOT NULL,\n"))
      << sql;
  EXPECT_NE(sql.find("\n    favorite INTEGER NOT NULL DEFAULT 0\n"), std::string::npos) << sql;
}

TEST_F(SchemaTest, AnOlderFileGetsTheLaterColumnsAndKeepsItsRows) {
  folder_.makeFolder("Nimbrel");
  static_cast<void>(Connection(file_).ask(firstRelease));
  {
    const auto database = Database::open(file_).value();
    const auto shots = database->allShots({});
    ASSERT_EQ(shots.size(), 2U);
    EXPECT_EQ(shots[0]->path, "/s/b.png");
    EXPECT_TRUE(shots[0]->favorite);
    EXPECT_EQ(shots[1]->note, "kept");
    EXPECT_EQ(shots[1]->phash, 0);
    EXPECT_EQ(database->pendingCodes(10).size(), 2U);
  }
  const auto columns = Connection(file_).ask("SELECT name, dflt_value FROM pragma_table_info('shots')");
  const auto before = Connection(file_).ask("SELECT sql FROM sqlite_master ORDER BY name");
  ASSERT_TRUE(Database::open(file_));
  EXPECT_EQ(Connection(file_).ask("SELECT sql FROM sqlite_master ORDER BY name"), before);
  EXPECT_EQ(Connection(file_).ask("SELECT count(*) FROM shots"), "2\n");
}

TEST_F(SchemaTest, TheFolderIsTheUsersAlone) {
  ASSERT_TRUE(Database::open(file_));
  EXPECT_EQ(std::filesystem::status(folder_.path("Nimbrel")).permissions(), std::filesystem::perms::owner_all);
}

}  // namespace
}  // namespace Nimbrel
