#include "Catalogue/SearchIndex.h"

#include "Catalogue/ShotRow.h"
#include "Catalogue/Statement.h"
#include "Foundation/Text.h"

namespace Nimbrel::SearchIndex {

namespace {

constexpr std::string_view hitStart = "\x02";

}  // namespace

void add(sqlite3* connection, const Shot& shot) {
  Statement(connection, "INSERT INTO shots_fts (rowid, name, appName, ocr, note, tags) VALUES (?,?,?,?,?,?)",
            {shot.id, shot.name, shot.appName, shot.ocr, shot.note, Text::joined(shot.tags, tagSeparator)})
      .step();
}

std::unordered_map<ShotID, std::string> snippets(sqlite3* connection, std::string_view expression) {
  std::unordered_map<ShotID, std::string> snippets;
  Statement row(connection,
                "SELECT rowid, snippet(shots_fts, 2, char(2), char(3), '…', 10)\n"
                "FROM shots_fts WHERE shots_fts MATCH ?",
                {expression});
  while (row.step()) {
    // A shot found by its name or tags comes with the start of its text, which holds no hit.
    const auto snippet = row.text(1);
    if (snippet.find(hitStart) != std::string_view::npos) snippets.emplace(row.integer(0), snippet);
  }
  return snippets;
}

}  // namespace Nimbrel::SearchIndex
