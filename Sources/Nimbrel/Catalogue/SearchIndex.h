#pragma once

#include "Model/Models.h"

#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3;

/// The full-text table of a connection, one row for each shot under its row id.
namespace Nimbrel::SearchIndex {

/// Makes the table where it is missing.
inline constexpr const char* createTable =
    "CREATE VIRTUAL TABLE IF NOT EXISTS shots_fts USING fts5(\n"
    "    name, appName, ocr, note, tags, tokenize='unicode61'\n)";

/// Enters a shot that has no row.
void add(sqlite3* connection, const Shot& shot);

/// The stretch of text around the hits of a match expression, which stand between U+0002 and U+0003; only for shots
/// with a hit in the text.
[[nodiscard]] std::unordered_map<ShotID, std::string> snippets(sqlite3* connection, std::string_view expression);

}  // namespace Nimbrel::SearchIndex
