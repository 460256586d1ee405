#include "Views/Window/SidebarSections.h"

#include <algorithm>
#include <ranges>
#include <unordered_map>
#include <utility>

namespace Nimbrel {

namespace {

using Rows = std::vector<SidebarRow>;

constexpr std::size_t mostStacks = 8;

SidebarRow rowFor(Filter filter, std::size_t count = 0) {
  SidebarRow row{.title = std::string(filter.title()), .symbol = std::string(filter.symbol()), .count = count};
  row.filter = std::move(filter);
  return row;
}

Rows fixedRows(const Store& store) {
  Rows rows{rowFor({Filter::Inbox{}}, store.inboxCount()), rowFor({Filter::All{}}, store.shots().size()),
            rowFor({Filter::Today{}}), rowFor({Filter::Week{}}), rowFor({Filter::Favorites{}})};
  if (const auto count = store.sensitiveCount(); count > 0) rows.push_back(rowFor({Filter::Sensitive{}}, count));
  return rows;
}

Rows savedRows(const Store& store) {
  Rows rows;
  for (const auto& text : store.settings().savedSearches()) {
    rows.push_back({.filter = {Filter::Saved{text}}, .title = text, .symbol = "bookmark"});
  }
  return rows;
}

Rows smartRows(const Store& store) {
  Rows rows;
  // The map is in the order in which collections are declared.
  for (const auto& [collection, count] : store.derived().smartCounts()) {
    if (count > 0) rows.push_back(rowFor({Filter::Smart{collection}}, count));
  }
  return rows;
}

Rows stackRows(const Store& store) {
  Rows rows;
  for (const auto& stack : store.derived().shotStacks() | std::views::take(mostStacks)) {
    SidebarRow row{.filter = {Filter::Stack{stack.id, stack.title}},
                   .title = stack.title,
                   .symbol = stack.symbol,
                   .count = stack.shotIDs.size()};
    if (!stack.bundleID.empty()) row.application = {stack.title, stack.bundleID};
    rows.push_back(std::move(row));
  }
  return rows;
}

/// How many shots each project has.
std::unordered_map<std::string_view, std::size_t> projectCounts(const Store& store) {
  std::unordered_map<std::string_view, std::size_t> counts;
  for (const auto& shot : store.shots()) {
    for (auto tag = shot->tags.begin(); tag != shot->tags.end(); ++tag) {
      // A tag that stands there twice makes no second shot.
      if (!tag->starts_with(projectTagPrefix) || std::find(shot->tags.begin(), tag, *tag) != tag) continue;
      ++counts[std::string_view(*tag).substr(projectTagPrefix.size())];
    }
  }
  return counts;
}

Rows projectRows(const Store& store) {
  Rows rows;
  const auto names = store.settings().projects();
  if (names.empty()) return rows;
  const auto counts = projectCounts(store);
  for (const auto& name : names) {
    const auto found = counts.find(name);
    rows.push_back({.filter = {Filter::Project{name}},
                    .title = name,
                    .symbol = "folder.badge.gearshape",
                    .count = found == counts.end() ? 0 : found->second});
  }
  return rows;
}

Rows contentRows(const Store& store) {
  Rows rows;
  for (const auto& [group, count] : store.derived().contentGroups()) {
    SidebarRow row{.filter = {Filter::Content{group.key, group.title}},
                   .title = group.title,
                   .symbol = "questionmark.square",
                   .count = count};
    if (group.kind == ContentGroup::Kind::app) row.application = {group.title, group.bundleID};
    rows.push_back(std::move(row));
  }
  return rows;
}

Rows tagRows(const Store& store) {
  Rows rows;
  for (const auto& tag : store.tags()) rows.push_back(rowFor({Filter::Tag{tag}}));
  return rows;
}

}  // namespace

std::vector<SidebarSection> sidebarSections(const Store& store) {
  std::vector<SidebarSection> sections{{"", fixedRows(store)},
                                       {"Saved", savedRows(store)},
                                       {"Smart Collections", smartRows(store)},
                                       {"Recent Stacks", stackRows(store)},
                                       {"Projects", projectRows(store)},
                                       {"Recognized Apps", contentRows(store)},
                                       {"Tags", tagRows(store)}};
  std::erase_if(sections, [](const auto& section) { return section.rows.empty(); });
  return sections;
}

void chooseFilter(Store& store, const Filter& filter) {
  if (const auto* saved = std::get_if<Filter::Saved>(&filter.choice)) {
    store.setQuery(saved->text);
    store.runSearch();
  }
  store.setFilter(filter);
}

}  // namespace Nimbrel
