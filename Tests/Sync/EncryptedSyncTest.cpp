#include "SyncFixture.h"

#include "Platform/FileSystem.h"

#include <sys/stat.h>

#include <thread>
#include <vector>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Key;
using ::testing::Pair;
using ::testing::SizeIs;
using Testing::someDate;
using Testing::someReferenceDate;
using Testing::TemporaryFolder;

class EncryptedSyncTest : public Testing::SyncFixture {};

TEST_F(EncryptedSyncTest, AnEmptyLibraryAndAnEmptyVaultCompleteWithNothing) {
  EXPECT_EQ(run(), "0 sent, 0 received");
  EXPECT_THAT(filesIn(folder_.path()), IsEmpty());
}

TEST_F(EncryptedSyncTest, FoldersThatAreMissingAreMade) {
  const auto result =
      EncryptedSync::run(folder_.path("new/library"), folder_.path("other/new/vault"), Testing::passphrase);
  ASSERT_TRUE(result);
  EXPECT_EQ(result.value(), SyncResult());
  EXPECT_TRUE(fs::is_directory(folder_.path("new/library")));
  EXPECT_TRUE(fs::is_directory(folder_.path("other/new/vault")));
}

TEST_F(EncryptedSyncTest, ThePicturesGoOutUnderTheDigestsOfTheirPaths) {
  addPicture("2024/2024-01/a.png", "one");
  addPicture("b.JPEG", "two");
  EXPECT_EQ(run(), "2 sent, 0 received");
  // What sha256sum makes of "2024/2024-01/a.png" and "b.JPEG".
  EXPECT_THAT(filesIn(vault()),
              ElementsAre(Key("4358488e5cc1926b391c6eeeccb7d0458102ac2536e6dadf28521e182573f517.nimbrelvault"),
                          Key("f1356674e37019df159a6a6ec589da4c003483f4e0a191d64bf027c0f1b1c0bc.nimbrelvault")));
  EXPECT_EQ(inVault("b.JPEG"), R"({"relativePath":"b.JPEG","modified":721692800,"data":"dHdv"})");
}

TEST_F(EncryptedSyncTest, ThePayloadBearsTheDateWithItsFraction) {
  addPicture("a.png", "one", someDate + 0.25);
  EXPECT_EQ(run(), "1 sent, 0 received");
  EXPECT_EQ(inVault("a.png"), R"({"relativePath":"a.png","modified":721692800.25,"data":"b25l"})");
}

TEST_F(EncryptedSyncTest, WhatIsMissingComesInWithItsDateAndItsFolders) {
  addEnvelope("2024/2024-01/a.png", someReferenceDate + 0.5, "content");
  EXPECT_EQ(run(), "0 sent, 1 received");
  EXPECT_EQ(contentOf(library("2024/2024-01/a.png")), "content");
  EXPECT_EQ(FileSystem::modificationDate(library("2024/2024-01/a.png")), timestamp(someDate + 0.5));
}

TEST_F(EncryptedSyncTest, ASecondRunWithoutChangesMovesNothing) {
  addPicture("a.png", "one", someDate + 0.123456789);
  addPicture("sub/b.gif", "two");
  addEnvelope("c.webp", someReferenceDate, "three");
  EXPECT_EQ(run(), "2 sent, 1 received");
  const auto before = filesIn(folder_.path());
  EXPECT_EQ(run(), "0 sent, 0 received");
  EXPECT_EQ(filesIn(folder_.path()), before);
}

TEST_F(EncryptedSyncTest, WhatHasJustComeInDoesNotGoBackOut) {
  addEnvelope("a.png", someReferenceDate + 1e9, "from the future");
  EXPECT_EQ(run(), "0 sent, 1 received");
}

TEST_F(EncryptedSyncTest, TheSameBytesGoOutDifferentlyEachTime) {
  addPicture("a.png");
  EXPECT_EQ(run(), "1 sent, 0 received");
  const auto before = filesIn(vault());
  fs::remove(vault(before.begin()->first));
  EXPECT_EQ(run(), "1 sent, 0 received");
  const auto after = filesIn(vault());
  EXPECT_EQ(after.begin()->first, before.begin()->first);
  EXPECT_NE(after.begin()->second, before.begin()->second);
}

TEST_F(EncryptedSyncTest, TheNewerSideWinsTheWholeFile) {
  addPicture("ours.png", "new", someDate + 10);
  addEnvelope("ours.png", someReferenceDate, "old");
  addPicture("theirs.png", "old");
  addEnvelope("theirs.png", someReferenceDate + 10, "new");
  EXPECT_EQ(run(), "1 sent, 1 received");
  EXPECT_EQ(contentOf(library("theirs.png")), "new");
  EXPECT_EQ(inVault("ours.png"), Testing::payload("ours.png", "721692810", "new"));
  EXPECT_THAT(filesIn(vault()), SizeIs(2));
}

TEST_F(EncryptedSyncTest, ExactlyASecondApartNothingMoves) {
  addPicture("ours.png", "ours", someDate + 1);
  addEnvelope("ours.png", someReferenceDate, "vault");
  addPicture("theirs.png", "ours");
  addEnvelope("theirs.png", someReferenceDate + 1, "vault");
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(EncryptedSyncTest, ALittleOverASecondNewerGoesOut) {
  addPicture("a.png", "ours", someDate + 1.001);
  addEnvelope("a.png", someReferenceDate, "vault");
  EXPECT_EQ(run(), "1 sent, 0 received");
}

TEST_F(EncryptedSyncTest, ALittleOverASecondNewerComesIn) {
  addPicture("a.png", "ours");
  addEnvelope("a.png", someReferenceDate + 1.001, "vault");
  EXPECT_EQ(run(), "0 sent, 1 received");
  EXPECT_EQ(contentOf(library("a.png")), "vault");
}

TEST_F(EncryptedSyncTest, OfSeveralVaultFilesForOnePlaceTheNewestIsLeft) {
  for (const auto& [first, second] : {std::pair("1", "2"), std::pair("2", "1")}) {
    fs::remove(library("a.png"));
    addToVault(Testing::sealed(Testing::payload("a.png", "100", "old")), std::string(first) + ".nimbrelvault");
    addToVault(Testing::sealed(Testing::payload("a.png", "200", "new")), std::string(second) + ".nimbrelvault");
    ASSERT_TRUE(run().ends_with(" received"));
    EXPECT_EQ(contentOf(library("a.png")), "new");
    fs::remove(vault(Vault::fileName("a.png").value()));
  }
}

TEST_F(EncryptedSyncTest, RecordingsAndOtherFilesStayBehind) {
  addPicture("movie.mov");
  addPicture("notes.txt");
  addPicture("archive.png.zip");
  addPicture("png");
  EXPECT_EQ(run(), "0 sent, 0 received");
  EXPECT_THAT(filesIn(vault()), IsEmpty());
}

TEST_F(EncryptedSyncTest, EveryKindOfPictureGoesOut) {
  for (const char* type : {"png", "jpg", "jpeg", "heic", "tiff", "gif", "webp", "PNG", "HeiC"}) {
    addPicture("a." + std::string(type));
  }
  EXPECT_EQ(run(), "9 sent, 0 received");
}

TEST_F(EncryptedSyncTest, HiddenFilesAndFoldersStayBehind) {
  addPicture(".a.png");
  addPicture(".hidden/b.png");
  addPicture("shown/.c.png");
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(EncryptedSyncTest, AFileThatIsNoPictureComesInAndNeverGoesOut) {
  addEnvelope("notes.txt", someReferenceDate, "text");
  EXPECT_EQ(run(), "0 sent, 1 received");
  EXPECT_EQ(contentOf(library("notes.txt")), "text");
  addPicture("notes.txt", "newer", someDate + 100);
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(EncryptedSyncTest, OtherFilesOfTheVaultFolderAreLeftAlone) {
  const auto file = Testing::sealed(Testing::payload("a.png", "1", "content"));
  for (const char* name : {"a.nimbrelVault", "a.nimbrelvault.bak", ".a.nimbrelvault", "nimbrelvault",
                           "sub/a.nimbrelvault", "a.nimbrelvault~"}) {
    addToVault(file, name);
  }
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(EncryptedSyncTest, AFileRemovedOnOneSideComesBack) {
  addPicture("a.png");
  EXPECT_EQ(run(), "1 sent, 0 received");
  fs::remove(library("a.png"));
  EXPECT_EQ(run(), "0 sent, 1 received");
  fs::remove(vault(Vault::fileName("a.png").value()));
  EXPECT_EQ(run(), "1 sent, 0 received");
}

TEST_F(EncryptedSyncTest, AWrongPassphraseReadsNothingAndOverwritesTheSamePaths) {
  addPicture("a.png", "ours");
  addPicture("b.png", "ours");
  addEnvelope("a.png", someReferenceDate + 100, "theirs");
  addEnvelope("other.png", someReferenceDate, "theirs");
  EXPECT_EQ(run("wrong passphrase"), "2 sent, 0 received");
  EXPECT_EQ(contentOf(library("a.png")), "ours");
  EXPECT_FALSE(fs::exists(library("other.png")));
  EXPECT_EQ(inVault("a.png", "wrong passphrase"), Testing::payload("a.png", "721692800", "ours"));
  EXPECT_EQ(inVault("other.png"), Testing::payload("other.png", std::to_string(someReferenceDate), "theirs"));
}

TEST_F(EncryptedSyncTest, AShortPassphraseTouchesNothing) {
  const auto result = EncryptedSync::run(folder_.path("new"), folder_.path("other"), "sevenxx");
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().message, "Use a passphrase with at least 8 characters");
  EXPECT_FALSE(fs::exists(folder_.path("new")));
  EXPECT_FALSE(fs::exists(folder_.path("other")));
}

TEST_F(EncryptedSyncTest, EmptyAndLargePicturesArriveWhole) {
  // Around the edges of the pieces that are sealed and opened at a time, and beyond.
  const TemporaryFolder other;
  for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{196'607},
                                 std::size_t{196'608}, std::size_t{196'609}, std::size_t{5'000'000}}) {
    std::string content(size, '\0');
    for (std::size_t i = 0; i < size; ++i) content[i] = static_cast<char>(i * 31 + i / 251);
    addPicture(std::to_string(size) + ".png", content);
  }
  EXPECT_EQ(run(), "8 sent, 0 received");
  const auto result = EncryptedSync::run(other.path(), vault(), Testing::passphrase);
  ASSERT_TRUE(result);
  EXPECT_EQ(result.value().imported, 8U);
  EXPECT_EQ(filesIn(other.path()), filesIn(library()));
}

TEST_F(EncryptedSyncTest, TwoLibrariesBecomeEqualThroughOneVault) {
  const TemporaryFolder other;
  const auto runOther = [&] { return EncryptedSync::run(other.path(), vault(), Testing::passphrase).value(); };
  for (int i = 0; i < 100; ++i) {
    addPicture("ours/" + std::to_string(i) + ".png", "ours " + std::to_string(i), someDate + i);
    Testing::setModificationTime(other.write("theirs/" + std::to_string(i) + ".png", "theirs " + std::to_string(i)),
                                 someDate - i);
  }
  EXPECT_EQ(run(), "100 sent, 0 received");
  EXPECT_EQ(runOther(), (SyncResult{.exported = 100, .imported = 100}));
  EXPECT_EQ(run(), "0 sent, 100 received");
  EXPECT_EQ(filesIn(library()), filesIn(other.path()));
  EXPECT_THAT(filesIn(library()), SizeIs(200));
  EXPECT_EQ(run(), "0 sent, 0 received");
  EXPECT_EQ(runOther(), SyncResult());
  addPicture("ours/7.png", "changed", someDate + 1000);
  EXPECT_EQ(run(), "1 sent, 0 received");
  EXPECT_EQ(runOther(), (SyncResult{.exported = 0, .imported = 1}));
  EXPECT_EQ(filesIn(library()), filesIn(other.path()));
}

TEST_F(EncryptedSyncTest, OverlappingRunsLeaveWholeFilesAlone) {
  const TemporaryFolder other;
  for (int i = 0; i < 100; ++i) addPicture(std::to_string(i) + ".png", std::string(10'000, 'x'));
  std::vector<std::string> failures(4);
  std::vector<std::thread> runs;
  for (auto& failure : failures) {
    runs.emplace_back([&] {
      const auto result = EncryptedSync::run(library(), vault(), Testing::passphrase);
      if (!result) failure = result.error().message;
    });
  }
  for (auto& thread : runs) thread.join();
  EXPECT_THAT(failures, ::testing::Each(IsEmpty()));
  EXPECT_THAT(filesIn(vault()), SizeIs(100));
  const auto result = EncryptedSync::run(other.path(), vault(), Testing::passphrase);
  ASSERT_TRUE(result);
  EXPECT_EQ(result.value(), (SyncResult{.exported = 0, .imported = 100}));
}

TEST_F(EncryptedSyncTest, TellsHowFarItIs) {
  addPicture("a.png");
  addPicture("b.png");
  addEnvelope("c.png", someReferenceDate, "content");
  std::vector<std::pair<std::size_t, std::size_t>> told;
  const auto result = EncryptedSync::run(library(), vault(), Testing::passphrase,
                                         [&](std::size_t done, std::size_t all) { told.emplace_back(done, all); });
  ASSERT_TRUE(result);
  EXPECT_THAT(told, ElementsAre(Pair(0, 1), Pair(1, 1), Pair(1, 4), Pair(2, 4), Pair(3, 4), Pair(4, 4)));
}

TEST_F(EncryptedSyncTest, EndsBetweenTwoFilesWhenItIsToStop) {
  for (int i = 0; i < 10; ++i) addPicture(std::to_string(i) + ".png");
  std::stop_source stop;
  const auto result = EncryptedSync::run(
      library(), vault(), Testing::passphrase,
      [&](std::size_t done, std::size_t) {
        if (done == 3) stop.request_stop();
      },
      stop.get_token());
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().message, "It was stopped");
  EXPECT_THAT(filesIn(vault()), SizeIs(3)) << "what is whole is in place, and nothing else";
  EXPECT_EQ(run(), "7 sent, 0 received");
}

}  // namespace
}  // namespace Nimbrel
