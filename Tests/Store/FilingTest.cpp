#include "FilingFixture.h"

#include <gmock/gmock.h>

#include <QSignalSpy>

#include <filesystem>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using Testing::namesOf;
using ::testing::UnorderedElementsAre;

constexpr double secondOfMarch2026 = 1'772'452'800;

class Filing : public Testing::FilingFixture {};

TEST_F(Filing, MovesAShotWithoutTextAndSourceUnderItsOwnName) {
  const auto path = addShot("Screenshot 1.png");
  const auto store = openScanned();
  store->file(store->shots());
  const auto target = home_.inLibrary("2026/2026-03/Screenshot 1.png");
  ASSERT_EQ(store->shots().size(), 1U);
  EXPECT_EQ(store->shots().front()->path, target);
  EXPECT_TRUE(store->shots().front()->filed);
  EXPECT_EQ(Testing::contentOf(target), "no picture");
  EXPECT_FALSE(fs::exists(path)) << "moved, not copied";
  EXPECT_EQ(store->status(), "Filed 1 shot into the library");
}

TEST_F(Filing, NamesAShotOfAKnownApplicationWithoutText) {
  addShot("Screenshot 1.png");
  const auto store = openScanned();
  attribute(*store, "Screenshot 1.png", "Safari");
  store->file(store->shots());
  EXPECT_EQ(store->shots().front()->path, home_.inLibrary("2026/2026-03/Safari — 2026-03-02.png"));
  EXPECT_EQ(store->shots().front()->name, "Safari — 2026-03-02.png");
}

TEST_F(Filing, NamesAShotAfterApplicationAndTitle) {
  addShot("Screenshot 1.png");
  const auto store = openScanned();
  attribute(*store, "Screenshot 1.png", "Safari");
  read(*store, "Screenshot 1.png", "Hi\nInvoice for March\n12");
  store->file(store->shots());
  EXPECT_THAT(namesOf(store->shots()), ElementsAre("Safari — Invoice for March — 2026-03-02.png"));
}

TEST_F(Filing, AShotFiledUnderANewNameIsFoundByIt) {
  addShot("Screenshot 1.png");
  const auto store = openScanned();
  attribute(*store, "Screenshot 1.png", "Safari");
  store->file(store->shots());
  EXPECT_EQ(store->database().searchIDs("safari 2026-03-02")->size(), 1U);
  EXPECT_TRUE(store->database().searchIDs("screenshot")->empty());
}

TEST_F(Filing, CutsATitleOf60Characters) {
  addShot("Screenshot 1.png");
  const auto store = openScanned();
  read(*store, "Screenshot 1.png", std::string(60, 'q'));
  EXPECT_EQ(store->libraryName(*store->shots().front()), std::string(44, 'q') + " — 2026-03-02.png");
}

TEST_F(Filing, ASlashInATitleMakesNoFolder) {
  addShot("Screenshot 1.png");
  const auto store = openScanned();
  read(*store, "Screenshot 1.png", "Profit/Loss");
  store->file(store->shots());
  EXPECT_TRUE(fs::exists(home_.inLibrary("2026/2026-03/Profit Loss — 2026-03-02.png")));
}

TEST_F(Filing, ASecondShotOfTheSameTitleAndDayIsNumbered) {
  addShot("Screenshot 1.png");
  addShot("Screenshot 2.png");
  const auto store = openScanned();
  read(*store, "Screenshot 1.png", "Profit");
  read(*store, "Screenshot 2.png", "Profit");
  store->fileAll();
  EXPECT_THAT(namesOf(store->shots()), UnorderedElementsAre("Profit — 2026-03-02.png", "Profit — 2026-03-02 2.png"));
  EXPECT_EQ(store->status(), "Filed 2 shots into the library");
}

TEST_F(Filing, ANumberFitsIntoTheLongestName) {
  const auto store = home_.open(ProcessRole::tool);
  const std::string name = std::string(251, 'n') + ".png";
  home_.addFile(home_.inLibrary("2026/2026-03/" + name));
  store->importFiles({addShot(name)});
  store->file(store->shots());
  EXPECT_THAT(namesOf(store->shots()), ElementsAre(std::string(249, 'n') + " 2.png"));
  EXPECT_TRUE(fs::exists(store->shots().front()->path));
}

TEST_F(Filing, KeepsTheNameWhenRenamingIsOff) {
  addShot("Screenshot 1.png");
  const auto store = openScanned();
  attribute(*store, "Screenshot 1.png", "Safari");
  store->settings().renameOnFile.set(false);
  store->file(store->shots());
  EXPECT_THAT(namesOf(store->shots()), ElementsAre("Screenshot 1.png"));
}

TEST_F(Filing, OnlyAPathWithoutExtensionFallsBackToPng) {
  const auto store = home_.open(ProcessRole::tool);
  Shot shot;
  shot.date = timestamp(secondOfMarch2026);
  shot.ocr = "Profit";
  shot.path = "/d/recording.MP4";
  EXPECT_EQ(store->libraryName(shot), "Profit — 2026-03-02.MP4");
  shot.path = "/d/recording";
  EXPECT_EQ(store->libraryName(shot), "Profit — 2026-03-02.png");
}

TEST_F(Filing, NeitherMovesNorCountsAShotThatIsFiled) {
  addShot("Screenshot 1.png");
  home_.addFile(home_.inLibrary("a.png"));
  const auto store = openScanned();
  store->file(store->shots());
  EXPECT_TRUE(fs::exists(home_.inLibrary("a.png")));
  EXPECT_EQ(store->status(), "Filed 1 shot into the library");
}

TEST_F(Filing, WithNothingToFileNothingIsSaid) {
  home_.addFile(home_.inLibrary("a.png"));
  const auto store = openScanned();
  store->importFiles({});
  store->file(store->shots());
  store->file({});
  EXPECT_EQ(store->status(), "Nothing new to import");
}

TEST_F(Filing, TellsOfItsChangesOnce) {
  addShot("Screenshot 1.png");
  addShot("Screenshot 2.png");
  const auto store = openScanned();
  const QSignalSpy shots(store.get(), &Store::shotsChanged);
  const QSignalSpy status(store.get(), &Store::statusChanged);
  store->fileAll();
  EXPECT_EQ(shots.count(), 1);
  EXPECT_EQ(status.count(), 1);
}

TEST_F(Filing, NoteTagsAndTextComeAlong) {
  addShot("Screenshot 1.png");
  const auto store = openScanned();
  const auto id = store->shots().front()->id;
  store->database().setNote(id, "a note");
  store->database().setTags(id, {"red"});
  store->file(store->shots());
  const auto shot = store->shots().front();
  EXPECT_EQ(shot->id, id);
  EXPECT_EQ(shot->note, "a note");
  EXPECT_THAT(shot->tags, ElementsAre("red"));
}

TEST_F(Filing, ManyShotsAreFiledInOrder) {
  for (int i = 0; i < 300; ++i) addShot("Screenshot " + std::to_string(i) + ".png");
  const auto store = openScanned();
  for (const auto& shot : store->shots()) store->database().setOCR(shot->id, "Profit", {});
  store->reload();
  store->fileAll();
  EXPECT_EQ(store->status(), "Filed 300 shots into the library");
  EXPECT_TRUE(fs::exists(home_.inLibrary("2026/2026-03/Profit — 2026-03-02 300.png")));
  EXPECT_EQ(store->inboxCount(), 0U);
}

}  // namespace
}  // namespace Nimbrel
