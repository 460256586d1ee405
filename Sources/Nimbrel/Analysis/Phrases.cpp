#include "Analysis/Phrases.h"

#include <array>
#include <initializer_list>
#include <vector>

namespace Nimbrel {

namespace {

constexpr auto listCount = static_cast<std::size_t>(PhraseList::count);

/// Phrases of one list; the places left over are empty.
struct Phrases {
  static constexpr std::size_t most = 11;

  constexpr Phrases(PhraseList itsList, std::initializer_list<std::string_view> itsPhrases)
      : list(itsList), size(itsPhrases.size()) {
    std::size_t next = 0;
    for (const auto phrase : itsPhrases) phrases.at(next++) = phrase;
  }

  PhraseList list;
  std::size_t size;
  std::array<std::string_view, most> phrases{};
};

// In the order of the lists.
constexpr std::array<Phrases, listCount> table{{
    {PhraseList::ownSidebar, {"inbox", "all shots", "favorites", "last 7 days"}},
    {PhraseList::ownSearchField, {"search text in shots"}},
    {PhraseList::ownInspector, {"pick a shot to", "shots •"}},
    {PhraseList::ownLists, {"inbox", "all shots"}},
    {PhraseList::ownEditorMarks, {"no sel", "screenshot"}},
    {PhraseList::ownEditorTools, {"open", "finder", "image", "text", "redact", "file", "trash"}},
    {PhraseList::finder, {"finder", "recents", "applications", "downloads"}},
    {PhraseList::textEdit, {"textedit", "untitled", "format"}},
    {PhraseList::siblingViews,
     {"orbital charts", "apsis ledger", "nodal drift", "perigee table", "syzygy log", "transfer windows"}},
    {PhraseList::siblingMenu, {"north", "south", "chart", "overview"}},
    {PhraseList::chrome,
     {"chrome web store", "incognito", "customize chrome", "google chrome", "manage your google account"}},
    {PhraseList::safariViews,
     {"privacy report", "tab overview", "reader view", "start page", "icloud tabs", "favorites bar"}},
    {PhraseList::safariMenus, {"history", "bookmarks", "window", "help"}},
    {PhraseList::shop,
     {"buy from", "delivery", "pickup", "currently unavailable", "add to bag", "daily cash", "lease from",
      "per month"}},
    {PhraseList::siteFooter, {"sign in", "privacy", "terms", "cookie", "learn more", "contact us", "copyright"}},
    // What each signal of a receipt cannot do without.
    {PhraseList::receiptWords, {"receipt", "invoice"}},
    {PhraseList::subtotal, {"sub", "total"}},
    {PhraseList::total, {"total", "amount due", "balance due"}},
    {PhraseList::tax, {"tax", "vat", "gst"}},
    {PhraseList::payment,
     {"visa", "mastercard", "amex", "payment method", "paid with", "card ending", "cash", "change due"}},
    {PhraseList::order, {"order", "invoice", "transaction"}},
    {PhraseList::merchant, {"merchant", "sold by", "store #", "thank you for", "bill to", "ship to"}},
    {PhraseList::code, {"func ", "class ", "struct ", "import ", "const ", "let ", "var ", "=>", "</", "{", "};"}},
    {PhraseList::conversations, {"reply", "message", "send", "typing", "delivered"}},
    {PhraseList::errors, {"error", "exception", "failed", "failure", "stack trace", "crash"}},
    {PhraseList::tickets, {"issue", "assignee", "priority", "status"}},
}};

constexpr bool isInOrder() {
  for (std::size_t i = 0; i < table.size(); ++i) {
    if (static_cast<std::size_t>(table[i].list) != i) return false;
  }
  return true;
}
static_assert(isInOrder());

/// The numbers under which the phrases of a list are found.
using Masks = std::array<PhraseFinder::Found, listCount>;

const Masks& masks() {
  static const Masks made = [] {
    Masks numbers;
    std::size_t next = 0;
    for (std::size_t list = 0; list < listCount; ++list) {
      for (std::size_t i = 0; i < table[list].size; ++i) numbers[list].set(next++);
    }
    return numbers;
  }();
  return made;
}

const PhraseFinder::Found& maskOf(PhraseList list) { return masks()[static_cast<std::size_t>(list)]; }

const PhraseFinder& finder() {
  static const PhraseFinder made = [] {
    std::vector<std::string_view> phrases;
    for (const auto& entry : table) {
      const auto list = phrasesOf(entry.list);
      phrases.insert(phrases.end(), list.begin(), list.end());
    }
    return PhraseFinder(phrases);
  }();
  return made;
}

}  // namespace

std::span<const std::string_view> phrasesOf(PhraseList list) {
  const auto& entry = table[static_cast<std::size_t>(list)];
  return std::span(entry.phrases).first(entry.size);
}

FoundPhrases::FoundPhrases(std::string_view lowered) : found_(finder().find(lowered)) {}

std::size_t FoundPhrases::count(PhraseList list) const { return (found_ & maskOf(list)).count(); }

bool FoundPhrases::any(PhraseList list) const { return (found_ & maskOf(list)).any(); }

bool FoundPhrases::all(PhraseList list) const { return (found_ & maskOf(list)) == maskOf(list); }

}  // namespace Nimbrel
