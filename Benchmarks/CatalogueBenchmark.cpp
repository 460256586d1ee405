// The catalogue at 10,000 and 100,000 shots, each figure beside the bare work that it cannot do without.

#include "Analysis/Perceptual.h"
#include "Analysis/Phrases.h"
#include "Analysis/SecretKinds.h"
#include "Analysis/Sensitive.h"
#include "Analysis/ShotTraits.h"
#include "Catalogue/SearchQuery.h"
#include "Catalogue/ShotRow.h"
#include "CatalogueMaker.h"
#include "Foundation/FilePath.h"
#include "Foundation/Pattern.h"
#include "Foundation/Text.h"
#include "Measure.h"
#include "ShotTexts.h"
#include "Store/Store.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>

namespace Nimbrel::Benchmarks {
namespace {

/// A user with a catalogue and a library of so many files.
struct Home {
  explicit Home(int shots)
      : libraryRoot(path("Pictures/Nimbrel")),
        folders{.home = folder.path().toStdString(),
                .applicationSupport = path(".local/share/Nimbrel"),
                .preferences = path(".config/Nimbrel")},
        made(makeCatalogue(folders.applicationSupport, libraryRoot, shots)) {
    makeLibraryFiles(libraryRoot, shots);
  }

  [[nodiscard]] std::string path(const std::string& name) const { return folder.path().toStdString() + "/" + name; }

  [[nodiscard]] std::unique_ptr<Store> open() const {
    return Store::open({.role = ProcessRole::tool,
                        .folders = folders,
                        .clock = [] { return timestamp(1'760'000'000); },
                        .services = {},
                        .defaults = std::make_unique<Defaults>(folders.preferences, "suite")})
        .value();
  }

  QTemporaryDir folder;
  std::string libraryRoot;
  UserFolders folders;
  MadeCatalogue made;
};

/// Steps a select and reads every column, as the cheapest program could.
std::size_t bareLoop(sqlite3* connection, const std::string& sql) {
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(connection, sql.c_str(), -1, &statement, nullptr);
  std::size_t bytes = 0;
  while (sqlite3_step(statement) == SQLITE_ROW) {
    for (int column = 0; column < sqlite3_column_count(statement); ++column) {
      switch (sqlite3_column_type(statement, column)) {
        case SQLITE_TEXT:
          bytes += sqlite3_column_text(statement, column)[0];
          bytes += static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
          break;
        case SQLITE_FLOAT:
          bytes += static_cast<std::size_t>(sqlite3_column_double(statement, column)) & 1;
          break;
        default:
          bytes += static_cast<std::size_t>(sqlite3_column_int64(statement, column)) & 1;
      }
    }
  }
  sqlite3_finalize(statement);
  return bytes;
}

/// Walks a folder with one stat for each file.
std::size_t bareWalk(const std::string& folder) {
  std::size_t files = 0;
  DIR* directory = opendir(folder.c_str());
  if (directory == nullptr) return 0;
  while (const dirent* entry = readdir(directory)) {
    if (entry->d_name[0] == '.') continue;
    if (entry->d_type == DT_DIR) {
      files += bareWalk(folder + "/" + entry->d_name);
      continue;
    }
    struct stat facts {};
    if (fstatat(dirfd(directory), entry->d_name, &facts, 0) == 0) ++files;
  }
  closedir(directory);
  return files;
}

std::size_t naiveGroups(const ShotList& shots, int tolerance) {
  std::vector<char> seen(shots.size());
  std::vector<std::uint64_t> hashes;
  for (const auto& shot : shots) hashes.push_back(static_cast<std::uint64_t>(shot->phash));
  std::size_t members = 0;
  for (std::size_t first = 0; first < hashes.size(); ++first) {
    if (seen[first] != 0) continue;
    for (std::size_t other = first + 1; other < hashes.size(); ++other) {
      if (seen[other] != 0 || std::popcount(hashes[first] ^ hashes[other]) > tolerance) continue;
      seen[other] = 1;
      ++members;
    }
  }
  return members;
}

ShotList hashedShots(int count) {
  std::mt19937_64 random(3);
  ShotList shots;
  for (int i = 0; i < count; ++i) {
    Shot shot;
    shot.id = i + 1;
    auto hash = random();
    // A third are near another one.
    if (i % 3 == 0 && i > 0)
      hash = static_cast<std::uint64_t>(shots[random() % shots.size()]->phash) ^ 0x11ULL << random() % 50;
    shot.phash = static_cast<std::int64_t>(hash | 2);
    shots.push_back(std::make_shared<const Shot>(shot));
  }
  return shots;
}

std::vector<Comparison> catalogueTable(const Home& home, int shots) {
  const std::string size = std::to_string(shots);
  sqlite3* connection = nullptr;
  sqlite3_open(FilePath::join(home.folders.applicationSupport, "nimbrel.sqlite").c_str(), &connection);
  const auto select = "SELECT " + std::string(shotColumns) + " FROM shots ORDER BY date DESC";
  const auto bare = [&] { use(bareLoop(connection, select)); };
  const auto store = home.open();
  std::unique_ptr<Store> fresh;
  int notes = 0;
  std::vector<Comparison> table;
  table.push_back(compare(
      "reload() of " + size + " unchanged rows", 2.5, 5, [&] { store->reload(); }, bare));
  table.push_back(compare(
      "reload() of " + size + " rows, one changed", 3.0, 5,
      [&] {
        store->database().setNote(store->shots()[store->shots().size() / 2]->id, std::to_string(++notes));
        store->reload();
      },
      bare));
  table.push_back(compare(
      "first load of " + size + " rows", 12.0, 3, [&] { fresh = home.open(); }, bare));
  fresh.reset();
  table.push_back(compare(
      "scan that finds nothing new in " + size + " files", 1.5, 5, [&] { store->scan(); },
      [&] { use(bareWalk(home.libraryRoot)); }));
  for (const std::string query : {"ta re", "sanver kor", "moli wy"}) {
    const auto match = "SELECT rowid FROM shots_fts WHERE shots_fts MATCH '" + matchExpression(query) + "'";
    const auto hits = store->database().searchIDs(query)->size();
    table.push_back(compare(
        "searchIDs(\"" + query + "\"), " + std::to_string(hits) + " hits in " + size, 1.2, 15,
        [&] { use(store->database().searchIDs(query)->size()); }, [&] { use(bareLoop(connection, match)); }));
  }
  sqlite3_close(connection);
  return table;
}

/// Five rules, one of them with a source, that match nothing; the number makes the list another one.
std::vector<AutomationRule> rulesThatMatchNothing(int number) {
  std::vector<AutomationRule> rules;
  for (const std::string words : {"quarterly statement", "boarding pass", "zz top", "invoice of", "never"}) {
    rules.push_back({.name = std::to_string(number), .containsText = words, .tag = "found"});
  }
  rules.back().source = "no such application";
  return rules;
}

/// The pass that follows each batch of text, over shots it sees for the first time and over the same again.
std::vector<Comparison> rulesTable(const Home& home, int shots) {
  const auto store = home.open();
  int number = 0;
  const auto bare = [&] {
    const auto rules = rulesThatMatchNothing(0);
    for (const auto& shot : store->shots()) {
      for (const auto& rule : rules) {
        use(strcasestr(shot->ocr.c_str(), rule.containsText.c_str()) != nullptr);
      }
    }
  };
  const auto pass = [&] { store->applyAutomationRules(store->shots()); };
  const auto size = std::to_string(shots);
  return {compare(
              "first pass of 5 rules over " + size + " shots, beside strcasestr", 3.0, 3,
              [&] {
                store->settings().automationRules.set(rulesThatMatchNothing(++number));
                pass();
              },
              bare),
          compare("the same rules once more", 0.1, 3, pass, bare)};
}

Comparison groupsRow(int count, double target, int rounds) {
  const auto shots = hashedShots(count);
  return compare(
      "groups of " + std::to_string(count) + " hashes at tolerance 6", target, rounds,
      [&] { use(Perceptual::groups(shots, 6).size()); }, [&] { use(naiveGroups(shots, 6)); });
}

/// The detector beside the rate of its expressions run in turn over every text.
Comparison secretsRow() {
  std::vector<Pattern> patterns;
  for (const auto& kind : secretKinds) patterns.push_back(*Pattern::compile(kind.expression));
  std::vector<std::string> texts;
  for (int i = 0; i < 2000; ++i) texts.push_back(shotText(i));
  return compare(
      "secrets in 2000 texts, beside the expressions alone", 0.25, 5,
      [&] {
        for (const auto& text : texts) use(Sensitive::kindsIn(text).size());
      },
      [&] {
        for (const auto& text : texts) {
          const auto characters = Text::toUtf16(text);
          for (const auto& pattern : patterns) use(pattern.matches(characters).size());
        }
      });
}

/// Group and collections beside one search for each phrase, which is the least that they could take without an index.
Comparison traitsRow() {
  ShotList shots;
  for (int i = 0; i < 2000; ++i) {
    Shot shot;
    shot.ocr = shotText(i);
    shot.ocrDone = true;
    const auto [application, bundleID] = applicationOf(i);
    shot.appName = application;
    shot.bundleID = bundleID;
    shot.appAttributionTrusted = !application.empty();
    shots.push_back(std::make_shared<const Shot>(std::move(shot)));
  }
  return compare(
      "group and collections of 2000 shots, one core", 0.3, 5,
      [&] {
        for (const auto& shot : shots) use(traitsOf(*shot).collections.count());
      },
      [&] {
        for (const auto& shot : shots) {
          const auto lowered = Text::lowered(shot->ocr);
          for (std::size_t list = 0; list < static_cast<std::size_t>(PhraseList::count); ++list) {
            for (const auto phrase : phrasesOf(static_cast<PhraseList>(list))) use(lowered.find(phrase));
          }
        }
      });
}

/// The largest resident memory of "nimbrel --scan", beside the text of the table plus 60 MB.
Comparison memoryRow(const Home& home, const std::string& program, int shots) {
  constexpr double base = 60e6;
  std::vector<std::string> variables{"HOME=" + home.folders.home, "XDG_DATA_HOME=" + home.path(".local/share"),
                                     "XDG_CONFIG_HOME=" + home.path(".config"), "LC_ALL=C.UTF-8"};
  std::vector<char*> environment;
  for (auto& variable : variables) environment.push_back(variable.data());
  environment.push_back(nullptr);
  std::string name = program;
  std::string scan = "--scan";
  std::array<char*, 3> arguments{name.data(), scan.data(), nullptr};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  int status = 1;
  rusage used{};
  if (posix_spawn(&child, program.c_str(), &actions, nullptr, arguments.data(), environment.data()) == 0) {
    wait4(child, &status, 0, &used);
  }
  posix_spawn_file_actions_destroy(&actions);
  if (status != 0) std::fprintf(stderr, "%s --scan failed\n", program.c_str());
  const auto peak = static_cast<double>(used.ru_maxrss) * 1024;
  return {"--scan over " + std::to_string(shots) + " rows, less 60 MB, beside the text", peak - base,
          static_cast<double>(home.made.textBytes), 2.2};
}

int runAll(const std::string& program) {
  const Home small(10'000);
  const Home large(100'000);
  // First: a child counts what its parent had resident when it was started as its own.
  int missed = printTable({memoryRow(small, program, 10'000), memoryRow(large, program, 100'000)}, "bytes, resident");
  missed |= printTable(catalogueTable(small, 10'000), "seconds");
  missed |= printTable(catalogueTable(large, 100'000), "seconds");
  missed |= printTable(rulesTable(large, 100'000), "seconds");
  missed |= printTable({groupsRow(10'000, 0.4, 7), groupsRow(100'000, 0.15, 1), secretsRow(), traitsRow()}, "seconds");
  return missed;
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const auto folder = std::filesystem::path(argv[0]).parent_path();
  return Nimbrel::Benchmarks::runAll((folder / "nimbrel").string());
}
