#include "Catalogue/SearchQuery.h"

#include "Foundation/Text.h"

namespace Nimbrel {

namespace {

std::string prefixTerm(std::string_view word) {
  std::string term = "\"";
  for (const char c : word) {
    if (c == '"') term += '"';
    term += c;
  }
  return term + "\"*";
}

}  // namespace

std::string matchExpression(std::string_view query) {
  std::string expression;
  for (const auto& word : Text::split(Text::trimmed(query), ' ', Text::EmptyPieces::Drop)) {
    if (!expression.empty()) expression += ' ';
    expression += prefixTerm(word);
  }
  return expression;
}

}  // namespace Nimbrel
