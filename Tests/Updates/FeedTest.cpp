#include "Updates/Feed.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

std::vector<FeedItem> itemsOf(std::string_view xml) {
  auto items = parseFeed(xml);
  EXPECT_TRUE(items) << (items ? "" : items.error().message);
  return items ? std::move(items).value() : std::vector<FeedItem>();
}

std::string faultOf(std::string_view xml) {
  const auto items = parseFeed(xml);
  return items ? "none" : items.error().message;
}

TEST(Feed, TellsOfEachReleaseWhatTheItemSays) {
  EXPECT_THAT(
      itemsOf(R"(<?xml version="1.0" encoding="utf-8"?>
    <rss version="2.0" xmlns:up="https://updates.example/feed"><channel><title>Nimbrel</title>
      <item><title>Version 1.2</title>
        <description><![CDATA[<p>Faster &amp; calmer</p>]]></description>
        <enclosure url="https://updates.example/nimbrel_1.2_amd64.deb" length="1234" type="application/octet-stream"
                   up:version="1.2" up:edSignature="c2ln"/></item>
      <item><enclosure url="https://updates.example/old.deb" length="7" version="1.1" edSignature="b2xk"/></item>
    </channel></rss>)"),
      ElementsAre(
          FeedItem{.version = "1.2",
                   .notes = "<p>Faster &amp; calmer</p>",
                   .url = "https://updates.example/nimbrel_1.2_amd64.deb",
                   .length = "1234",
                   .signature = "c2ln"},
          FeedItem{.version = "1.1", .url = "https://updates.example/old.deb", .length = "7", .signature = "b2xk"}));
}

TEST(Feed, TheVersionMayBeAnElementOfTheItem) {
  const auto items = itemsOf("<rss xmlns:u='urn:u'><channel><item><u:version> 3.1 </u:version></item></channel></rss>");
  ASSERT_THAT(items, SizeIs(1));
  EXPECT_EQ(items.front().version, "3.1");
}

TEST(Feed, WhatIsMissingIsEmpty) {
  EXPECT_THAT(itemsOf("<rss><channel><item/><item><enclosure/></item></channel></rss>"),
              ElementsAre(FeedItem(), FeedItem()));
  EXPECT_THAT(itemsOf("<rss><channel/></rss>"), IsEmpty());
  EXPECT_THAT(itemsOf("<rss/>"), IsEmpty());
}

TEST(Feed, WhatElseThereIsDoesNotMatter) {
  EXPECT_THAT(itemsOf("<rss><item/><channel><image><item/></image><x><y><enclosure url='a'/></y></x></channel></rss>"),
              IsEmpty());
}

TEST(Feed, WhatIsNoXmlIsNoFeed) {
  for (const auto* text : {"", "no", "<rss>", "<rss><channel>", "<rss></channel></rss>", "<rss/>behind",
                           "<rss><channel><item></rss>", "{\"rss\": 1}", "<!doctype html><html><br></html>",
                           "<rss><x:channel/></rss>", "\xff\xfe<rss/>", "<rss>&nothing;</rss>"}) {
    EXPECT_EQ(faultOf(text), "the feed is no XML") << text;
  }
}

TEST(Feed, AFaultAtTheEndSpoilsWhatCameBefore) {
  EXPECT_EQ(faultOf("<rss><channel><item><enclosure version='1'/></item></channel></rss><"), "the feed is no XML");
}

TEST(Feed, OtherXmlIsNoFeed) {
  for (const auto* text : {"<html/>", "<feed xmlns='http://www.w3.org/2005/Atom'/>", "<RSS/>"}) {
    EXPECT_EQ(faultOf(text), "the feed is no RSS") << text;
  }
}

TEST(Feed, EntitiesThatGrowWithoutEndAreRefused) {
  std::string xml = "<!DOCTYPE rss [<!ENTITY a0 'aaaaaaaaaa'>";
  for (int i = 1; i < 30; ++i) {
    const auto former = "&a" + std::to_string(i - 1) + ";";
    xml += "<!ENTITY a" + std::to_string(i) + " '" + former + former + former + former + "'>";
  }
  xml += "]><rss><channel><item><description>&a29;</description></item></channel></rss>";
  EXPECT_EQ(faultOf(xml), "the feed is no XML");
}

TEST(Feed, EntitiesFetchNothing) {
  const Testing::TemporaryFolder folder;
  const auto file = folder.write("secret", "what nobody may know");
  const auto items = parseFeed("<!DOCTYPE rss [<!ENTITY f SYSTEM 'file://" + file +
                               "'>]><rss><channel><item><description>&f;</description></item></channel></rss>");
  EXPECT_THAT(items ? items.value().front().notes : items.error().message, Not(HasSubstr("nobody")));
}

TEST(Feed, TheLargestThatIsFetchedIsReadToItsEnd) {
  std::string deep;
  while (deep.size() < mostFeedBytes / 2) deep += "<a>";
  EXPECT_EQ(faultOf("<rss><channel><item><description>" + deep), "the feed is no XML");
  std::string many = "<rss><channel>";
  std::size_t count = 0;
  for (; many.size() < mostFeedBytes; ++count) many += "<item><enclosure version='1'/></item>";
  EXPECT_THAT(itemsOf(many + "</channel></rss>"), SizeIs(count));
}

}  // namespace
}  // namespace Nimbrel
