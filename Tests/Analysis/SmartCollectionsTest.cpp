#include "Analysis/SmartCollections.h"

#include "Analysis/TicketKeys.h"
#include "Foundation/Pattern.h"
#include "Foundation/Text.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>

namespace Nimbrel {
namespace {

Shot readShot(std::string text) {
  Shot shot;
  shot.ocr = std::move(text);
  shot.ocrDone = true;
  return shot;
}

bool isCode(std::string text) { return matches(SmartCollection::code, readShot(std::move(text))); }
bool isConversation(std::string text) { return matches(SmartCollection::conversations, readShot(std::move(text))); }
bool isError(std::string text) { return matches(SmartCollection::errors, readShot(std::move(text))); }
bool isTicket(std::string text) { return matches(SmartCollection::tickets, readShot(std::move(text))); }

std::string words(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += "word ";
  return text;
}

bool isDocument(const std::string& appName, const std::string& bundleID, const std::string& text) {
  auto shot = readShot(text);
  shot.appName = appName;
  shot.bundleID = bundleID;
  shot.appAttributionTrusted = true;
  return matches(SmartCollection::documents, shot);
}

TEST(SmartCollections, AShotThatWasNotReadBelongsToNone) {
  auto shot = readShot("Receipt Subtotal 5.00\nTax 1.00\nTotal 6.00 visa\nlet var reply send error web-1 " + words(40));
  shot.shownName = "Preview";
  for (const auto collection : allSmartCollections) EXPECT_TRUE(matches(collection, shot)) << title(collection);
  shot.ocrDone = false;
  for (const auto collection : allSmartCollections) EXPECT_FALSE(matches(collection, shot)) << title(collection);
}

TEST(SmartCollections, AnEmptyTextBelongsToNone) {
  auto shot = readShot("");
  shot.shownName = "Preview";
  for (const auto collection : allSmartCollections) EXPECT_FALSE(matches(collection, shot)) << title(collection);
}

TEST(SmartCollections, ReceiptsAreThoseOfTheClassifier) {
  EXPECT_TRUE(matches(SmartCollection::receipts, readShot("Subtotal 5.00\nTotal 6.00\nCash")));
  EXPECT_FALSE(matches(SmartCollection::receipts, readShot("Subtotal 5.00\nTotal 6.00")));
}

TEST(SmartCollections, CodeHasTwoDifferentSigns) {
  for (const std::string sign : {"func ", "class ", "struct ", "import ", "const ", "var ", "=>", "</", "{"}) {
    EXPECT_TRUE(isCode("let x " + sign)) << sign;
  }
  EXPECT_TRUE(isCode("}; let ")) << "the end of a block";
}

TEST(SmartCollections, OneSignOfCodeIsNotEnoughHoweverOften) {
  EXPECT_FALSE(isCode("let us"));
  EXPECT_FALSE(isCode("let us let them let me"));
  EXPECT_FALSE(isCode("classes, imports, lets"));
}

TEST(SmartCollections, AConversationHasTwoWordsOfOne) {
  EXPECT_TRUE(isConversation("Reply to this message"));
  EXPECT_TRUE(isConversation("Typing… Delivered"));
  EXPECT_TRUE(isConversation("send, then message"));
  EXPECT_FALSE(isConversation("message message"));
}

TEST(SmartCollections, AnErrorHasOneWord) {
  for (const std::string word : {"Error", "Exception", "FAILED", "failure", "stack trace", "crashed"}) {
    EXPECT_TRUE(isError("x " + word)) << word;
  }
  EXPECT_FALSE(isError("all went well"));
}

TEST(SmartCollections, ATicketKeyMatchesInAnyCase) {
  EXPECT_TRUE(isTicket("see WEB-1204."));
  EXPECT_TRUE(isTicket("see web-1204."));
  EXPECT_TRUE(isTicket("AB-1"));
  EXPECT_TRUE(isTicket("ABCDEFGH-1234567"));
}

TEST(SmartCollections, ATicketKeyIsNeitherLongerNorPartOfAWord) {
  EXPECT_FALSE(isTicket("A-1"));
  EXPECT_FALSE(isTicket("ABCDEFGHI-1"));
  EXPECT_FALSE(isTicket("AB-12345678"));
  EXPECT_FALSE(isTicket("xAB1-5"));
  EXPECT_FALSE(isTicket("AB-5x"));
  EXPECT_FALSE(isTicket("AB-\n5"));
  EXPECT_FALSE(isTicket("2026-03-04"));
}

TEST(SmartCollections, ATicketHasThreeWordsOfOne) {
  EXPECT_TRUE(isTicket("Issue, Assignee, Priority"));
  EXPECT_TRUE(isTicket("assignee priority status"));
  EXPECT_FALSE(isTicket("issue status"));
}

TEST(SmartCollections, ADocumentHasThirtyFiveWords) {
  EXPECT_FALSE(isDocument("Preview", "", words(34)));
  EXPECT_TRUE(isDocument("Preview", "", words(35)));
  EXPECT_FALSE(isDocument("Preview", "", words(34) + " \n\t\u00A0\u2028 "));
}

TEST(SmartCollections, ADocumentStandsInAnApplicationForDocuments) {
  for (const std::string name :
       {"TextEdit", "Preview", "My Pages", "Microsoft Word", "LibreOffice Writer", "Adobe Acrobat Reader"}) {
    EXPECT_TRUE(isDocument(name, "", words(35))) << name;
  }
  for (const std::string bundleID :
       {"com.microsoft.Word", "com.apple.TextEdit", "com.apple.Preview", "com.apple.Pages", "org.libreoffice.writer"}) {
    EXPECT_TRUE(isDocument("x", bundleID, words(35))) << bundleID;
  }
  EXPECT_FALSE(isDocument("Terminal", "org.terminal", words(35)));
}

TEST(SmartCollections, ADocumentNeedsAGroupThatIsAnApplication) {
  EXPECT_FALSE(isDocument("Desktop", "com.apple.preview", words(35)));
  auto shot = readShot(words(35));
  shot.appName = "Preview";
  EXPECT_FALSE(matches(SmartCollection::documents, shot));
}

TEST(SmartCollections, AllAtOnceAreThoseAskedForOneByOne) {
  for (const std::string text :
       {"let x = { error }", "reply message web-1", "Subtotal 5.00\nTotal 6.00\nCash", "", "x"}) {
    const auto shot = readShot(text);
    const ShotText prepared(shot.ocr);
    const auto all = collectionsOf(shot, prepared, ContentGroup::forShot(shot, prepared));
    for (const auto collection : allSmartCollections) {
      EXPECT_EQ(all.test(static_cast<std::size_t>(collection)), matches(collection, shot)) << text;
    }
  }
}

TEST(TicketKeys, AreThoseThatTheExpressionFinds) {
  static const std::array<std::string, 24> pieces{
      "ab", "a",      "abcdefgh", "-", "-",      "-",      "1", "1234567", "٤",      "\u017F", "\u212A", " ",
      "\n", "\u2028", "\r",       "_", "\u0301", "\u200D", "ü", "ß",       "\u0131", "\xFF",   "\u00AD", "web-5"};
  const auto pattern = Pattern::constant(ticketKeyExpression);
  std::mt19937 random(23);
  int keys = 0;
  for (int round = 0; round < 60'000; ++round) {
    std::string text;
    for (auto i = 1 + random() % 9; i > 0; --i)
      text += pieces.at(random() % (pieces.size() - (round % 8 == 0 ? 0 : 1)));
    const bool expected = pattern.isIn(Text::toUtf16(text));
    if (expected) ++keys;
    EXPECT_EQ(holdsTicketKey(text), expected) << text;
  }
  EXPECT_GT(keys, 300);
}

}  // namespace
}  // namespace Nimbrel
