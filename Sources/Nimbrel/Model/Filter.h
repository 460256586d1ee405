#pragma once

#include "Model/Models.h"
#include "Model/ProductivityModels.h"

#include <string>
#include <string_view>
#include <variant>

namespace Nimbrel {

/// The choice of the sidebar: which shots the gallery shows. A plain value.
struct Filter {
  struct Inbox {
    bool operator==(const Inbox&) const = default;
  };
  struct All {
    bool operator==(const All&) const = default;
  };
  struct Today {
    bool operator==(const Today&) const = default;
  };
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
  struct Content {
    std::string key;
    std::string title;
    bool operator==(const Content&) const = default;
  };
  struct Saved {
    std::string text;
    bool operator==(const Saved&) const = default;
  };
  struct Similar {
    ShotID id = 0;
    bool operator==(const Similar&) const = default;
  };
  struct Smart {
    SmartCollection collection{};
    bool operator==(const Smart&) const = default;
  };
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

  /// What the sidebar and the gallery's head call it.
  [[nodiscard]] std::string_view title() const;
  /// The name of its icon.
  [[nodiscard]] std::string_view symbol() const;
};

}  // namespace Nimbrel
