#include "Views/Gallery/SnippetRuns.h"

#include <algorithm>

namespace Nimbrel {

namespace {

constexpr char matchBegins = '\x02';
constexpr char matchEnds = '\x03';

}  // namespace

std::vector<SnippetRun> highlighted(std::string_view snippet) {
  std::vector<SnippetRun> runs;
  bool isMatch = false;
  while (!snippet.empty()) {
    const auto mark = std::ranges::find_if(snippet, [](char c) { return c == matchBegins || c == matchEnds; });
    std::string text(snippet.begin(), mark);
    std::ranges::replace(text, '\n', ' ');
    if (!text.empty()) runs.push_back({.text = std::move(text), .isEmphasised = isMatch});
    if (mark == snippet.end()) break;
    isMatch = *mark == matchBegins;
    snippet = {mark + 1, snippet.end()};
  }
  return runs;
}

}  // namespace Nimbrel
