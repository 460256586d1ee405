#pragma once

#include "Foundation/Result.h"
#include "Model/Models.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

struct sqlite3;

namespace Nimbrel {

using PathSet = std::unordered_set<std::string>;
using ShotIDSet = std::unordered_set<ShotID>;

/// The catalogue: every statement, over one connection to one SQLite file. Several processes have the file open at a
/// time; write-ahead logging is what lets them. Each operation prepares its statement, runs and finalises it and
/// commits by itself. One that cannot be prepared is logged and does nothing; a write that meets another process's lock
/// is lost without a word, and what was not done comes up again as pending. Main thread only.
class Database {
 public:
  /// Opens the catalogue, made with its folder where it is missing, and brings its tables to the present form. Fails
  /// only when the folder cannot be made or the file cannot be opened; what is locked, damaged or read-only opens and
  /// has no rows or loses its writes.
  [[nodiscard]] static Result<std::unique_ptr<Database>> open(const std::string& path);
  ~Database();
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;

  // Reading

  /// All shots, newest first. Rows that read as they do in `former`, an earlier answer, share its values.
  [[nodiscard]] ShotList allShots(const ShotList& former) const;
  [[nodiscard]] std::optional<Shot> shot(ShotID id) const;
  [[nodiscard]] PathSet indexedPaths() const;
  /// The paths that the user has taken out of the catalogue on purpose.
  [[nodiscard]] PathSet ignoredPaths() const;
  /// Shots whose text, codes or hash are still to be worked out, newest first.
  [[nodiscard]] ShotList pendingOCR(int limit) const;
  [[nodiscard]] ShotList pendingCodes(int limit) const;
  [[nodiscard]] ShotList pendingHash(int limit) const;
  /// Whether the codes of this shot are still to be looked for; false when it is not there.
  [[nodiscard]] bool needsCodes(ShotID id) const;
  /// The distinct tags in the order of their code points.
  [[nodiscard]] std::vector<std::string> allTags() const;

  // Searching: every word of the query begins a word of the name, application, text, note or tags.

  /// Absent when the query is blank: no search took place. Empty when nothing was found.
  [[nodiscard]] std::optional<ShotIDSet> searchIDs(std::string_view query) const;
  /// The stretch of text around the hits, which stand between U+0002 and U+0003; only for shots with a hit in the text.
  [[nodiscard]] std::unordered_map<ShotID, std::string> searchSnippets(std::string_view query) const;

  // Writing

  /// Adds a shot that was just found: its text, note and marks start empty whatever the record says. Returns the row
  /// id, that of the row with this path where there is one already, or 0 when none could be made.
  ShotID insert(const Shot& shot);
  /// Whether a file lies in the library.
  enum class Filed { No, Yes };
  /// The file has moved; the name follows. Another row that has the path is void, since nothing stood there before, and
  /// goes. Does nothing when there is no row of that id.
  void setPath(ShotID id, std::string_view path, Filed filed);
  void setNote(ShotID id, std::string_view note);
  void setTags(ShotID id, const std::vector<std::string>& tags);
  void setFavorite(ShotID id, bool favorite);
  void setBytes(ShotID id, std::int64_t bytes);
  /// The user's word for the source. Search finds the application of the record, not this.
  void setShownName(ShotID id, std::string_view name);
  /// The codes found; code detection is done.
  void setCodes(ShotID id, const std::vector<std::string>& codes);
  void setHash(ShotID id, std::int64_t hash);
  /// Text and kinds of sensitive data found; recognition is done.
  void setOCR(ShotID id, std::string_view text, const std::vector<std::string>& sensitive);
  /// Whether what named the application is believed.
  enum class Trusted { No, Yes };
  void setApp(ShotID id, std::string_view name, std::string_view bundleID, Trusted trusted);
  /// Later scans leave this file alone.
  void ignore(std::string_view path);
  void unignore(std::string_view path);

  enum class IgnorePath { No, Yes };
  /// Takes the row out of the catalogue; with Yes, later scans leave its file alone.
  void remove(ShotID id, IgnorePath ignorePath);

  // How far a write has to come

  /// While it lives, commits do not wait for the disk, which is most of what they cost: for writes that a later scan
  /// would make again if a power cut took the last of them. The file stays whole in any case.
  class QuickCommits {
   public:
    explicit QuickCommits(Database& database);
    ~QuickCommits();
    QuickCommits(const QuickCommits&) = delete;
    QuickCommits& operator=(const QuickCommits&) = delete;

   private:
    Database& database_;
  };
  /// Waits until the commits so far are on the disk, as far as no other process stands in the way at this moment.
  void waitForDisk();

  // Following other processes

  /// Changes whenever another connection has committed; 0 when it cannot be read.
  [[nodiscard]] int dataVersion() const;
  /// Grows with each row that this connection has written.
  [[nodiscard]] std::int64_t ownChanges() const;

 private:
  friend class ShotReading;

  explicit Database(sqlite3* connection) : db_(connection) {}
  void prepareTables();
  void reindex(ShotID id);
  [[nodiscard]] ShotID otherAt(std::string_view path, ShotID id) const;
  [[nodiscard]] ShotList pending(std::string_view condition, int limit) const;

  sqlite3* db_;
};

}  // namespace Nimbrel
