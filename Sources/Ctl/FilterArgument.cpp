#include "FilterArgument.h"

#include "CommandLine.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace Nimbrel::Ctl {

namespace {

struct PlainFilter {
  std::string_view name;
  Filter::Case choice;
};

const std::array plainFilters{
    PlainFilter{"inbox", Filter::Inbox{}},         PlainFilter{"all", Filter::All{}},
    PlainFilter{"today", Filter::Today{}},         PlainFilter{"week", Filter::Week{}},
    PlainFilter{"favorites", Filter::Favorites{}}, PlainFilter{"sensitive", Filter::Sensitive{}},
};

std::string titleOfGroup(std::string_view key, const DerivedState& derived) {
  for (const auto& entry : derived.contentGroups()) {
    if (entry.group.key == key) return entry.group.title;
  }
  return {};
}

std::string titleOfStack(std::string_view id, const DerivedState& derived) {
  for (const auto& stack : derived.shotStacks()) {
    if (stack.id == id) return stack.title;
  }
  return {};
}

std::optional<Filter> filterWithPayload(std::string_view kind, std::string payload, const DerivedState& derived) {
  if (kind == "tag") return Filter{Filter::Tag{std::move(payload)}};
  if (kind == "content") return Filter{Filter::Content{payload, titleOfGroup(payload, derived)}};
  if (kind == "saved") return Filter{Filter::Saved{std::move(payload)}};
  if (kind == "project") return Filter{Filter::Project{std::move(payload)}};
  if (kind == "similar") {
    const auto id = decimal(payload);
    return id ? std::optional(Filter{Filter::Similar{*id}}) : std::nullopt;
  }
  if (kind == "smart") {
    const auto named = std::ranges::find(allSmartCollections, payload,
                                         [](SmartCollection collection) { return rawValue(collection); });
    return named == allSmartCollections.end() ? std::nullopt : std::optional(Filter{Filter::Smart{*named}});
  }
  return std::nullopt;
}

}  // namespace

std::optional<Filter> parseFilter(std::string_view text, const DerivedState& derived) {
  const auto plain = std::ranges::find(plainFilters, text, &PlainFilter::name);
  if (plain != plainFilters.end()) return Filter{plain->choice};
  const auto colon = text.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  if (text.substr(0, colon) == "stack") return Filter{Filter::Stack{std::string(text), titleOfStack(text, derived)}};
  return filterWithPayload(text.substr(0, colon), std::string(text.substr(colon + 1)), derived);
}

}  // namespace Nimbrel::Ctl
