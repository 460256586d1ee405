// What can go wrong with folders, files and disks during a run.

#include "SyncFixture.h"

#include "../Linux/RefusedCalls.h"
#include "../Linux/Unprivileged.h"
#include "Platform/FileSystem.h"
#include "Support/SmallDisk.h"

#include <sys/stat.h>
#include <sys/syscall.h>

#include <cerrno>
#include <fstream>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Key;
using Testing::payload;
using ::testing::SizeIs;
using Testing::someReferenceDate;
using Testing::Unprivileged;

class SyncTrouble : public Testing::SyncFixture {
 protected:
  void forbid(const std::string& path, unsigned permissions) const { ASSERT_EQ(::chmod(path.c_str(), permissions), 0); }
  /// The names of all files, without those that are whole: for what a failure may have left.
  [[nodiscard]] static std::size_t hiddenFilesIn(const std::string& folder) {
    std::size_t count = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (entry.path().filename().native().starts_with('.')) ++count;
    }
    return count;
  }
};

TEST_F(SyncTrouble, AFolderNamedLikeAPictureEndsTheRun) {
  addPicture("a.png");
  fs::create_directory(library("b.png"));
  addPicture("c.png");
  EXPECT_EQ(run(), "Cannot read b.png: It is not a file");
  EXPECT_THAT(filesIn(vault()), ElementsAre(Key(Vault::fileName("a.png").value())))
      << "what was written until then stays";
}

TEST_F(SyncTrouble, APipeNamedLikeAPictureEndsTheRunAndIsNotWaitedFor) {
  ASSERT_EQ(::mkfifo(library("a.png").c_str(), 0600), 0);
  EXPECT_EQ(run(), "Cannot read a.png: It is not a file");
}

TEST_F(SyncTrouble, AFolderNamedLikeAVaultFileEndsTheRun) {
  fs::create_directory(vault("a.nimbrelvault"));
  EXPECT_EQ(run(), "Cannot read a.nimbrelvault: It is not a file");
}

TEST_F(SyncTrouble, AnUnreadableVaultFileEndsTheRunAndWhatCameInStays) {
  addToVault(Testing::sealed(payload("a.png", "1000", "content")), "1.nimbrelvault");
  addToVault("locked", "2.nimbrelvault");
  addToVault(Testing::sealed(payload("c.png", "1000", "content")), "3.nimbrelvault");
  forbid(vault("2.nimbrelvault"), 0);
  const Unprivileged unprivileged;
  EXPECT_EQ(run(), "Cannot read 2.nimbrelvault: Permission denied");
  EXPECT_THAT(filesIn(library()), ElementsAre(Key("a.png")));
}

TEST_F(SyncTrouble, AnUnreadablePictureEndsTheRun) {
  forbid(addPicture("sub/a.png"), 0);
  const Unprivileged unprivileged;
  EXPECT_EQ(run(), "Cannot read sub/a.png: Permission denied");
  EXPECT_THAT(filesIn(vault()), IsEmpty());
}

TEST_F(SyncTrouble, AVaultThatCannotBeListedCountsAsEmpty) {
  addPicture("a.png");
  addEnvelope("b.png", someReferenceDate, "content");
  forbid(vault(), 0300);
  {
    const Unprivileged unprivileged;
    EXPECT_EQ(run(), "1 sent, 0 received");
  }
  forbid(vault(), 0700);
  EXPECT_THAT(filesIn(vault()), SizeIs(2));
}

TEST_F(SyncTrouble, ALibraryThatCannotBeListedSendsNothing) {
  addPicture("a.png");
  addEnvelope("b.png", someReferenceDate, "content");
  forbid(library(), 0300);
  {
    const Unprivileged unprivileged;
    EXPECT_EQ(run(), "0 sent, 1 received");
  }
  forbid(library(), 0700);
}

TEST_F(SyncTrouble, AFolderThatCannotBeMadeEndsTheRunBeforeAnything) {
  const auto file = folder_.write("file", "");
  const auto failure = EncryptedSync::run(file + "/library", folder_.path("new"), Testing::passphrase);
  ASSERT_FALSE(failure);
  EXPECT_EQ(failure.error().message,
            "Cannot make the folder " + file + "/library: A file stands where a folder is needed");
  EXPECT_FALSE(fs::exists(folder_.path("new"))) << "the library comes first";
  const auto second = EncryptedSync::run(library(), file, Testing::passphrase);
  ASSERT_FALSE(second);
  EXPECT_EQ(second.error().message, "Cannot make the folder " + file + ": A file stands where a folder is needed");
}

TEST_F(SyncTrouble, AParentFolderThatCannotBeMadeEndsTheRun) {
  fs::create_directory(library("locked"));
  forbid(library("locked"), 0500);
  addEnvelope("locked/new/a.png", someReferenceDate, "content");
  const Unprivileged unprivileged;
  EXPECT_EQ(run(), "Cannot make the folder " + library("locked/new") + ": Permission denied");
}

TEST_F(SyncTrouble, ATargetThatCannotBeWrittenEndsTheRun) {
  fs::create_directory(library("locked"));
  forbid(library("locked"), 0500);
  addEnvelope("locked/a.png", someReferenceDate, "content");
  const Unprivileged unprivileged;
  EXPECT_EQ(run(), "Cannot write locked/a.png: Permission denied");
}

TEST_F(SyncTrouble, AReadOnlyVaultIsReadAndThenEndsTheRun) {
  addPicture("a.png");
  addEnvelope("b.png", someReferenceDate, "content");
  const auto outcome = Testing::onReadOnlyDisk(vault(), [&] {
    if (run() != "Cannot write to the vault: The disk is read-only") return 1;
    return fs::exists(library("b.png")) ? 0 : 2;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(SyncTrouble, AReadOnlyVaultIsNoTroubleWithNothingToSend) {
  addEnvelope("b.png", someReferenceDate, "content");
  const auto outcome = Testing::onReadOnlyDisk(vault(), [&] { return run() == "0 sent, 1 received" ? 0 : 1; });
  EXPECT_EQ(outcome, 0);
}

TEST_F(SyncTrouble, AFullVaultKeepsWhatIsWholeAndNothingElse) {
  for (int i = 0; i < 9; ++i) addPicture(std::to_string(i) + ".png", std::string(100 << 10, 'x'));
  const auto outcome = Testing::onSmallDisk(vault(), 512 << 10, [&] {
    if (run() != "Cannot write to the vault: No space left on the disk") return 1;
    const auto files = filesIn(vault());
    if (files.size() != 3 || hiddenFilesIn(vault()) != 0) return 2;
    for (const auto& [name, content] : files) {
      if (!Testing::unsealed(content)) return 3;
    }
    return 0;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(SyncTrouble, AFullLibraryKeepsWhatIsWholeAndNothingElse) {
  const std::string content(100 << 10, 'x');
  for (int i = 0; i < 9; ++i) addEnvelope(std::to_string(i) + ".png", someReferenceDate, content);
  const auto outcome = Testing::onSmallDisk(library(), 512 << 10, [&] {
    if (!run().ends_with(".png: No space left on the disk")) return 1;
    const auto files = filesIn(library());
    if (files.empty() || files.size() > 5 || hiddenFilesIn(library()) != 0) return 2;
    for (const auto& file : files) {
      if (file.second != content) return 3;
    }
    return 0;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(SyncTrouble, AVaultThatVanishesHalfWayEndsTheRun) {
  for (int i = 0; i < 10; ++i) addPicture(std::to_string(i) + ".png");
  const auto result = EncryptedSync::run(library(), vault(), Testing::passphrase, [&](std::size_t done, std::size_t) {
    if (done == 5) fs::remove_all(vault());
  });
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().message, "Cannot write to the vault: The folder is not there");
  EXPECT_THAT(filesIn(library()), SizeIs(10));
}

TEST_F(SyncTrouble, AVaultFileThatVanishesBeforeItIsReadEndsTheRun) {
  addToVault(Testing::sealed(payload("a.png", "1000", "content")), "1.nimbrelvault");
  addToVault(Testing::sealed(payload("b.png", "1000", "content")), "2.nimbrelvault");
  const auto result = EncryptedSync::run(library(), vault(), Testing::passphrase, [&](std::size_t done, std::size_t) {
    if (done == 1) fs::remove(vault("2.nimbrelvault"));
  });
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().message, "Cannot read 2.nimbrelvault: The file is not there");
  EXPECT_THAT(filesIn(library()), ElementsAre(Key("a.png")));
}

TEST_F(SyncTrouble, FilesThatWaitForTheirNamesAndVanishEndTheRunAndTheOthersArrive) {
  for (int i = 0; i < 10; ++i) addEnvelope("sub/" + std::to_string(i) + ".png", someReferenceDate, "content");
  const auto result = EncryptedSync::run(library(), vault(), Testing::passphrase, [&](std::size_t done, std::size_t) {
    if (done == 5) fs::remove_all(library());
  });
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().message, "Cannot write to the library: The file is not there");
  EXPECT_THAT(filesIn(library()), SizeIs(5)) << "the folders were made anew for those that came later";
  EXPECT_EQ(run(), "0 sent, 5 received");
  EXPECT_THAT(filesIn(library()), SizeIs(10));
}

TEST_F(SyncTrouble, AFailureOfManyFilesTogetherIsToldOfNoneOfThem) {
  // As many as are flushed together, so that they are when the last of them has come.
  for (int i = 0; i < 64; ++i) addEnvelope(std::to_string(i) + ".png", someReferenceDate, "content");
  const auto outcome = Testing::withRefusedCalls({{SYS_fsync, EIO}}, [&] {
    return run() == "Cannot write to the library: The disk reported an error" && filesIn(library()).empty() ? 0 : 1;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(SyncTrouble, AFileWhoseDateCannotBeSetComesInWithThePresentOne) {
  addEnvelope("notes.txt", someReferenceDate, "content");
  const auto outcome = Testing::withRefusedCalls({{SYS_utimensat, EPERM}}, [&] {
    if (run() != "0 sent, 1 received") return 1;
    return contentOf(library("notes.txt")) == "content" ? 0 : 2;
  });
  EXPECT_EQ(outcome, 0);
  EXPECT_GT(FileSystem::modificationDate(library("notes.txt")), timestamp(Testing::someDate));
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncTrouble, APictureThatIsWrittenToWhileItIsReadWaitsForTheNextRun) {
  addEnvelope("a.png", someReferenceDate, "old");
  addPicture("a.png", "new", Testing::someDate + 100);
  // The vault file gets the permissions of its predecessor once the picture is open and before it is read.
  const auto write = [&]() -> long {
    std::ofstream(library("a.png"), std::ios::app) << "er";
    return 0;
  };
  const auto outcome =
      Testing::withAnsweredCall(SYS_fchmod, write, [&] { return run() == "0 sent, 0 received" ? 0 : 1; });
  EXPECT_EQ(outcome, 0);
  EXPECT_EQ(contentOf(library("a.png")), "newer");
  EXPECT_EQ(inVault("a.png"), payload("a.png", std::to_string(someReferenceDate), "old"));
  EXPECT_THAT(filesIn(vault()), SizeIs(1));
  EXPECT_EQ(run(), "1 sent, 0 received");
  EXPECT_THAT(inVault("a.png"), ::testing::HasSubstr(Testing::base64("newer")));
}

TEST_F(SyncTrouble, WhatTheUserSavesWhileTheVaultsCopyWaitsIsNotOverwritten) {
  addEnvelope("a.png", someReferenceDate, "vault");
  addEnvelope("b.png", someReferenceDate, "vault");
  const auto result =
      EncryptedSync::run(library(), vault(), Testing::passphrase, [&](std::size_t done, std::size_t all) {
        if (done == 2 && all == 2) addPicture("a.png", "saved just now", Testing::someDate + 1000);
      });
  ASSERT_TRUE(result) << result.error().message;
  EXPECT_EQ(result.value(), (SyncResult{.exported = 1, .imported = 1}));
  EXPECT_EQ(contentOf(library("a.png")), "saved just now");
}

}  // namespace
}  // namespace Nimbrel
