#pragma once

#include "Model/Models.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

struct sqlite3;

namespace Nimbrel {

/// The snippets of one search, each worked out when it is asked for: they cost so much that those of all the shots
/// found would hold up the search, and so little that those on the screen do not. A shot's texts are entered into an
/// index in memory that holds nothing else, so that the price does not grow with the number of hits. Main thread.
class Snippets {
 public:
  Snippets();
  ~Snippets();
  Snippets(const Snippets&) = delete;
  Snippets& operator=(const Snippets&) = delete;

  /// Begins anew with another query; a blank one has no snippets.
  void search(std::string_view query);

  /// What Database::searchSnippets has for the shot: the stretch of text around the hits, which stand between U+0002
  /// and U+0003; absent when the query does not find the shot or has no hit in the text. Stays as it was first answered
  /// until the next search.
  [[nodiscard]] const std::optional<std::string>& of(const Shot& shot) const;

 private:
  [[nodiscard]] std::optional<std::string> workedOut(const Shot& shot) const;

  struct Closer {
    void operator()(sqlite3* connection) const;
  };
  std::unique_ptr<sqlite3, Closer> index_;
  std::string expression_;
  mutable std::unordered_map<ShotID, std::optional<std::string>> known_;
};

}  // namespace Nimbrel
