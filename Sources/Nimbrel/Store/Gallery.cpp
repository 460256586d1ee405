#include "Store/Gallery.h"

#include "Analysis/Perceptual.h"
#include "Foundation/Formats.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <map>
#include <utility>

namespace Nimbrel::Gallery {

namespace {

constexpr Seconds week{604'800};
constexpr int similarDistance = 10;

/// What a filter may need to know beside the shot.
struct Surroundings {
  const ShotList& shots;
  const DerivedState& derived;
  Timestamp now;
};

// The tests of the filters, in the order of their cases.

auto testOf(const Filter::Inbox&, const Surroundings&) {
  return [](const Shot& shot) { return !shot.filed; };
}

auto testOf(const Filter::All&, const Surroundings&) {
  return [](const Shot&) { return true; };
}

auto testOf(const Filter::Today&, const Surroundings& around) {
  return [today = Formats::localDay(around.now)](const Shot& shot) { return Formats::localDay(shot.date) == today; };
}

auto testOf(const Filter::Week&, const Surroundings& around) {
  return [start = around.now - week](const Shot& shot) { return shot.date > start; };
}

auto testOf(const Filter::Favorites&, const Surroundings&) {
  return [](const Shot& shot) { return shot.favorite; };
}

auto testOf(const Filter::Sensitive&, const Surroundings&) {
  return [](const Shot& shot) { return !shot.sensitive.empty(); };
}

auto testOf(const Filter::Tag& choice, const Surroundings&) {
  return [&tag = choice.tag](const Shot& shot) { return std::ranges::find(shot.tags, tag) != shot.tags.end(); };
}

auto testOf(const Filter::Content& choice, const Surroundings& around) {
  return [&](const Shot& shot) { return around.derived.contentOf(shot.id).key == choice.key; };
}

auto testOf(const Filter::Saved&, const Surroundings& around) { return testOf(Filter::All{}, around); }

auto testOf(const Filter::Similar& choice, const Surroundings& around) {
  const auto anchor = std::ranges::find(around.shots, choice.id, [](const ShotPtr& shot) { return shot->id; });
  const auto hash = anchor == around.shots.end() ? 0 : (*anchor)->phash;
  return [hash, id = choice.id](const Shot& shot) {
    // Without a hash nothing is known of its looks, and a shot is like itself alone.
    if (hash == 0 || shot.phash == 0) return shot.id == id;
    return Perceptual::distance(hash, shot.phash) <= similarDistance;
  };
}

auto testOf(const Filter::Smart& choice, const Surroundings& around) {
  return [&](const Shot& shot) { return around.derived.isIn(choice.collection, shot.id); };
}

auto testOf(const Filter::Stack& choice, const Surroundings& around) {
  return [&](const Shot& shot) { return !choice.id.empty() && around.derived.stackOf(shot.id) == choice.id; };
}

auto testOf(const Filter::Project& choice, const Surroundings&) {
  return [tag = std::string(projectTagPrefix) + choice.name](const Shot& shot) {
    return std::ranges::find(shot.tags, tag) != shot.tags.end();
  };
}

template <class Test>
ShotList passing(const ShotList& shots, const std::optional<ShotIDSet>& matchedIDs, Test passes) {
  ShotList passed;
  passed.reserve(matchedIDs ? std::min(matchedIDs->size(), shots.size()) : shots.size());
  for (const auto& shot : shots) {
    if ((!matchedIDs || matchedIDs->contains(shot->id)) && passes(*shot)) passed.push_back(shot);
  }
  return passed;
}

bool isNewer(const ShotPtr& a, const ShotPtr& b) { return a->date > b->date; }

ShotList newestFirst(ShotList shots) {
  // As they come out of the catalogue.
  if (!std::ranges::is_sorted(shots, isNewer)) std::ranges::stable_sort(shots, isNewer);
  return shots;
}

/// What is equally old keeps its order, which a reversal alone would turn round.
ShotList oldestFirst(ShotList shots) {
  shots = newestFirst(std::move(shots));
  std::ranges::reverse(shots);
  for (auto start = shots.begin(); start != shots.end();) {
    const auto end =
        std::find_if(start, shots.end(), [&](const ShotPtr& shot) { return shot->date != (*start)->date; });
    std::reverse(start, end);
    start = end;
  }
  return shots;
}

/// Of shots whose keys are prepared.
ShotList byName(ShotList shots, const NameKeys& keys) {
  std::vector<std::pair<std::string_view, ShotPtr>> named;
  named.reserve(shots.size());
  for (auto& shot : shots) {
    const auto key = keys.of(shot);
    named.emplace_back(key, std::move(shot));
  }
  std::ranges::stable_sort(named, [](const auto& a, const auto& b) {
    const int order = a.first.compare(b.first);
    return order != 0 ? order < 0 : isNewer(a.second, b.second);
  });
  for (std::size_t i = 0; i < named.size(); ++i) shots[i] = std::move(named[i].second);
  return shots;
}

ShotList sortedPrepared(ShotList shots, GallerySort sort, const NameKeys& keys) {
  switch (sort) {
    case GallerySort::newest:
      return newestFirst(std::move(shots));
    case GallerySort::oldest:
      return oldestFirst(std::move(shots));
    case GallerySort::name:
      return byName(std::move(shots), keys);
  }
  return shots;
}

/// The shots lie scattered in memory, and each look at all of them takes as long as the rest: one look is enough.
std::vector<Timestamp> datesOf(const ShotList& shots) {
  std::vector<Timestamp> dates(shots.size());
  std::ranges::transform(shots, dates.begin(), [](const ShotPtr& shot) { return shot->date; });
  return dates;
}

/// By local day, each in the order given.
std::map<std::int64_t, ShotList> byDay(ShotList shots, const std::vector<Timestamp>& dates) {
  std::map<std::int64_t, ShotList> days;
  auto shot = std::make_move_iterator(shots.begin());
  for (auto start = dates.begin(); start != dates.end();) {
    const auto day = Formats::localDay(*start);
    const auto end = std::find_if(start, dates.end(), [&](Timestamp date) { return Formats::localDay(date) != day; });
    auto& members = days[day];
    members.insert(members.end(), shot, shot + (end - start));
    shot += end - start;
    start = end;
  }
  return days;
}

}  // namespace

ShotList visible(const ShotList& shots, const Filter& filter, const std::optional<ShotIDSet>& matchedIDs,
                 const DerivedState& derived, Timestamp now) {
  const Surroundings around{.shots = shots, .derived = derived, .now = now};
  return std::visit([&](const auto& choice) { return passing(shots, matchedIDs, testOf(choice, around)); },
                    filter.choice);
}

ShotList sorted(ShotList shots, GallerySort sort, NameKeys& keys) {
  if (sort == GallerySort::name) keys.prepare(shots);
  return sortedPrepared(std::move(shots), sort, keys);
}

std::vector<GallerySection> sections(ShotList shots, const Arrangement& arrangement, Timestamp now, NameKeys& keys) {
  std::vector<GallerySection> sections;
  if (arrangement.grouping == Grouping::None) {
    sections.push_back({{}, sorted(std::move(shots), arrangement.sort, keys)});
    return sections;
  }
  if (arrangement.sort == GallerySort::name) keys.prepare(shots);
  const auto dates = datesOf(shots);
  const bool isDone = arrangement.sort == GallerySort::newest && std::ranges::is_sorted(dates, std::greater{});
  auto days = byDay(std::move(shots), dates);
  sections.reserve(days.size());
  for (auto& [day, members] : days) {
    auto title = Formats::relativeDay(members.front()->date, now);
    if (!isDone) members = sortedPrepared(std::move(members), arrangement.sort, keys);
    sections.push_back({std::move(title), std::move(members)});
  }
  if (arrangement.sort != GallerySort::oldest) std::ranges::reverse(sections);
  return sections;
}

}  // namespace Nimbrel::Gallery
