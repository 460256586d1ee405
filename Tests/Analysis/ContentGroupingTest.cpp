#include "Analysis/ContentGrouping.h"

#include "Model/AppIdentity.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

Shot shotOf(std::string text) {
  Shot shot;
  shot.ocr = std::move(text);
  return shot;
}

Shot takenIn(std::string appName, std::string bundleID, std::string text) {
  auto shot = shotOf(std::move(text));
  shot.appName = std::move(appName);
  shot.bundleID = std::move(bundleID);
  shot.appAttributionTrusted = true;
  return shot;
}

/// The title of the group that the text alone leads to; "Screenshot" for the unknown group.
std::string titleOf(std::string text) { return ContentGroup::forShot(shotOf(std::move(text))).title; }

std::string titleOfNamed(std::string_view name) { return ContentGroup::namedApplication(name, "").title; }

TEST(ContentGroup, HasTwoFixedGroups) {
  EXPECT_EQ(ContentGroup::desktop(), (ContentGroup{"desktop", "Desktop", ContentGroup::Kind::desktop, ""}));
  EXPECT_EQ(ContentGroup::unknown(), (ContentGroup{"unknown", "Screenshot", ContentGroup::Kind::unknown, ""}));
}

TEST(ContentGroup, KindsHaveNames) {
  EXPECT_EQ(rawValue(ContentGroup::Kind::desktop), "desktop");
  EXPECT_EQ(rawValue(ContentGroup::Kind::app), "app");
  EXPECT_EQ(rawValue(ContentGroup::Kind::unknown), "unknown");
}

// The user's word

TEST(ContentGroup, TheUsersWordOverridesTextAndMetadata) {
  auto shot = takenIn("Terminal", "org.terminal", "google chrome");
  shot.shownName = " \n Notes\t";
  EXPECT_EQ(ContentGroup::forShot(shot), (ContentGroup{"app:notes", "Notes", ContentGroup::Kind::app, ""}));
}

TEST(ContentGroup, AUsersWordOfBlanksCountsAsEmpty) {
  auto shot = takenIn("Terminal", "org.terminal", "");
  shot.shownName = " \n\t\u00A0\u2028";
  EXPECT_EQ(ContentGroup::forShot(shot).title, "Terminal");
}

TEST(ContentGroup, AUsersWordThatIsABareDomainGivesSafari) {
  auto shot = shotOf("");
  shot.shownName = "News.Example.com";
  EXPECT_EQ(ContentGroup::forShot(shot),
            (ContentGroup{"app:safari", "Safari", ContentGroup::Kind::app, "com.apple.Safari"}));
}

// The program's own window

TEST(ContentGroup, TheOwnWindowIsKnownByItsSearchFieldAndTwoRowsOfTheSidebar) {
  EXPECT_EQ(titleOf("Search text in shots\nInbox\nLast 7 Days"), "Nimbrel");
  EXPECT_EQ(titleOf("Search text in shots\nInbox"), "Screenshot");
  EXPECT_EQ(titleOf("Search text in shots\nInbox Inbox"), "Screenshot");
  EXPECT_EQ(titleOf("Search text\nInbox\nFavorites\nAll Shots"), "Screenshot");
}

TEST(ContentGroup, TheOwnWindowIsKnownByItsEmptyInspector) {
  EXPECT_EQ(titleOf("Pick a shot to see it\n12 shots • 3 MB\nAll Shots"), "Nimbrel");
  EXPECT_EQ(titleOf("Pick a shot to see it\n12 shots • 3 MB\nINBOX"), "Nimbrel");
  EXPECT_EQ(titleOf("Pick a shot to see it\n12 shots • 3 MB\nFavorites"), "Screenshot");
  EXPECT_EQ(titleOf("Pick a shot to see it\n12 shots\nInbox"), "Screenshot");
  EXPECT_EQ(titleOf("12 shots • 3 MB\nInbox"), "Screenshot");
}

TEST(ContentGroup, TheOwnEditorIsKnownByFiveToolsOnLinesOfTheirOwn) {
  EXPECT_EQ(titleOf("Open\nImage\nText\nRedact\nTrash\nNo sel"), "Nimbrel");
  EXPECT_EQ(titleOf("Open\nFinder\nFile\nRedact\nTrash\nScreenshot 1.png"), "Nimbrel");
  EXPECT_EQ(titleOf("Open\nImage\nText\nRedact\nNo sel"), "Screenshot");
  EXPECT_EQ(titleOf("Open\nImage\nText\nRedact\nTrash"), "Screenshot");
}

TEST(ContentGroup, ALineOfExactlyOpenCountsAndOneWithAFurtherWordDoesNot) {
  EXPECT_EQ(titleOf("open\rimage\u2028text\u0085redact\x0C"
                    "trash\nno sel"),
            "Nimbrel");
  EXPECT_EQ(titleOf("Open with\nImage\nText\nRedact\nTrash\nNo sel"), "Screenshot");
  EXPECT_EQ(titleOf("Open \nImage\nText\nRedact\nTrash\nNo sel"), "Screenshot");
  EXPECT_EQ(titleOf("Open\nOpen\nText\nRedact\nTrash\nNo sel"), "Screenshot");
}

TEST(ContentGroup, TheOwnGroupHasTheProgramsIdentifier) {
  const auto group = ContentGroup::forShot(shotOf("search text in shots inbox favorites"));
  EXPECT_EQ(group, (ContentGroup{"app:nimbrel", "Nimbrel", ContentGroup::Kind::app, AppIdentity::bundleIdentifier()}));
}

// Applications known by their words

TEST(ContentGroup, FinderIsKnownByFourWords) {
  EXPECT_EQ(titleOf("Finder Recents Applications Downloads"), "Finder");
  EXPECT_EQ(titleOf("Finder Recents Applications"), "Screenshot");
}

TEST(ContentGroup, TextEditIsKnownByThreeWords) {
  EXPECT_EQ(titleOf("TextEdit File Format Untitled"), "TextEdit");
  EXPECT_EQ(titleOf("TextEdit Untitled"), "Screenshot");
}

TEST(ContentGroup, TheSiblingIsKnownByOneViewOrAllOfItsMenu) {
  for (const std::string view :
       {"Orbital Charts", "Apsis Ledger", "Nodal Drift", "Perigee Table", "Syzygy Log", "Transfer Windows"}) {
    EXPECT_EQ(titleOf("x " + view), "Morvanthile") << view;
  }
  EXPECT_EQ(titleOf("North South Chart Overview"), "Morvanthile");
  EXPECT_EQ(titleOf("North South Chart"), "Screenshot");
  EXPECT_EQ(ContentGroup::forShot(shotOf("nodal drift")).bundleID, "local.morvanthile");
}

TEST(ContentGroup, ChromeIsKnownByOnePhrase) {
  for (const std::string phrase :
       {"Chrome Web Store", "Incognito", "Customize Chrome", "Google Chrome", "Manage your Google Account"}) {
    EXPECT_EQ(titleOf(phrase), "Google Chrome") << phrase;
  }
  EXPECT_EQ(titleOf("Chrome"), "Screenshot");
}

TEST(ContentGroup, SafariIsKnownByTwoOfItsViews) {
  EXPECT_EQ(titleOf("Privacy Report, Start Page"), "Safari");
  EXPECT_EQ(titleOf("Tab Overview and Reader View"), "Safari");
  EXPECT_EQ(titleOf("iCloud Tabs; Favorites Bar"), "Safari");
}

TEST(ContentGroup, SafariIsKnownByOneViewWithAllItsMenus) {
  EXPECT_EQ(titleOf("Reader View History Bookmarks Window Help"), "Safari");
  EXPECT_EQ(titleOf("History Bookmarks Window Help"), "Screenshot");
}

TEST(ContentGroup, OneViewOfSafariWithoutHelpDoesNotDecide) {
  EXPECT_EQ(titleOf("Reader View History Bookmarks Window"), "Screenshot");
}

TEST(ContentGroup, AnEarlierRuleDecides) {
  EXPECT_EQ(titleOf("search text in shots inbox favorites finder recents applications downloads"), "Nimbrel");
  EXPECT_EQ(titleOf("finder recents applications downloads textedit untitled format"), "Finder");
  EXPECT_EQ(titleOf("textedit untitled format nodal drift"), "TextEdit");
  EXPECT_EQ(titleOf("nodal drift incognito"), "Morvanthile");
  EXPECT_EQ(titleOf("incognito start page reader view"), "Google Chrome");
  EXPECT_EQ(ContentGroup::forShot(takenIn("Terminal", "", "incognito")).title, "Google Chrome");
}

// Web pages and metadata

TEST(ContentGroup, AWebPageInATrustedBrowserIsThatBrowsers) {
  const auto group = ContentGroup::forShot(takenIn("Firefox", "org.mozilla.firefox", "example.com/a"));
  EXPECT_EQ(group, (ContentGroup{"app:firefox", "Firefox", ContentGroup::Kind::app, "org.mozilla.firefox"}));
}

TEST(ContentGroup, AnyNameThatHoldsABrowsersCountsAsOne) {
  for (const std::string name : {"Safari", "CHROME", "firefox", "Search", "Opera", "Brave", "Edgewise"}) {
    EXPECT_EQ(ContentGroup::forShot(takenIn("My " + name, "", "example.com")).title, "My " + name);
  }
  EXPECT_EQ(ContentGroup::forShot(takenIn("X", "com.brave.x", "example.com")).title, "X");
  EXPECT_EQ(ContentGroup::forShot(takenIn("Lynx", "org.lynx", "example.com")).title, "Safari");
}

TEST(ContentGroup, AWebPageInABrowserThatIsNotTrustedIsSafaris) {
  auto shot = takenIn("Firefox", "org.mozilla.firefox", "example.com");
  shot.appAttributionTrusted = false;
  EXPECT_EQ(ContentGroup::forShot(shot).title, "Safari");
}

TEST(ContentGroup, MetadataIsBelievedOnlyWhenTrusted) {
  auto shot = takenIn("Terminal", "org.terminal", "plain words");
  EXPECT_EQ(ContentGroup::forShot(shot).key, "app:terminal");
  shot.appAttributionTrusted = false;
  EXPECT_EQ(ContentGroup::forShot(shot), ContentGroup::unknown());
}

TEST(ContentGroup, WithoutTextAndNameTheGroupIsUnknown) {
  EXPECT_EQ(ContentGroup::forShot(takenIn("", "org.terminal", "")), ContentGroup::unknown());
  EXPECT_EQ(ContentGroup::forShot(shotOf("")), ContentGroup::unknown());
}

TEST(ContentGroup, AnEmptyTextFallsBackOnTheMetadata) {
  EXPECT_EQ(ContentGroup::forShot(takenIn("Terminal", "", "")).title, "Terminal");
}

TEST(ContentGroup, TheNameDesktopWithTrustIsTheDesktopGroup) {
  EXPECT_EQ(ContentGroup::forShot(takenIn("desktop", "com.x", "")), ContentGroup::desktop());
}

TEST(ContentGroup, TheNameSafariKeepsAnotherIdentifier) {
  EXPECT_EQ(ContentGroup::forShot(takenIn("Safari", "com.other", "")),
            (ContentGroup{"app:safari", "Safari", ContentGroup::Kind::app, "com.other"}));
}

// Names

TEST(NamedApplication, TheDesktopIsKnownInAnyCase) {
  EXPECT_EQ(ContentGroup::namedApplication(" DeskTop\n", "com.x"), ContentGroup::desktop());
  EXPECT_EQ(titleOfNamed("Desktop 2"), "Desktop 2");
}

TEST(NamedApplication, ABareDomainIsSafari) {
  EXPECT_EQ(ContentGroup::namedApplication("Example.co.uk", "com.x"),
            (ContentGroup{"app:safari", "Safari", ContentGroup::Kind::app, "com.apple.Safari"}));
  EXPECT_EQ(titleOfNamed("a-1.io"), "Safari");
  EXPECT_EQ(titleOfNamed("example.c"), "example.c");
  EXPECT_EQ(titleOfNamed(".com"), ".com");
  EXPECT_EQ(titleOfNamed("example.com/a"), "example.com/a");
  EXPECT_EQ(titleOfNamed("Node.js 2"), "Node.js 2");
  EXPECT_EQ(titleOfNamed("ü.com"), "ü.com");
}

TEST(NamedApplication, KnownNamesAreMatchedWholeInAnyCase) {
  const auto knows = [](std::string_view name, std::string_view title, std::string_view bundleID) {
    const auto group = ContentGroup::namedApplication(name, "");
    return group.title == title && group.bundleID == bundleID && group.kind == ContentGroup::Kind::app;
  };
  EXPECT_TRUE(knows("NIMBREL", "Nimbrel", AppIdentity::bundleIdentifier()));
  EXPECT_TRUE(knows("finder", "Finder", "com.apple.finder"));
  EXPECT_TRUE(knows("safari", "Safari", "com.apple.Safari"));
  EXPECT_TRUE(knows("Chrome", "Google Chrome", "com.google.Chrome"));
  EXPECT_TRUE(knows("google chrome", "Google Chrome", "com.google.Chrome"));
  EXPECT_TRUE(knows("textedit", "TextEdit", "com.apple.TextEdit"));
  EXPECT_TRUE(knows("PREVIEW", "Preview", "com.apple.Preview"));
  EXPECT_TRUE(knows("morvanthile", "Morvanthile", "local.morvanthile"));
  EXPECT_TRUE(knows("Safari Preview", "Safari Preview", ""));
}

TEST(NamedApplication, TheKeyIsTheTitleInLowerCase) {
  EXPECT_EQ(ContentGroup::namedApplication("chrome", "").key, "app:google chrome");
  EXPECT_EQ(ContentGroup::namedApplication(" ÄPFEL ", "").key, "app:äpfel");
  EXPECT_EQ(ContentGroup::namedApplication(" ÄPFEL ", "").title, "ÄPFEL");
  EXPECT_EQ(ContentGroup::namedApplication("", "com.x"), (ContentGroup{"app:", "", ContentGroup::Kind::app, "com.x"}));
}

}  // namespace
}  // namespace Nimbrel
