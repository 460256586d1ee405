#include "Catalogue/Snippets.h"

#include "Catalogue/SearchIndex.h"
#include "Catalogue/SearchQuery.h"

#include <sqlite3.h>

#include <utility>

namespace Nimbrel {

Snippets::Snippets() = default;
Snippets::~Snippets() = default;

void Snippets::Closer::operator()(sqlite3* connection) const { sqlite3_close(connection); }

void Snippets::search(std::string_view query) {
  expression_ = matchExpression(query);
  known_.clear();
  if (expression_.empty() || index_ != nullptr) return;
  sqlite3* connection = nullptr;
  const bool isOpen = sqlite3_open(":memory:", &connection) == SQLITE_OK;
  index_.reset(connection);
  if (isOpen) sqlite3_exec(connection, SearchIndex::createTable, nullptr, nullptr, nullptr);
}

const std::optional<std::string>& Snippets::of(const Shot& shot) const {
  const auto known = known_.find(shot.id);
  return known != known_.end() ? known->second : known_.emplace(shot.id, workedOut(shot)).first->second;
}

std::optional<std::string> Snippets::workedOut(const Shot& shot) const {
  if (expression_.empty() || shot.ocr.empty()) return std::nullopt;
  sqlite3_exec(index_.get(), "BEGIN", nullptr, nullptr, nullptr);
  SearchIndex::add(index_.get(), shot);
  auto found = SearchIndex::snippets(index_.get(), expression_);
  // Nothing is kept, so that nothing has to be taken out again, which costs as much as entering it.
  sqlite3_exec(index_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
  if (found.empty()) return std::nullopt;
  return std::move(found.begin()->second);
}

}  // namespace Nimbrel
