#include "Foundation/FilePath.h"

#include "Support/FakePasteboard.h"
#include "Support/FakeWorkspace.h"
#include "Support/Pictures.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::FakePasteboard;
using Testing::FakeWorkspace;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using Testing::StoreHome;
using ::testing::UnorderedElementsAre;

class ActionsTest : public ::testing::Test {
 protected:
  ActionsTest() {
    Services services;
    auto pasteboard = std::make_unique<FakePasteboard>();
    auto workspace = std::make_unique<FakeWorkspace>();
    pasteboard_ = pasteboard.get();
    workspace_ = workspace.get();
    services.pasteboard = std::move(pasteboard);
    services.workspace = std::move(workspace);
    store_ = home_.open(ProcessRole::tool, std::move(services));
    shot_.name = "Screenshot 1.png";
    shot_.path = home_.desktop(shot_.name);
    pasteboard_->text = "before";
  }

  [[nodiscard]] std::vector<std::string> cacheFiles() const {
    std::vector<std::string> names;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(home_.folders().caches, none)) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }

  StoreHome home_;
  FakePasteboard* pasteboard_ = nullptr;
  FakeWorkspace* workspace_ = nullptr;
  std::unique_ptr<Store> store_;
  Shot shot_;
};

TEST_F(ActionsTest, CopyingTheFileOffersItAndNothingElse) {
  store_->copyFile(shot_);
  EXPECT_EQ(pasteboard_->file, shot_.path);
  EXPECT_FALSE(pasteboard_->text);
  EXPECT_EQ(store_->status(), "Copied file");
}

TEST_F(ActionsTest, TheFileIsHandedToWhomeverTheUserNames) {
  workspace_->openers = {{.id = "viewer", .name = "Viewer", .icon = {}}};
  workspace_->sendersThere = {{.id = "sender", .name = "Sender", .icon = {}}};
  EXPECT_EQ(store_->openers(shot_), workspace_->openers);
  EXPECT_EQ(store_->senders(), workspace_->sendersThere);
  store_->openWith(shot_, "viewer");
  store_->send(shot_, "sender");
  store_->mail(shot_);
  EXPECT_THAT(workspace_->taken,
              ElementsAre(::testing::Pair("viewer", shot_.path), ::testing::Pair("sender", shot_.path)));
  EXPECT_THAT(workspace_->mailed, ElementsAre(shot_.path));
  EXPECT_EQ(store_->status(), "");
}

TEST_F(ActionsTest, OpeningAsksForTheFile) {
  store_->open(shot_);
  EXPECT_THAT(workspace_->files, ElementsAre(shot_.path));
  EXPECT_EQ(store_->status(), "");
}

TEST_F(ActionsTest, AnAddressIsOpenedAsItStands) {
  store_->openURL("https://example.org/a%20b");
  EXPECT_THAT(workspace_->urls, ElementsAre("https://example.org/a%20b"));
  EXPECT_EQ(store_->status(), "");
}

TEST_F(ActionsTest, RevealingAsksForTheFile) {
  store_->reveal(shot_);
  EXPECT_THAT(workspace_->revealed, ElementsAre(shot_.path));
  EXPECT_EQ(store_->status(), "");
}

TEST_F(ActionsTest, AnImageIsCopiedAsAPictureAlone) {
  const auto picture = Testing::picture(64, 48);
  Testing::writePicture(picture, shot_.path);
  store_->copyImage(shot_);
  ASSERT_TRUE(pasteboard_->picture);
  EXPECT_EQ(pasteboard_->picture->convertToFormat(QImage::Format_ARGB32),
            picture.convertToFormat(QImage::Format_ARGB32));
  EXPECT_EQ(pasteboard_->text, std::nullopt);
  EXPECT_EQ(store_->status(), "Copied image");
}

TEST_F(ActionsTest, CopyingADeletedFileLeavesPasteboardAndStatus) {
  store_->copyString("kept", "Text");
  store_->copyImage(shot_);
  EXPECT_EQ(pasteboard_->text, "kept");
  EXPECT_EQ(store_->status(), "Copied text");
}

TEST_F(ActionsTest, CopyingAFileThatIsNoPictureLeavesPasteboardAndStatus) {
  home_.addFile(shot_.path);
  store_->copyImage(shot_);
  EXPECT_EQ(pasteboard_->text, "before");
  EXPECT_EQ(store_->status(), "");
}

TEST_F(ActionsTest, RecognisedTextIsCopied) {
  shot_.ocr = "Tea\nfor two ☕";
  store_->copyText(shot_);
  EXPECT_EQ(pasteboard_->text, shot_.ocr);
  EXPECT_EQ(store_->status(), "Copied text");
}

TEST_F(ActionsTest, CopyingNoTextEmptiesThePasteboardAndSaysSo) {
  store_->copyText(shot_);
  EXPECT_EQ(pasteboard_->text, std::nullopt);
  EXPECT_EQ(pasteboard_->writes, 1);
  EXPECT_EQ(store_->status(), "No text recognized");
}

TEST_F(ActionsTest, WhatWasCopiedIsToldInLowerCase) {
  store_->copyString("ann@example.com", "E-Mail Ärger");
  EXPECT_EQ(pasteboard_->text, "ann@example.com");
  EXPECT_EQ(store_->status(), "Copied e-mail ärger");
}

TEST_F(ActionsTest, ATableIsCopiedRowByRow) {
  shot_.ocr = "Menu\nTea  3.20\n\n   Coffee   2.80  \nThank you";
  store_->copyAsTable(shot_);
  EXPECT_EQ(pasteboard_->text, "Tea\t3.20\nCoffee\t2.80");
  EXPECT_EQ(store_->status(), "Copied table");
}

TEST_F(ActionsTest, WithoutRowsThePasteboardStaysAsItWas) {
  shot_.ocr = "Thank you\n   indeed";
  store_->copyAsTable(shot_);
  EXPECT_EQ(pasteboard_->text, "before");
  EXPECT_EQ(pasteboard_->writes, 0);
  EXPECT_EQ(store_->status(), "No table-like rows found");
}

TEST_F(ActionsTest, ATranslationIsOpenedInTheBrowser) {
  shot_.ocr = "Guten Tag";
  store_->translateText(shot_);
  EXPECT_THAT(workspace_->urls,
              ElementsAre(MatchesRegex("https://[^/]+/\\?sl=auto&tl=en&text=Guten%20Tag&op=translate")));
  EXPECT_EQ(store_->status(), "");
}

TEST_F(ActionsTest, WithoutTextThereIsNothingToTranslate) {
  store_->translateText(shot_);
  EXPECT_THAT(workspace_->urls, IsEmpty());
  EXPECT_EQ(store_->status(), "No text to translate");
}

TEST_F(ActionsTest, ACalendarEventIsWrittenAndOpened) {
  shot_.ocr = "Lunch, then tea\nok";
  store_->createCalendarEvent(shot_, timestamp(1'774'999'800));
  ASSERT_EQ(workspace_->files.size(), 1U);
  const auto& path = workspace_->files.front();
  EXPECT_THAT(cacheFiles(), ElementsAre(MatchesRegex("Nimbrel Event [0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.ics")));
  EXPECT_EQ(path, home_.folders().caches + "/" + cacheFiles().front());
  const auto text = Testing::contentOf(path);
  EXPECT_THAT(text, HasSubstr("\nDTSTAMP:20260308T200000Z\nDTSTART:20260331T233000Z\nDTEND:20260401T003000Z\n"));
  EXPECT_THAT(text, HasSubstr("\nSUMMARY:Lunch\\, then tea\nDESCRIPTION:Created from Screenshot 1.png\n"));
  EXPECT_EQ(store_->status(), "Opened event in Calendar");
}

TEST_F(ActionsTest, TwoCalendarEventsAreTwo) {
  store_->createCalendarEvent(shot_, home_.now);
  store_->createCalendarEvent(shot_, home_.now);
  ASSERT_EQ(workspace_->files.size(), 2U);
  EXPECT_NE(Testing::contentOf(workspace_->files[0]), Testing::contentOf(workspace_->files[1]));
}

TEST_F(ActionsTest, CalendarEventsOfDaysBeforeAreTakenAwayWithTheNext) {
  const auto lastDay = secondsSince1970(home_.now) - 24 * 3600;
  store_->createCalendarEvent(shot_, home_.now);
  Testing::setModificationTime(workspace_->files.front(), lastDay - 1);
  home_.addFile(home_.folders().caches + "/Nimbrel Event of mine.txt");
  Testing::setModificationTime(home_.folders().caches + "/Nimbrel Event of mine.txt", lastDay - 1);
  store_->createCalendarEvent(shot_, home_.now);
  Testing::setModificationTime(workspace_->files[1], lastDay + 1);
  store_->createCalendarEvent(shot_, home_.now);
  EXPECT_THAT(cacheFiles(),
              UnorderedElementsAre("Nimbrel Event of mine.txt", FilePath::lastComponent(workspace_->files[1]),
                                   FilePath::lastComponent(workspace_->files[2])));
}

TEST_F(ActionsTest, WithoutAPlaceForItThereIsNoCalendarEvent) {
  home_.addFile(home_.folders().caches);
  store_->createCalendarEvent(shot_, home_.now);
  EXPECT_THAT(workspace_->files, IsEmpty());
  EXPECT_EQ(store_->status(), "Could not create calendar event");
}

}  // namespace
}  // namespace Nimbrel
