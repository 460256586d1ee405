#include "Foundation/FilePath.h"

#include <gtest/gtest.h>

#include <string>

namespace Nimbrel::FilePath {
namespace {

TEST(FilePath, TakesAPathApart) {
  EXPECT_EQ(lastComponent("/a/b.png"), "b.png");
  EXPECT_EQ(lastComponent("/a/b/"), "b");
  EXPECT_EQ(folder("/a/b.png"), "/a");
  EXPECT_EQ(folder("/a.png"), "/");
  EXPECT_EQ(folder("a.png"), "");
  EXPECT_EQ(folder("/a//b"), "/a");
}

TEST(FilePath, AnExtensionStandsBehindTheLastDotOfAName) {
  EXPECT_EQ(extension("/a.b/c.tar.gz"), "gz");
  EXPECT_EQ(baseName("/a.b/c.tar.gz"), "c.tar");
  EXPECT_EQ(extension("/a.b/c"), "");
  EXPECT_EQ(baseName("/a.b/c"), "c");
}

TEST(FilePath, AHiddenNameAndADotAtTheEndAreNoExtension) {
  EXPECT_EQ(extension("/a/.png"), "");
  EXPECT_EQ(baseName("/a/.png"), ".png");
  EXPECT_EQ(extension("/a/b."), "");
  EXPECT_EQ(baseName("/a/b."), "b.");
}

TEST(FilePath, JoinsWithExactlyOneSlash) {
  EXPECT_EQ(join("/a", "b"), "/a/b");
  EXPECT_EQ(join("/a/", "b"), "/a/b");
  EXPECT_EQ(join("/", "b"), "/b");
}

TEST(FilePath, ATildeAtTheStartIsTheHomeFolder) {
  EXPECT_EQ(expandingTilde("~/Shots", "/home/me"), "/home/me/Shots");
  EXPECT_EQ(expandingTilde("~", "/home/me"), "/home/me");
  EXPECT_EQ(expandingTilde("/a/~", "/home/me"), "/a/~");
  EXPECT_EQ(expandingTilde("~other/x", "/home/me"), "~other/x");
}

TEST(FilePath, SlashesAtTheEndGoExceptTheRoot) {
  EXPECT_EQ(withoutTrailingSlashes("/a//"), "/a");
  EXPECT_EQ(withoutTrailingSlashes("/"), "/");
}

TEST(NumberedName, CountsBeforeTheExtension) {
  EXPECT_EQ(numberedName("a.png", 2), "a 2.png");
  EXPECT_EQ(numberedName("a", 3), "a 3");
  EXPECT_EQ(numberedName(".hidden", 2), ".hidden 2");
  EXPECT_EQ(numberedName("a.", 2), "a. 2");
}

TEST(NumberedName, NeverExceedsTheLongestName) {
  EXPECT_EQ(numberedName(std::string(251, 'n') + ".png", 12), std::string(248, 'n') + " 12.png");
  EXPECT_EQ(numberedName("aää.png", 2, 9), "aä 2.png");
  EXPECT_EQ(numberedName("aää.png", 2, 8), "a 2.png");
}

}  // namespace
}  // namespace Nimbrel::FilePath
