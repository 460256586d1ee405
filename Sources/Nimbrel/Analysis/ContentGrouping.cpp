#include "Analysis/ContentGrouping.h"

#include "Analysis/WebContent.h"
#include "Foundation/Pattern.h"
#include "Foundation/Text.h"
#include "Model/AppIdentity.h"

#include <QString>

#include <algorithm>
#include <array>
#include <optional>

namespace Nimbrel {

namespace {

constexpr std::string_view desktopName = "desktop";
constexpr std::string_view keyPrefix = "app:";

constexpr std::string_view ownTitle = "Nimbrel";
constexpr std::string_view finderTitle = "Finder";
constexpr std::string_view textEditTitle = "TextEdit";
constexpr std::string_view siblingTitle = "Morvanthile";
constexpr std::string_view chromeTitle = "Google Chrome";
constexpr std::string_view safariTitle = "Safari";

struct KnownApplication {
  std::string_view loweredName;
  std::string_view title;
  std::string_view bundleID;
};

constexpr std::array<KnownApplication, 8> knownApplications{{
    {"nimbrel", ownTitle, ""},  // its identifier is AppIdentity's
    {"finder", finderTitle, "com.apple.finder"},
    {"safari", safariTitle, "com.apple.Safari"},
    {"chrome", chromeTitle, "com.google.Chrome"},
    {"google chrome", chromeTitle, "com.google.Chrome"},
    {"textedit", textEditTitle, "com.apple.TextEdit"},
    {"preview", "Preview", "com.apple.Preview"},
    {"morvanthile", siblingTitle, "local.morvanthile"},
}};

// Deliberately bare: they are looked for within identifier and name.
constexpr std::array<std::string_view, 7> browsers{"safari", "chrome", "firefox", "arc", "opera", "brave", "edge"};

std::string_view bundleIDOf(const KnownApplication& application) {
  return application.title == ownTitle ? AppIdentity::bundleIdentifier() : application.bundleID;
}

bool isDesktop(std::string_view name) {
  const auto text = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  return text.compare(QLatin1String(desktopName.data(), desktopName.size()), Qt::CaseInsensitive) == 0;
}

bool isBareDomain(std::string_view loweredName) {
  static const auto pattern = Pattern::constant(uR"(^[a-z0-9.-]+\.[a-z]{2,}$)");
  return loweredName.find('.') != std::string_view::npos && pattern.isIn(Text::toUtf16(loweredName));
}

bool isBrowser(const std::string& bundleID, const std::string& appName) {
  const auto both = Text::lowered(bundleID + " " + appName);
  return std::ranges::any_of(browsers, [&](std::string_view name) { return both.find(name) != std::string::npos; });
}

/// How many of the tools of the editor's bar stand on a line of their own.
std::size_t ownToolLines(const ShotText& text) {
  const auto lines = text.lines();
  return static_cast<std::size_t>(
      std::ranges::count_if(phrasesOf(PhraseList::ownEditorTools),
                            [&](std::string_view tool) { return std::ranges::find(lines, tool) != lines.end(); }));
}

bool isOwnGallery(const FoundPhrases& phrases) {
  return (phrases.any(PhraseList::ownSearchField) && phrases.count(PhraseList::ownSidebar) >= 2) ||
         (phrases.all(PhraseList::ownInspector) && phrases.any(PhraseList::ownLists));
}

bool isOwnEditor(const ShotText& text) {
  constexpr std::size_t fewestTools = 5;
  const auto& phrases = text.phrases();
  // What does not occur at all is no line either.
  return phrases.any(PhraseList::ownEditorMarks) && phrases.count(PhraseList::ownEditorTools) >= fewestTools &&
         ownToolLines(text) >= fewestTools;
}

bool isSafari(const FoundPhrases& phrases) {
  const auto views = phrases.count(PhraseList::safariViews);
  return views >= 2 || (views == 1 && phrases.all(PhraseList::safariMenus));
}

/// The title of the application that the text gives away; empty when it gives none away.
std::string_view titleFromText(const ShotText& text) {
  const auto& phrases = text.phrases();
  if (isOwnGallery(phrases) || isOwnEditor(text)) return ownTitle;
  if (phrases.all(PhraseList::finder)) return finderTitle;
  if (phrases.all(PhraseList::textEdit)) return textEditTitle;
  if (phrases.any(PhraseList::siblingViews) || phrases.all(PhraseList::siblingMenu)) return siblingTitle;
  if (phrases.any(PhraseList::chrome)) return chromeTitle;
  if (isSafari(phrases)) return safariTitle;
  return {};
}

}  // namespace

const ContentGroup& ContentGroup::desktop() {
  static const ContentGroup group{std::string(desktopName), "Desktop", Kind::desktop, ""};
  return group;
}

const ContentGroup& ContentGroup::unknown() {
  static const ContentGroup group{"unknown", "Screenshot", Kind::unknown, ""};
  return group;
}

ContentGroup ContentGroup::forShot(const Shot& shot) { return forShot(shot, ShotText(shot.ocr)); }

ContentGroup ContentGroup::forShot(const Shot& shot, const ShotText& text) {
  if (const auto name = Text::trimmedWithLineBreaks(shot.shownName); !name.empty()) return namedApplication(name, "");
  if (const auto title = titleFromText(text); !title.empty()) return namedApplication(title, "");
  if (looksLikeWebContent(text)) {
    // A page in a browser that is not known for sure counts as Safari's.
    if (!shot.appAttributionTrusted || !isBrowser(shot.bundleID, shot.appName))
      return namedApplication(safariTitle, "");
    return namedApplication(shot.appName, shot.bundleID);
  }
  if (!shot.appAttributionTrusted || shot.appName.empty()) return unknown();
  return namedApplication(shot.appName, shot.bundleID);
}

ContentGroup ContentGroup::namedApplication(std::string_view name, std::string_view bundleID) {
  const auto trimmed = Text::trimmedWithLineBreaks(name);
  if (isDesktop(trimmed)) return desktop();
  const auto lowered = Text::lowered(trimmed);
  if (isBareDomain(lowered)) return namedApplication(safariTitle, "");
  const auto known = std::ranges::find(knownApplications, lowered, &KnownApplication::loweredName);
  ContentGroup group{.title = std::string(trimmed), .kind = Kind::app, .bundleID = std::string(bundleID)};
  if (known != knownApplications.end()) {
    group.title = known->title;
    if (bundleID.empty()) group.bundleID = bundleIDOf(*known);
  }
  group.key = std::string(keyPrefix) + Text::lowered(group.title);
  return group;
}

std::string_view rawValue(ContentGroup::Kind kind) {
  switch (kind) {
    case ContentGroup::Kind::desktop:
      return "desktop";
    case ContentGroup::Kind::app:
      return "app";
    case ContentGroup::Kind::unknown:
      break;
  }
  return "unknown";
}

}  // namespace Nimbrel
