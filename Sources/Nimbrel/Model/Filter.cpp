#include "Model/Filter.h"

#include <cstdint>

namespace Nimbrel {

namespace {

/// How a case is shown.
struct Face {
  std::string_view title;
  std::string_view symbol;
};

Face faceOf(const Filter::Inbox&) { return {"Inbox", "tray"}; }
Face faceOf(const Filter::All&) { return {"All Shots", "square.grid.2x2"}; }
Face faceOf(const Filter::Today&) { return {"Today", "clock"}; }
Face faceOf(const Filter::Week&) { return {"Last 7 Days", "calendar"}; }
Face faceOf(const Filter::Favorites&) { return {"Favorites", "star"}; }
Face faceOf(const Filter::Sensitive&) { return {"Sensitive", "exclamationmark.shield"}; }
Face faceOf(const Filter::Tag& choice) { return {choice.tag, "tag"}; }
Face faceOf(const Filter::Content& choice) { return {choice.title, "square.stack.3d.up"}; }
Face faceOf(const Filter::Saved& choice) { return {choice.text, "bookmark"}; }
Face faceOf(const Filter::Similar&) { return {"Similar Shots", "square.on.square"}; }
Face faceOf(const Filter::Smart& choice) { return {title(choice.collection), symbol(choice.collection)}; }
Face faceOf(const Filter::Stack& choice) { return {choice.title, "square.stack.3d.up"}; }
Face faceOf(const Filter::Project& choice) { return {choice.name, "folder.badge.gearshape"}; }

Face faceOf(const Filter& filter) {
  return std::visit([](const auto& choice) { return faceOf(choice); }, filter.choice);
}

/// The number of the shot or the collection that a case names.
std::int64_t numberIn(const Filter& filter) {
  if (const auto* similar = std::get_if<Filter::Similar>(&filter.choice)) return similar->id;
  if (const auto* smart = std::get_if<Filter::Smart>(&filter.choice)) return static_cast<int>(smart->collection);
  return 0;
}

}  // namespace

std::string_view Filter::title() const { return faceOf(*this).title; }
std::string_view Filter::symbol() const { return faceOf(*this).symbol; }

}  // namespace Nimbrel

std::size_t std::hash<Nimbrel::Filter>::operator()(const Nimbrel::Filter& filter) const noexcept {
  // Two groups with one title and different keys are rare enough to share a place.
  const auto title = std::hash<std::string_view>{}(filter.title());
  return (title * 31 + filter.choice.index()) * 31 + std::hash<std::int64_t>{}(Nimbrel::numberIn(filter));
}
