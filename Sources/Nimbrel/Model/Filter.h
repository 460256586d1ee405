#pragma once

#include "Model/Models.h"
#include "Model/ProductivityModels.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <variant>

namespace Nimbrel {

/// The choice of the sidebar: which shots the gallery shows. A plain value, made as Filter{Filter::Tag{"work"}}.
struct Filter {
  // Each case with what it needs to know; what it lets pass is told by Gallery::visible.

  /// Shots that are not filed.
  struct Inbox {
    bool operator==(const Inbox&) const = default;
  };
  struct All {
    bool operator==(const All&) const = default;
  };
  /// Shots of the local day.
  struct Today {
    bool operator==(const Today&) const = default;
  };
  /// Shots of the last seven times 24 hours.
  struct Week {
    bool operator==(const Week&) const = default;
  };
  struct Favorites {
    bool operator==(const Favorites&) const = default;
  };
  struct Sensitive {
    bool operator==(const Sensitive&) const = default;
  };
  struct Tag {
    std::string tag;
    bool operator==(const Tag&) const = default;
  };
  /// Shots of a content group.
  struct Content {
    std::string key;
    std::string title;
    bool operator==(const Content&) const = default;
  };
  /// A saved search. Shows all; the search alone selects.
  struct Saved {
    std::string text;
    bool operator==(const Saved&) const = default;
  };
  /// Shots that look like one of them.
  struct Similar {
    ShotID id = 0;
    bool operator==(const Similar&) const = default;
  };
  struct Smart {
    SmartCollection collection{};
    bool operator==(const Smart&) const = default;
  };
  /// Shots of an application's stack.
  struct Stack {
    std::string id;
    std::string title;
    bool operator==(const Stack&) const = default;
  };
  struct Project {
    std::string name;
    bool operator==(const Project&) const = default;
  };
  using Case =
      std::variant<Inbox, All, Today, Week, Favorites, Sensitive, Tag, Content, Saved, Similar, Smart, Stack, Project>;

  Case choice = Inbox{};

  bool operator==(const Filter&) const = default;

  /// What the sidebar and the gallery's head call it. Borrows from the filter.
  [[nodiscard]] std::string_view title() const;
  /// The name of its icon.
  [[nodiscard]] std::string_view symbol() const;
};

}  // namespace Nimbrel

template <>
struct std::hash<Nimbrel::Filter> {
  std::size_t operator()(const Nimbrel::Filter& filter) const noexcept;
};
