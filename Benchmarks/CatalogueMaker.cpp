#include "CatalogueMaker.h"

#include "Catalogue/Database.h"
#include "Foundation/FilePath.h"
#include "ShotTexts.h"

#include <sqlite3.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <random>

namespace Nimbrel::Benchmarks {

namespace {

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

}  // namespace

MadeCatalogue makeCatalogue(const std::string& folder, const std::string& library, int shots) {
  const auto file = FilePath::join(folder, "nimbrel.sqlite");
  const auto made = Database::open(file);
  sqlite3* connection = nullptr;
  if (!made || sqlite3_open(file.c_str(), &connection) != SQLITE_OK) std::exit(1);
  run(connection, "BEGIN");
  sqlite3_stmt* insert = nullptr;
  sqlite3_prepare_v2(
      connection,
      "INSERT INTO shots (path,name,date,added,bytes,width,height,captureType,filed,ocr,ocrDone,tags,appName,"
      "bundleID,phash,appAttributionTrusted,codesDone) VALUES "
      "(?,?,?,?,200000,1440,900,'window',1,?,1,?,?,?,?,?7<>'',1)",
      -1, &insert, nullptr);
  MadeCatalogue result;
  std::mt19937_64 random(1);
  for (int number = 0; number < shots; ++number) {
    const auto [application, bundleID] = applicationOf(number);
    const std::map<int, std::string> texts{{1, pathOf(library, number)},
                                           {2, nameOf(number)},
                                           {5, shotText(number)},
                                           {6, number % 10 == 0 ? "work,later" : ""},
                                           {7, application},
                                           {8, bundleID}};
    for (const auto& [place, text] : texts) {
      result.textBytes += static_cast<std::int64_t>(text.size());
      sqlite3_bind_text(insert, place, text.c_str(), -1, SQLITE_TRANSIENT);
    }
    sqlite3_bind_double(insert, 3, newest - number * 700.0);
    sqlite3_bind_double(insert, 4, newest - number * 700.0 + 1);
    sqlite3_bind_int64(insert, 9, static_cast<std::int64_t>(random() | 2));
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
