// What stands in a vault that Nimbrel has not written, or not like that.

#include "SyncFixture.h"

#include "Platform/FileSystem.h"

#include <fstream>
#include <vector>

namespace Nimbrel {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Key;
using Testing::payload;
using Testing::sealed;
using ::testing::SizeIs;
using Testing::someDate;
using Testing::someReferenceDate;

class SyncForgery : public Testing::SyncFixture {
 protected:
  void addPayload(const std::string& text) const { addToVault(sealed(text)); }
};

TEST_F(SyncForgery, AnyChangedByteMakesAFileUnreadableAndTheRunGoesOn) {
  const auto good = sealed(payload("a.png", "1000", "x"));
  addEnvelope("zz.png", someReferenceDate, "good");
  for (std::size_t i = 0; i < good.size(); ++i) {
    auto bad = good;
    bad[i] = static_cast<char>(bad[i] ^ 0x40);
    addToVault(bad, std::to_string(i) + ".nimbrelvault");
  }
  EXPECT_EQ(run(), "0 sent, 1 received");
  EXPECT_THAT(filesIn(library()), ElementsAre(Key("zz.png")));
}

TEST_F(SyncForgery, AFileCutShortAnywhereIsPassedOver) {
  const auto good = sealed(payload("a.png", "1000", "x"));
  for (std::size_t length = 0; length < good.size(); ++length) {
    addToVault(good.substr(0, length), std::to_string(length) + ".nimbrelvault");
  }
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncForgery, AFileWithMoreBehindItIsPassedOver) {
  addToVault(sealed(payload("a.png", "1000", "x")) + "x");
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncForgery, TwentyEightGenuineBytesHoldNoEnvelope) {
  const auto empty = sealed("");
  ASSERT_EQ(empty.size(), 28U);
  addToVault(empty);
  addToVault(std::string(28, '\0'), "zeros.nimbrelvault");
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncForgery, AForeignFileIsPassedOver) {
  addToVault("this is a text that somebody has called a vault file");
  addToVault(sealed(payload("a.png", "1000", "x"), "another passphrase"), "other.nimbrelvault");
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncForgery, AFileLongerThanASealCanBeIsPassedOverUnread) {
  std::ofstream(vault("huge.nimbrelvault")).put('x');
  std::error_code error;
  fs::resize_file(vault("huge.nimbrelvault"), std::uintmax_t{1} << 40, error);
  ASSERT_FALSE(error) << error.message();
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncForgery, GenuineButUselessPayloadsArePassedOver) {
  int number = 0;
  for (const std::string text :
       {R"()", R"(null)", R"([])", R"({})", R"(not json)", R"({"relativePath":"a.png","modified":1})",
        R"({"relativePath":"a.png","data":"eA=="})", R"({"modified":1,"data":"eA=="})",
        R"({"relativePath":1,"modified":1,"data":"eA=="})", R"({"relativePath":"a.png","modified":"1","data":"eA=="})",
        R"({"relativePath":"a.png","modified":true,"data":"eA=="})",
        R"({"relativePath":"a.png","modified":null,"data":"eA=="})",
        R"({"relativePath":"a.png","modified":1,"data":[120]})", R"({"relativePath":"a.png","modified":1,"data":null})",
        R"({"relativePath":"a.png","modified":1,"data":"eA="})",
        R"({"relativePath":"a.png","modified":1,"data":"e A=="})",
        R"({"relativePath":"a.png","modified":1,"data":"eA=="}x)",
        R"({"relativePath":"a.png","modified":1e999,"data":"eA=="})",
        R"({"relativePath":"a.png","modified":NaN,"data":"eA=="})"}) {
    addToVault(sealed(text), std::to_string(number++) + ".nimbrelvault");
  }
  EXPECT_EQ(run(), "0 sent, 0 received");
  EXPECT_THAT(filesIn(library()), IsEmpty());
}

TEST_F(SyncForgery, ThePathNeedNotBeTheOneThatTheNameIsMadeOf) {
  addToVault(sealed(payload("a.png", "1000", "content")), Vault::fileName("b.png").value());
  EXPECT_EQ(run(), "0 sent, 1 received");
  EXPECT_EQ(contentOf(library("a.png")), "content");
}

TEST_F(SyncForgery, PathsOutOfTheLibraryArePassedOver) {
  for (const char* path : {"", "/a.png", "//a.png", "../a.png", "sub/../../a.png", "sub/..", "..", "a//..//b.png", "/",
                           "\\/a.png", "..\\/a.png", "\\u002e\\u002e/a.png"}) {
    addPath(path);
    EXPECT_EQ(run(), "0 sent, 0 received") << path;
  }
  EXPECT_THAT(filesIn(folder_.path()), SizeIs(1));
}

TEST_F(SyncForgery, PiecesThatMerelyBeginWithTwoDotsAreNames) {
  addPath("..a/...b.png");
  EXPECT_EQ(run(), "0 sent, 1 received");
  EXPECT_EQ(contentOf(library("..a/...b.png")), "forged");
}

TEST_F(SyncForgery, APathWithAZeroInItIsPassedOver) {
  addPath("a.png\\u0000.txt");
  EXPECT_EQ(run(), "0 sent, 0 received");
}

TEST_F(SyncForgery, DoubledAndTrailingSlashesLandWhereTheFileSystemPutsThem) {
  addPath("sub//a.png");
  EXPECT_EQ(run(), "1 sent, 1 received") << "the vault did not hold it under the path that it has in the library";
  EXPECT_EQ(contentOf(library("sub/a.png")), "forged");
  EXPECT_EQ(run(), "0 sent, 0 received");
  addPath("trailing.png/");
  EXPECT_EQ(run(), "1 sent, 1 received");
  EXPECT_EQ(contentOf(library("trailing.png")), "forged");
}

TEST_F(SyncForgery, AVaultFileWithADoubledSlashStaysAsItIs) {
  const auto file = sealed(payload("sub//a.png", "1000", "forged"));
  addToVault(file);
  EXPECT_EQ(run(), "1 sent, 1 received");
  EXPECT_EQ(run(), "0 sent, 0 received");
  EXPECT_EQ(contentOf(vault("0123.nimbrelvault")), file);
  EXPECT_EQ(inVault("sub/a.png"), payload("sub/a.png", "1000", "forged"));
  EXPECT_THAT(filesIn(vault()), SizeIs(2));
}

TEST_F(SyncForgery, ANameThatIsTooLongEndsTheRun) {
  addPath(std::string(4000, 'x') + ".png");
  EXPECT_THAT(run(), ::testing::EndsWith(": The name is too long"));
  addPath("deep" + [] {
    std::string path;
    for (int i = 0; i < 4000; ++i) path += "/a";
    return path;
  }());
  EXPECT_THAT(run(), ::testing::EndsWith(": The name is too long"));
}

TEST_F(SyncForgery, APathThatIsTooLongMakesNoFolder) {
  addPath("new/" + std::string(5000, 'x'));
  EXPECT_EQ(run(), "Cannot write new/" + std::string(156, 'x') + "…: The name is too long");
  EXPECT_FALSE(fs::exists(library("new")));
}

TEST_F(SyncForgery, APathThatIsTooLongAndImpossibleIsPassedOver) {
  const std::string longOne(5000, 'x');
  for (const auto& path : {"/" + longOne, longOne + "/../a.png", longOne + "\\u0000"}) {
    addPath(path);
    EXPECT_EQ(run(), "0 sent, 0 received");
  }
}

TEST_F(SyncForgery, SlashesAtTheEndMakeNoPathTooLong) {
  addPath("a.txt" + std::string(5000, '/'));
  EXPECT_EQ(run(), "0 sent, 1 received");
  EXPECT_EQ(contentOf(library("a.txt")), "forged");
}

TEST_F(SyncForgery, APathOfMillionsOfPiecesEndsTheRunAndNothingElse) {
  std::string path;
  for (int i = 0; i < 5'000'000; ++i) path += "a/";
  addPath(path + "a.png");
  const auto failure = run();
  EXPECT_THAT(failure, ::testing::EndsWith("…: The name is too long"));
  EXPECT_LT(failure.size(), 300U);
}

TEST_F(SyncForgery, AFolderAtTheTargetEndsTheRun) {
  fs::create_directory(library("a.png"));
  Testing::setModificationTime(library("a.png"), 0);
  addPath("a.png");
  EXPECT_EQ(run(), "Cannot write a.png: It is not a file");
  EXPECT_TRUE(fs::is_directory(library("a.png")));
}

TEST_F(SyncForgery, AFileWhereAFolderIsNeededEndsTheRun) {
  addPicture("a");
  addPath("a/b.png");
  EXPECT_EQ(run(), "Cannot make the folder " + library("a") + ": A file stands where a folder is needed");
}

TEST_F(SyncForgery, AbsurdDatesComeInAndHarmNothing) {
  int number = 0;
  for (const char* date :
       {"0", "-0", "-0.0", "1e300", "-1e300", "1e19", "9e15", "-9e18", "1e-300", "12345678901234567890"}) {
    const auto name = std::to_string(number++) + ".txt";
    addToVault(sealed(payload(name, date, "content")), name + ".nimbrelvault");
  }
  EXPECT_EQ(run(), "0 sent, 10 received");
  EXPECT_THAT(filesIn(library()), SizeIs(10));
  EXPECT_EQ(FileSystem::modificationDate(library("0.txt")), timestamp(978'307'200));
  EXPECT_EQ(FileSystem::modificationDate(library("2.txt")), timestamp(978'307'200));
}

TEST_F(SyncForgery, AMissingFileComesInHoweverOldTheVaultsCopyIs) {
  addPayload(payload("a.png", "-1e300", "content"));
  const auto before = someDate;
  EXPECT_EQ(run(), "1 sent, 1 received") << "its date cannot be set, so it is newer than the vault's copy";
  EXPECT_GT(FileSystem::modificationDate(library("a.png")).value_or(timestamp(0)), timestamp(before));
}

TEST_F(SyncForgery, AFileThatIsThereStaysWhenTheVaultsDateIsAbsurdlyOld) {
  addPicture("a.png", "ours");
  addPayload(payload("a.png", "-1e300", "forged"));
  EXPECT_EQ(run(), "1 sent, 0 received");
  EXPECT_EQ(contentOf(library("a.png")), "ours");
}

TEST_F(SyncForgery, NamesThatAreNotUtf8StayBehind) {
  addPicture("caf\xe9.png");
  addPicture("\xff/a.png");
  addPicture("caf\xc3\xa9.png");
  EXPECT_EQ(run(), "1 sent, 0 received");
  EXPECT_EQ(inVault("caf\xc3\xa9.png"), payload("caf\xc3\xa9.png", "721692800", "picture"));
}

TEST_F(SyncForgery, NamesWithQuotesBackslashesAndControlsTravel) {
  const std::string name = "a \"b\" \\ c\n\x01\x7f \xf0\x9f\x98\x80.png";
  addPicture(name, "content");
  EXPECT_EQ(run(), "1 sent, 0 received");
  fs::remove(library(name));
  EXPECT_EQ(run(), "0 sent, 1 received");
  EXPECT_EQ(contentOf(library(name)), "content");
}

}  // namespace
}  // namespace Nimbrel
