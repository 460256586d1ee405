#pragma once

#include "Analysis/Phrases.h"

#include <string>
#include <string_view>
#include <vector>

namespace Nimbrel {

/// The text of a shot made ready for all the tests that ask what it is: in lower case, looked through once for all
/// phrases.
class ShotText {
 public:
  explicit ShotText(std::string_view recognised);

  [[nodiscard]] const std::string& lowered() const { return lowered_; }
  [[nodiscard]] const FoundPhrases& phrases() const { return phrases_; }
  /// The lines that are not empty, no more than so many; they borrow from this object.
  [[nodiscard]] std::vector<std::string_view> lines(std::size_t most = std::string_view::npos) const;

 private:
  std::string lowered_;
  FoundPhrases phrases_;
};

/// Whether the text holds one of the phrases. For short texts: a ShotText knows already.
[[nodiscard]] bool holdsAny(std::string_view lowered, PhraseList list);

}  // namespace Nimbrel
