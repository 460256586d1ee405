// Links in library and vault, which must not lead out of either.

#include "SyncFixture.h"

#include "Sync/ConfinedFolder.h"

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::payload;
using Testing::sealed;
using Testing::someReferenceDate;

class SyncLinks : public Testing::SyncFixture {};

TEST_F(SyncLinks, ALinkOutOfTheLibraryIsNotWrittenThrough) {
  folder_.write("outside/file.png", "untouched");
  Testing::setModificationTime(folder_.path("outside/file.png"), 0);
  link(folder_.path("outside"), library("folder"));
  link("../outside", library("relative"));
  link(folder_.path("outside/file.png"), library("file.png"));
  for (const char* path : {"folder/file.png", "folder/new.png", "folder/new/b.png", "relative/new.png", "file.png",
                           "folder//./new.png", "folder/"}) {
    addPath(path);
    EXPECT_EQ(run(), "0 sent, 0 received") << path;
  }
  EXPECT_THAT(filesIn(folder_.path("outside")), ElementsAre(::testing::Pair("file.png", "untouched")));
  EXPECT_TRUE(fs::is_symlink(library("file.png")));
}

TEST_F(SyncLinks, ATooLongNameBehindALinkOutOfTheLibraryMakesNoFolderThere) {
  folder_.makeFolder("outside");
  link(folder_.path("outside"), library("folder"));
  addPath("folder/new/" + std::string(5000, 'x'));
  EXPECT_THAT(run(), ::testing::EndsWith("…: The name is too long"));
  EXPECT_TRUE(fs::is_empty(folder_.path("outside")));
}

TEST_F(SyncLinks, ALinkThatLeadsToNothingIsNotWrittenThrough) {
  link(folder_.path("missing"), library("folder"));
  link(folder_.path("missing.png"), library("file.png"));
  link("loop.png", library("loop.png"));
  for (const char* path : {"folder/a.png", "file.png", "loop.png"}) {
    addPath(path);
    EXPECT_EQ(run(), "0 sent, 0 received") << path;
  }
  EXPECT_FALSE(fs::exists(folder_.path("missing")));
  EXPECT_FALSE(fs::exists(folder_.path("missing.png")));
}

TEST_F(SyncLinks, LinksWithinTheLibraryAreFollowed) {
  fs::create_directory(library("real"));
  link(library("real"), library("absolute"));
  link("real", library("relative"));
  addToVault(sealed(payload("absolute/a.png", "1000", "one")), "1.nimbrelvault");
  addToVault(sealed(payload("relative/b.png", "1000", "two")), "2.nimbrelvault");
  EXPECT_EQ(run(), "2 sent, 2 received");
  EXPECT_EQ(contentOf(library("real/a.png")), "one");
  EXPECT_EQ(contentOf(library("real/b.png")), "two");
}

TEST_F(SyncLinks, ALibraryBehindALinkIsOneLikeAnyOther) {
  addPicture("a.png");
  link(library(), folder_.path("link"));
  addEnvelope("b/c.png", someReferenceDate, "content");
  const auto result = EncryptedSync::run(folder_.path("link"), vault(), Testing::passphrase);
  ASSERT_TRUE(result) << result.error().message;
  EXPECT_EQ(result.value(), (SyncResult{.exported = 1, .imported = 1}));
  EXPECT_EQ(contentOf(library("b/c.png")), "content");
}

TEST_F(SyncLinks, PicturesBehindLinksOutOfTheLibraryAreNotSent) {
  folder_.write("outside/a.png", "private");
  link(folder_.path("outside/a.png"), library("a.png"));
  link(folder_.path("outside"), library("folder"));
  link(folder_.path("outside"), library("folder.png"));
  link("nothing.png", library("nowhere.png"));
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncLinks, APictureBehindALinkWithinTheLibraryIsSent) {
  addPicture("real.txt", "content");
  link("real.txt", library("a.png"));
  EXPECT_EQ(run(), "1 sent, 0 received");
  EXPECT_EQ(inVault("a.png"), payload("a.png", "721692800", "content"));
}

TEST_F(SyncLinks, AVaultFileBehindALinkOutOfTheVaultIsPassedOver) {
  folder_.write("outside", sealed(payload("a.png", "1000", "content")));
  link(folder_.path("outside"), vault("link.nimbrelvault"));
  link("nothing", vault("nowhere.nimbrelvault"));
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncLinks, AVaultFileBehindALinkWithinTheVaultIsRead) {
  addToVault(sealed(payload("a.png", "1000", "content")), "real");
  link("real", vault("link.nimbrelvault"));
  EXPECT_EQ(run(), "0 sent, 1 received");
}

TEST_F(SyncLinks, ALinkInTheVaultGivesWayToWhatGoesOut) {
  const auto outside = folder_.write("outside", "untouched");
  addPicture("a.png");
  link(outside, vault(Vault::fileName("a.png").value()));
  EXPECT_EQ(run(), "1 sent, 0 received");
  EXPECT_EQ(contentOf(outside), "untouched");
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncLinks, HoweverManyFoldersAreNamedEachIsLookedAt) {
  link(folder_.path(), library("outside"));
  ConfinedFolder folder(library());
  for (int i = 0; i < 20'000; ++i) {
    const auto name = std::to_string(i);
    ASSERT_EQ(folder.location(name + "/a").value(), library(name + "/a"));
    ASSERT_EQ(folder.location("outside/" + name + "/a").value(), std::nullopt);
  }
}

}  // namespace
}  // namespace Nimbrel
