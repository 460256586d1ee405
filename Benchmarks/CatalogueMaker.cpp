#include "CatalogueMaker.h"

#include "Catalogue/Database.h"
#include "Foundation/FilePath.h"

#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>

namespace Nimbrel::Benchmarks {

namespace {

constexpr std::size_t textBytes = 1200;
constexpr int shotsPerMonth = 900;
constexpr double newest = 1'760'000'000;

std::string nameOf(int number) { return "Screenshot of item " + std::to_string(number) + " at 10.15.42.png"; }

std::string pathOf(const std::string& library, int number) {
  const int month = number / shotsPerMonth;
  std::array<char, 32> folder{};
  std::snprintf(folder.data(), folder.size(), "/%d/%d-%02d/", 2025 - month / 12, 2025 - month / 12, 12 - month % 12);
  return library + folder.data() + nameOf(number);
}

void run(sqlite3* connection, const char* sql) {
  if (sqlite3_exec(connection, sql, nullptr, nullptr, nullptr) == SQLITE_OK) return;
  std::fprintf(stderr, "%s: %s\n", sql, sqlite3_errmsg(connection));
  std::exit(1);
}

/// Words as frequent as words are: a few thousand, the first ones most often.
std::string word(std::mt19937& random) {
  static constexpr std::array<const char*, 24> syllables{"ta",  "re", "mo",  "li", "san", "ver", "ko", "pi",
                                                         "den", "ur", "cal", "is", "om",  "fen", "da", "tri",
                                                         "el",  "bo", "qua", "ni", "sta", "ho",  "ge", "wy"};
  const auto rank = random() % (1 + random() % 4000);
  return std::string(syllables.at(rank % 24)) + syllables.at(rank / 24 % 24) +
         (rank > 575 ? syllables.at(rank / 576) : "");
}

}  // namespace

std::string shotText(int number) {
  std::mt19937 random(static_cast<unsigned>(number));
  std::string text;
  while (text.size() < textBytes) {
    const auto kind = random() % 40;
    text += kind == 0 ? std::to_string(random() % 100000) + "." + std::to_string(random() % 100) : word(random);
    text += kind == 1 ? ": " : kind < 5 ? "\n" : " ";
  }
  return text;
}

MadeCatalogue makeCatalogue(const std::string& folder, const std::string& library, int shots) {
  const auto file = FilePath::join(folder, "nimbrel.sqlite");
  const auto made = Database::open(file);
  sqlite3* connection = nullptr;
  if (!made || sqlite3_open(file.c_str(), &connection) != SQLITE_OK) std::exit(1);
  run(connection, "BEGIN");
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(
      connection,
      "INSERT INTO shots (path,name,date,added,bytes,width,height,captureType,filed,ocr,ocrDone,tags,phash,"
      "codesDone) VALUES (?,?,?,?,200000,1440,900,'window',1,?,1,?,?,1)",
      -1, &insert, nullptr);
  MadeCatalogue result;
  std::mt19937_64 random(1);
  for (int number = 0; number < shots; ++number) {
    const std::array texts{pathOf(library, number), nameOf(number), shotText(number),
                           std::string(number % 10 == 0 ? "work,later" : "")};
    for (const auto& text : texts) result.textBytes += static_cast<std::int64_t>(text.size());
    sqlite3_bind_text(insert, 1, texts[0].c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(insert, 2, texts[1].c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_double(insert, 3, newest - number * 700.0);
    sqlite3_bind_double(insert, 4, newest - number * 700.0 + 1);
    sqlite3_bind_text(insert, 5, texts[2].c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_text(insert, 6, texts[3].c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_int64(insert, 7, static_cast<std::int64_t>(random() | 2));
    sqlite3_step(insert);
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  run(connection,
      "INSERT INTO shots_fts (rowid,name,appName,ocr,note,tags) SELECT id,name,appName,ocr,note,tags FROM shots");
  run(connection, "COMMIT");
  run(connection, "PRAGMA wal_checkpoint(TRUNCATE)");
  sqlite3_close(connection);
  return result;
}

void makeLibraryFiles(const std::string& library, int shots) {
  for (int number = 0; number < shots; ++number) {
    const auto path = pathOf(library, number);
    if (number % shotsPerMonth == 0) std::filesystem::create_directories(std::string(FilePath::folder(path)));
    std::ofstream(path, std::ios::binary).flush();
  }
}

}  // namespace Nimbrel::Benchmarks
