#include "Analysis/SmartCollections.h"

#include "Analysis/ReceiptClassifier.h"
#include "Analysis/TicketKeys.h"
#include "Foundation/Text.h"

#include <algorithm>
#include <array>

namespace Nimbrel {

namespace {

constexpr std::size_t fewestCodePhrases = 2;
constexpr std::size_t fewestConversationPhrases = 2;
constexpr std::size_t fewestTicketPhrases = 3;
constexpr std::size_t fewestDocumentWords = 35;

// They are looked for within title and identifier.
constexpr std::array<std::string_view, 10> documentApplications{
    "textedit",          "preview",        "pages",         "microsoft word",
    "microsoft.word",    "libreoffice",    "adobe acrobat", "com.apple.textedit",
    "com.apple.preview", "com.apple.pages"};

bool isDocument(const ShotText& text, const ContentGroup& group) {
  if (group.kind != ContentGroup::Kind::app) return false;
  const auto application = Text::lowered(group.title + " " + group.bundleID);
  const auto isNamed = [&](std::string_view name) { return application.find(name) != std::string::npos; };
  return std::ranges::any_of(documentApplications, isNamed) &&
         Text::wordCount(text.lowered(), fewestDocumentWords) == fewestDocumentWords;
}

/// For a shot that was read and has a text.
bool holds(SmartCollection collection, const Shot& shot, const ShotText& text, const ContentGroup& group) {
  const auto& phrases = text.phrases();
  switch (collection) {
    case SmartCollection::receipts:
      return ReceiptClassifier::matches(shot, text, group);
    case SmartCollection::code:
      return phrases.count(PhraseList::code) >= fewestCodePhrases;
    case SmartCollection::conversations:
      return phrases.count(PhraseList::conversations) >= fewestConversationPhrases;
    case SmartCollection::errors:
      return phrases.any(PhraseList::errors);
    case SmartCollection::tickets:
      return phrases.count(PhraseList::tickets) >= fewestTicketPhrases || holdsTicketKey(text.lowered());
    case SmartCollection::documents:
      return isDocument(text, group);
  }
  return false;
}

bool wasRead(const Shot& shot) { return shot.ocrDone && !shot.ocr.empty(); }

}  // namespace

bool matches(SmartCollection collection, const Shot& shot) {
  if (!wasRead(shot)) return false;
  const ShotText text(shot.ocr);
  return holds(collection, shot, text, ContentGroup::forShot(shot, text));
}

SmartCollectionSet collectionsOf(const Shot& shot, const ShotText& text, const ContentGroup& group) {
  SmartCollectionSet collections;
  if (!wasRead(shot)) return collections;
  for (const auto collection : allSmartCollections) {
    collections.set(static_cast<std::size_t>(collection), holds(collection, shot, text, group));
  }
  return collections;
}

}  // namespace Nimbrel
