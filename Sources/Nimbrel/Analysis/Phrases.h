#pragma once

#include "Analysis/PhraseFinder.h"

#include <cstddef>
#include <span>
#include <string_view>

namespace Nimbrel {

/// The phrases that tell what is seen in a picture, in lists by what they tell. All are in lower case.
enum class PhraseList {
  ownSidebar,
  ownSearchField,
  ownInspector,
  ownLists,
  ownEditorMarks,
  ownEditorTools,
  finder,
  textEdit,
  siblingViews,
  siblingMenu,
  chrome,
  safariViews,
  safariMenus,
  shop,
  siteFooter,
  receiptWords,
  subtotal,
  total,
  tax,
  payment,
  order,
  merchant,
  code,
  conversations,
  errors,
  tickets,
  count
};

[[nodiscard]] std::span<const std::string_view> phrasesOf(PhraseList list);

/// Which of all the phrases a text in lower case holds, anywhere, also within words.
class FoundPhrases {
 public:
  explicit FoundPhrases(std::string_view lowered);

  /// How many different phrases of the list were found.
  [[nodiscard]] std::size_t count(PhraseList list) const;
  [[nodiscard]] bool any(PhraseList list) const;
  [[nodiscard]] bool all(PhraseList list) const;

 private:
  PhraseFinder::Found found_;
};

}  // namespace Nimbrel
