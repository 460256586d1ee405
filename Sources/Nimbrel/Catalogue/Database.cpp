#include "Catalogue/Database.h"

#include "Catalogue/SearchIndex.h"
#include "Catalogue/SearchQuery.h"
#include "Catalogue/ShotReading.h"
#include "Catalogue/ShotRow.h"
#include "Catalogue/Statement.h"
#include "Foundation/FilePath.h"
#include "Foundation/Text.h"

#include <sqlite3.h>

#include <array>
#include <filesystem>
#include <utility>

namespace Nimbrel {

namespace {

/// The whole list runs at every start. A column that is there already makes its line fail, which is how a file of an
/// older release and a fresh one arrive at the same tables; a new column is one more line at the end of its block.
constexpr std::array schema{
    "PRAGMA journal_mode=WAL",
    "CREATE TABLE IF NOT EXISTS shots (\n    id INTEGER PRIMARY KEY,\n    path TEXT UNIQUE NOT NULL,\n"
    "    name TEXT NOT NULL,\n    date REAL NOT NULL,\n    added REAL NOT NULL,\n"
    "    bytes INTEGER NOT NULL DEFAULT 0,\n    width INTEGER NOT NULL DEFAULT 0,\n"
    "    height INTEGER NOT NULL DEFAULT 0,\n    appName TEXT NOT NULL DEFAULT '',\n"
    "    captureType TEXT NOT NULL DEFAULT '',\n    filed INTEGER NOT NULL DEFAULT 0,\n"
    "    ocr TEXT NOT NULL DEFAULT '',\n    ocrDone INTEGER NOT NULL DEFAULT 0,\n"
    "    note TEXT NOT NULL DEFAULT '',\n    tags TEXT NOT NULL DEFAULT '',\n"
    "    favorite INTEGER NOT NULL DEFAULT 0\n)",
    SearchIndex::createTable,
    "ALTER TABLE shots ADD COLUMN sensitive TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE shots ADD COLUMN phash INTEGER NOT NULL DEFAULT 0",
    "ALTER TABLE shots ADD COLUMN barcodes TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE shots ADD COLUMN codesDone INTEGER NOT NULL DEFAULT 0",
    "ALTER TABLE shots ADD COLUMN bundleID TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE shots ADD COLUMN shownName TEXT NOT NULL DEFAULT ''",
    "ALTER TABLE shots ADD COLUMN appAttributionTrusted INTEGER NOT NULL DEFAULT 0",
    "CREATE TABLE IF NOT EXISTS ignored (path TEXT PRIMARY KEY)",
    "CREATE INDEX IF NOT EXISTS shots_date ON shots(date)",
    "CREATE INDEX IF NOT EXISTS shots_filed ON shots(filed)",
};

std::string selectShots(std::string_view rest) {
  return "SELECT " + std::string(shotColumns) + " FROM shots " + std::string(rest);
}

/// The texts of a one-column select.
PathSet pathsOf(Statement& row) {
  PathSet paths;
  while (row.step()) paths.emplace(row.text(0));
  return paths;
}

}  // namespace

Result<std::unique_ptr<Database>> Database::open(const std::string& path) {
  const std::filesystem::path folder(std::string(FilePath::folder(path)));
  std::error_code error;
  const bool made = std::filesystem::create_directories(folder, error);
  if (error) return Error{"Cannot create " + folder.string() + ": " + error.message()};
  // What was on the screen is nobody else's business.
  if (made) std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);

  sqlite3* connection = nullptr;
  if (sqlite3_open(path.c_str(), &connection) != SQLITE_OK) {
    sqlite3_close(connection);
    return Error{"Cannot open database at " + path};
  }
  std::unique_ptr<Database> database(new Database(connection));
  database->prepareTables();
  return database;
}

Database::~Database() { sqlite3_close(db_); }

void Database::prepareTables() {
  for (const auto* statement : schema) sqlite3_exec(db_, statement, nullptr, nullptr, nullptr);
}

ShotList Database::allShots(const ShotList& former) const {
  ShotReading reading(*this, former);
  reading.readAll();
  return reading.take();
}

std::optional<Shot> Database::shot(ShotID id) const {
  Statement row(db_, selectShots("WHERE id = ?"), {id});
  if (!row.step()) return std::nullopt;
  return shotFromRow(row);
}

PathSet Database::indexedPaths() const {
  Statement row(db_, "SELECT path FROM shots");
  return pathsOf(row);
}

PathSet Database::ignoredPaths() const {
  Statement row(db_, "SELECT path FROM ignored");
  return pathsOf(row);
}

ShotList Database::pending(std::string_view condition, int limit) const {
  ShotList shots;
  Statement row(db_, selectShots(std::string(condition) + " ORDER BY date DESC LIMIT ?"), {std::int64_t{limit}});
  while (row.step()) shots.push_back(std::make_shared<const Shot>(shotFromRow(row)));
  return shots;
}

ShotList Database::pendingOCR(int limit) const { return pending("WHERE ocrDone = 0", limit); }
ShotList Database::pendingCodes(int limit) const { return pending("WHERE codesDone = 0", limit); }
ShotList Database::pendingHash(int limit) const { return pending("WHERE phash = 0", limit); }

bool Database::needsCodes(ShotID id) const {
  Statement row(db_, "SELECT 1 FROM shots WHERE id = ? AND codesDone = 0", {id});
  return row.step();
}

std::vector<std::string> Database::allTags() const {
  std::set<std::string> tags;
  Statement row(db_, "SELECT tags FROM shots WHERE tags <> ''");
  while (row.step()) {
    for (auto& tag : Text::split(row.text(0), tagSeparator, Text::EmptyPieces::Drop)) tags.insert(std::move(tag));
  }
  return {tags.begin(), tags.end()};
}

std::optional<ShotIDSet> Database::searchIDs(std::string_view query) const {
  const auto expression = matchExpression(query);
  if (expression.empty()) return std::nullopt;
  ShotIDSet ids;
  Statement row(db_, "SELECT rowid FROM shots_fts WHERE shots_fts MATCH ?", {expression});
  while (row.step()) ids.insert(row.integer(0));
  return ids;
}

std::unordered_map<ShotID, std::string> Database::searchSnippets(std::string_view query) const {
  const auto expression = matchExpression(query);
  if (expression.empty()) return {};
  return SearchIndex::snippets(db_, expression);
}

ShotID Database::insert(const Shot& shot) {
  const auto tags = Text::joined(shot.tags, tagSeparator);
  Statement(
      db_,
      "INSERT OR IGNORE INTO shots\n"
      "(path,name,date,added,bytes,width,height,appName,captureType,filed,ocr,ocrDone,note,tags,favorite,"
      "bundleID,appAttributionTrusted)\n"
      "VALUES (?,?,?,?,?,?,?,?,?,?,'',0,'',?,0,?,?)",
      {shot.path, shot.name, shot.date, shot.added, shot.bytes, std::int64_t{shot.width}, std::int64_t{shot.height},
       shot.appName, shot.captureType, shot.filed, tags, shot.bundleID, shot.appAttributionTrusted})
      .step();
  Statement row(db_, "SELECT id FROM shots WHERE path = ?", {shot.path});
  const ShotID id = row.step() ? row.integer(0) : 0;
  if (id != 0) reindex(id);
  return id;
}

void Database::reindex(ShotID id) {
  const auto record = shot(id);
  if (!record) return;
  Statement(db_, "DELETE FROM shots_fts WHERE rowid = ?", {id}).step();
  SearchIndex::add(db_, *record);
}

ShotID Database::otherAt(std::string_view path, ShotID id) const {
  Statement row(db_, "SELECT id FROM shots WHERE path = ? AND id <> ? AND EXISTS (SELECT 1 FROM shots WHERE id = ?)",
                {path, id, id});
  return row.step() ? row.integer(0) : 0;
}

void Database::setPath(ShotID id, std::string_view path, Filed filed) {
  if (const auto other = otherAt(path, id); other != 0) remove(other, IgnorePath::No);
  Statement(db_, "UPDATE shots SET path = ?, name = ?, filed = ? WHERE id = ?",
            {path, FilePath::lastComponent(path), filed == Filed::Yes, id})
      .step();
  reindex(id);
}

void Database::setNote(ShotID id, std::string_view note) {
  Statement(db_, "UPDATE shots SET note = ? WHERE id = ?", {note, id}).step();
  reindex(id);
}

void Database::setTags(ShotID id, const std::vector<std::string>& tags) {
  Statement(db_, "UPDATE shots SET tags = ? WHERE id = ?", {Text::joined(tags, tagSeparator), id}).step();
  reindex(id);
}

void Database::setFavorite(ShotID id, bool favorite) {
  Statement(db_, "UPDATE shots SET favorite = ? WHERE id = ?", {favorite, id}).step();
}

void Database::setBytes(ShotID id, std::int64_t bytes) {
  Statement(db_, "UPDATE shots SET bytes = ? WHERE id = ?", {bytes, id}).step();
}

void Database::setShownName(ShotID id, std::string_view name) {
  Statement(db_, "UPDATE shots SET shownName = ? WHERE id = ?", {name, id}).step();
}

void Database::setCodes(ShotID id, const std::vector<std::string>& codes) {
  Statement(db_, "UPDATE shots SET barcodes = ?, codesDone = 1 WHERE id = ?", {Text::joined(codes, codeSeparator), id})
      .step();
}

void Database::setHash(ShotID id, std::int64_t hash) {
  Statement(db_, "UPDATE shots SET phash = ? WHERE id = ?", {hash, id}).step();
}

void Database::setOCR(ShotID id, std::string_view text, const std::vector<std::string>& sensitive) {
  Statement(db_, "UPDATE shots SET ocr = ?, ocrDone = 1, sensitive = ? WHERE id = ?",
            {text, Text::joined(sensitive, tagSeparator), id})
      .step();
  reindex(id);
}

void Database::setApp(ShotID id, std::string_view name, std::string_view bundleID, Trusted trusted) {
  Statement(db_, "UPDATE shots SET appName = ?, bundleID = ?, appAttributionTrusted = ? WHERE id = ?",
            {name, bundleID, trusted == Trusted::Yes, id})
      .step();
  reindex(id);
}

void Database::ignore(std::string_view path) {
  Statement(db_, "INSERT OR IGNORE INTO ignored (path) VALUES (?)", {path}).step();
}

void Database::unignore(std::string_view path) { Statement(db_, "DELETE FROM ignored WHERE path = ?", {path}).step(); }

void Database::remove(ShotID id, IgnorePath ignorePath) {
  if (ignorePath == IgnorePath::Yes) {
    if (const auto record = shot(id)) ignore(record->path);
  }
  Statement(db_, "DELETE FROM shots WHERE id = ?", {id}).step();
  Statement(db_, "DELETE FROM shots_fts WHERE rowid = ?", {id}).step();
}

Database::QuickCommits::QuickCommits(Database& database) : database_(database) {
  sqlite3_exec(database_.db_, "PRAGMA synchronous=NORMAL", nullptr, nullptr, nullptr);
}

Database::QuickCommits::~QuickCommits() {
  sqlite3_exec(database_.db_, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr);
}

void Database::waitForDisk() { sqlite3_wal_checkpoint_v2(db_, nullptr, SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr); }

int Database::dataVersion() const {
  Statement row(db_, "PRAGMA data_version");
  return row.step() ? static_cast<int>(row.integer(0)) : 0;
}

std::int64_t Database::ownChanges() const { return sqlite3_total_changes64(db_); }

}  // namespace Nimbrel
