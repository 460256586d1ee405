// What the gallery works out between a key press and the next frame, at 100,000 shots, in CPU time.

#include "CatalogueMaker.h"
#include "Foundation/FilePath.h"
#include "Foundation/NameOrder.h"
#include "Measure.h"
#include "Store/Store.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>
#include <span>

namespace Nimbrel::Benchmarks {
namespace {

constexpr int shotCount = 100'000;
constexpr double frame = 0.016;
constexpr std::size_t shotsOnScreen = 60;

/// A user with a catalogue of so many shots.
struct Home {
  Home()
      : folders{.home = folder.path().toStdString(),
                .applicationSupport = FilePath::join(folder.path().toStdString(), "data"),
                .preferences = FilePath::join(folder.path().toStdString(), "config")} {
    makeCatalogue(folders.applicationSupport, FilePath::join(folders.home, "library"), shotCount);
  }

  [[nodiscard]] std::unique_ptr<Store> open() const {
    return Store::open({.role = ProcessRole::tool,
                        .folders = folders,
                        .clock = [] { return timestamp(1'760'000'000); },
                        .services = {},
                        .defaults = std::make_unique<Defaults>(folders.preferences, "suite")})
        .value();
  }

  QTemporaryDir folder;
  UserFolders folders;
};

/// The least that a list of the visible shots costs: one more owner for each, after a look at it.
std::size_t bareCopy(const ShotList& shots) {
  ShotList copy;
  for (const auto& shot : shots) {
    if (shot->id != 0) copy.push_back(shot);
  }
  return copy.size();
}

/// Names as applications and people give them, in no order.
ShotList namedShots(const ShotList& shots) {
  static constexpr std::array kinds{"Screenshot from 2025-", "invoice ", "Übersicht ", "IMG_", "error report - page "};
  std::mt19937 random(7);
  ShotList named;
  for (const auto& shot : shots) {
    Shot renamed = *shot;
    renamed.name = kinds[random() % kinds.size()] + std::to_string(random() % 100'000) + ".png";
    named.push_back(std::make_shared<const Shot>(std::move(renamed)));
  }
  return named;
}

std::vector<Comparison> orderRows(const ShotList& shots) {
  using namespace Gallery;
  const auto now = timestamp(1'760'000'000);
  const auto named = namedShots(shots);
  std::vector<std::string> keys;
  for (const auto& shot : named) keys.push_back(NameOrder::sortKey(shot->name));
  const auto sortKeys = [&] {
    std::vector<std::string_view> sorted(keys.begin(), keys.end());
    std::ranges::stable_sort(sorted);
    use(sorted.size());
  };
  NameKeys kept;
  const auto byName = [&](Grouping grouping, NameKeys& known) {
    use(sections(named, {.sort = GallerySort::name, .grouping = grouping}, now, known).size());
  };
  const auto firstTime = [&](Grouping grouping) {
    NameKeys none;
    byName(grouping, none);
  };
  std::vector<Comparison> rows;
  rows.push_back(compareCpu(
      "by name and day, beside sorting the keys", 3.0, 7, [&] { byName(Grouping::ByDay, kept); }, sortKeys));
  rows.push_back(compareCpu(
      "by name without days, beside sorting the keys", 3.0, 7, [&] { byName(Grouping::None, kept); }, sortKeys));
  rows.push_back(compareCpu(
      "by name and day for the first time, beside making the keys", 3.0, 7, [&] { firstTime(Grouping::ByDay); },
      [&] {
        for (const auto& shot : named) use(NameOrder::sortKey(shot->name).size());
      }));
  return rows;
}

/// Beside the bare pass, and the same beside a limit of time.
std::vector<Comparison> galleryRows(const std::string& name, double target, double limit,
                                    const std::function<void()>& ours, const std::function<void()>& bare) {
  const auto row = compareCpu(name, target, 9, ours, bare);
  return {row, {"  the same beside " + std::to_string(static_cast<int>(limit * 1000)) + " ms", row.ours, limit, 1.0}};
}

std::vector<Comparison> storeRows(Store& store) {
  const auto bare = [&] { use(bareCopy(store.shots())); };
  store.settings().gallerySort.set(GallerySort::newest);
  store.settings().groupByDay.set(true);
  store.setFilter({Filter::All{}});
  auto rows = galleryRows(
      "visible and sections, newest first, beside a bare copy", 6.0, frame,
      [&] { use(store.visible().size() + store.sections().size()); }, bare);
  const auto add = [&](const std::vector<Comparison>& more) { rows.insert(rows.end(), more.begin(), more.end()); };
  store.setFilter({Filter::Today{}});
  add(galleryRows(
      "visible under the filter today", 1.5, frame, [&] { use(store.visible().size()); }, bare));
  store.setFilter({Filter::All{}});
  store.settings().gallerySort.set(GallerySort::name);
  add(galleryRows(
      "sections by name and day", 20.0, 0.06, [&] { use(store.sections().size()); }, bare));
  store.settings().gallerySort.set(GallerySort::newest);
  return rows;
}

/// A search as the window makes it: the ids, what is visible, and the snippets of a screen of shots.
void searchAndShow(Store& store, const std::string& query) {
  store.setQuery(query);
  store.runSearch();
  std::size_t shown = 0;
  for (const auto& shot : store.visible()) {
    use(store.snippet(*shot).has_value() ? 1 : 0);
    if (++shown == shotsOnScreen) break;
  }
}

std::vector<Comparison> searchRows(Store& store) {
  std::vector<Comparison> rows;
  for (const std::string query : {"ta re", "sanver kor", "moli wy", "moliver"}) {
    const auto hits = store.database().searchIDs(query)->size();
    const auto name = "search and a screen of snippets, " + std::to_string(hits) + " hits";
    const auto row = compareCpu(
        name + ", beside the ids", 4.0, 5, [&] { searchAndShow(store, query); },
        [&] { use(store.database().searchIDs(query)->size()); });
    // To find a few shots takes next to no time.
    rows.push_back(hits > 2000 ? row : Comparison{name + ", beside 16 ms", row.ours, frame, 1.0});
  }
  Snippets snippets;
  const std::string query = "sanver kor";
  const auto found = store.matching(query);
  auto each = compareCpu(
      "a snippet of one shot, beside one of all", 6.0, 5,
      [&] {
        snippets.search(query);
        for (const auto& shot : std::span(found).first(shotsOnScreen)) use(snippets.of(*shot).has_value() ? 1 : 0);
      },
      [&] { use(store.database().searchSnippets(query).size()); });
  each.ours /= shotsOnScreen;
  each.limit /= static_cast<double>(found.size());
  rows.push_back(each);
  return rows;
}

int runAll() {
  const Home home;
  const auto store = home.open();
  int missed = printTable(storeRows(*store), "seconds of CPU time");
  missed |= printTable(orderRows(store->shots()), "seconds of CPU time");
  missed |= printTable(searchRows(*store), "seconds of CPU time");
  return missed;
}

}  // namespace
}  // namespace Nimbrel::Benchmarks

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  return Nimbrel::Benchmarks::runAll();
}
