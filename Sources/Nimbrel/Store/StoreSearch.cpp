#include "Foundation/Text.h"
#include "Store/Gallery.h"
#include "Store/Store.h"
#include "Store/StoreOperation.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace Nimbrel {

void Store::setFilter(Filter filter) {
  const Operation operation(*this);
  publish(filter_, std::move(filter), Fact::filter);
}

void Store::setQuery(std::string query) {
  const Operation operation(*this);
  publish(query_, std::move(query), Fact::query);
}

void Store::runSearch() {
  const Operation operation(*this);
  matchedIDs_ = database_->searchIDs(query_);
  snippets_.search(query_);
  // Even if the same shots were found: other words stand out in them.
  note(Fact::searchResult);
}

std::optional<std::string> Store::snippet(const Shot& shot) const {
  if (!matchedIDs_ || !matchedIDs_->contains(shot.id)) return std::nullopt;
  return snippets_.of(shot);
}

ShotList Store::visible() const { return Gallery::visible(shots_, filter_, matchedIDs_, *derived_, now()); }

std::vector<GallerySection> Store::sections() const {
  const Gallery::Arrangement arrangement{
      .sort = settings_.gallerySort(),
      .grouping = settings_.groupByDay() ? Gallery::Grouping::ByDay : Gallery::Grouping::None};
  if (arrangement.sort != GallerySort::name) nameKeys_.clear();
  return Gallery::sections(visible(), arrangement, now(), nameKeys_);
}

ShotList Store::ordered() const {
  ShotList shots;
  for (auto& section : sections()) std::ranges::move(section.shots, std::back_inserter(shots));
  return shots;
}

ShotList Store::matching(std::string_view text) const {
  const auto found = database_->searchIDs(text);
  if (!found) return {};
  ShotList shots;
  std::ranges::copy_if(shots_, std::back_inserter(shots),
                       [&](const ShotPtr& shot) { return found->contains(shot->id); });
  return shots;
}

void Store::saveCurrentSearch() {
  const std::string text(Text::trimmed(query_));
  auto searches = settings_.savedSearches();
  if (text.empty() || std::ranges::find(searches, text) != searches.end()) return;
  searches.push_back(text);
  settings_.savedSearches.set(std::move(searches));
  setStatus("Saved “" + text + "”");
}

void Store::removeSaved(std::string_view text) {
  // The argument may be the very element that goes.
  const std::string removed(text);
  const Operation operation(*this);
  auto searches = settings_.savedSearches();
  std::erase(searches, removed);
  settings_.savedSearches.set(std::move(searches));
  if (filter_ == Filter{Filter::Saved{removed}}) setFilter({Filter::All{}});
}

void Store::showSimilar(const Shot& shot) {
  const Operation operation(*this);
  const auto id = shot.id;
  setQuery({});
  runSearch();
  setFilter({Filter::Similar{id}});
  setSelection({id});
}

}  // namespace Nimbrel
