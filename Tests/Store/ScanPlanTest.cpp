#include "Store/ScanPlan.h"

#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <sys/xattr.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::TemporaryFolder;
using ::testing::UnorderedElementsAre;

void setScreenCapture(const std::string& path, const std::string& value) {
  ASSERT_EQ(setxattr(path.c_str(), "user.kMDItemIsScreenCapture", value.data(), value.size(), 0), 0);
}

ShotPtr shotAt(const std::string& path) {
  Shot shot;
  shot.path = path;
  return std::make_shared<const Shot>(shot);
}

TEST(ListFolders, ReadsSourcesFlatAndTheLibraryWithAllBelowIt) {
  const TemporaryFolder folder;
  const auto b = folder.write("source/b.png", "");
  const auto a = folder.write("source/a.PNG", "");
  folder.write("source/below/c.png", "");
  folder.write("source/text.txt", "");
  const auto top = folder.write("library/top.heic", "");
  const auto deep = folder.write("library/2026/2026-03/deep.webp", "");
  const auto listing = listFolders({folder.path("source")}, folder.path("library"));
  EXPECT_THAT(listing.sourceFiles, ElementsAre(a, b));
  EXPECT_THAT(listing.libraryFiles, UnorderedElementsAre(top, deep));
}

TEST(ListFolders, LeavesOutWhatIsHidden) {
  const TemporaryFolder folder;
  folder.write("source/.hidden.png", "");
  folder.write("library/.hidden.png", "");
  folder.write("library/.hidden/a.png", "");
  const auto listing = listFolders({folder.path("source")}, folder.path("library"));
  EXPECT_THAT(listing.sourceFiles, IsEmpty());
  EXPECT_THAT(listing.libraryFiles, IsEmpty());
}

TEST(ListFolders, AFolderWithAnImagesNameIsPassedOverAndALinkToAFileIsNot) {
  const TemporaryFolder folder;
  folder.makeFolder("source/folder.png");
  const auto target = folder.write("elsewhere.png", "");
  std::filesystem::create_directory(folder.path("library"));
  std::filesystem::create_symlink(target, folder.path("source/link.png"));
  std::filesystem::create_symlink("nowhere", folder.path("source/dangling.png"));
  const auto listing = listFolders({folder.path("source")}, folder.path("library"));
  EXPECT_THAT(listing.sourceFiles, ElementsAre(folder.path("source/link.png")));
}

TEST(ListFolders, ALoopOfLinksInTheLibraryIsNotFollowed) {
  const TemporaryFolder folder;
  const auto file = folder.write("library/2026/a.png", "");
  std::filesystem::create_directory_symlink(folder.path("library"), folder.path("library/2026/loop"));
  EXPECT_THAT(listFolders({}, folder.path("library")).libraryFiles, ElementsAre(file));
}

TEST(ListFolders, ASourceThatIsAFileOrMissingIsEmpty) {
  const TemporaryFolder folder;
  folder.write("file", "");
  const auto listing = listFolders({folder.path("file"), folder.path("missing")}, folder.path("missing"));
  EXPECT_THAT(listing.sourceFiles, IsEmpty());
  EXPECT_THAT(listing.libraryFiles, IsEmpty());
}

TEST(PlanScan, FindsWhatIsNeitherIndexedNorIgnored) {
  const DiskListing listing{.sourceFiles = {"/s/new.png", "/s/known.png", "/s/ignored.png"},
                            .libraryFiles = {"/l/b.png", "/l/a.png", "/l/known.png", "/l/ignored.png"}};
  const auto plan = planScan(listing, {"/s/known.png", "/l/known.png"}, {"/s/ignored.png", "/l/ignored.png"}, {});
  EXPECT_THAT(plan.newInSources, ElementsAre("/s/new.png"));
  EXPECT_THAT(plan.newInLibrary, ElementsAre("/l/a.png", "/l/b.png"));
}

TEST(PlanScan, ShotsThatTheWalkDidNotSeeMayBeGone) {
  const DiskListing listing{.sourceFiles = {"/s/here.png"}, .libraryFiles = {"/l/here.png"}};
  const auto plan = planScan(listing, {"/s/here.png", "/gone.png", "/l/here.png"}, {},
                             {shotAt("/s/here.png"), shotAt("/gone.png"), shotAt("/l/here.png")});
  ASSERT_EQ(plan.unseen.size(), 1U);
  EXPECT_EQ(plan.unseen[0]->path, "/gone.png");
}

TEST(PlanScan, AShotThatAnotherProcessHasJustMovedIsNotGone) {
  const DiskListing listing{.sourceFiles = {}, .libraryFiles = {"/l/moved.png"}};
  EXPECT_THAT(planScan(listing, {"/l/moved.png"}, {}, {shotAt("/s/moved.png")}).unseen, IsEmpty());
}

TEST(PlanScan, AFileReachedByTwoRoutesStandsInBothLists) {
  const DiskListing listing{.sourceFiles = {"/l/a.png"}, .libraryFiles = {"/l/a.png"}};
  const auto plan = planScan(listing, {}, {}, {});
  EXPECT_THAT(plan.newInSources, ElementsAre("/l/a.png"));
  EXPECT_THAT(plan.newInLibrary, ElementsAre("/l/a.png"));
}

class IsScreenshotTest : public ::testing::Test {
 protected:
  TemporaryFolder folder_;
};

TEST_F(IsScreenshotTest, TheMetadataDecideAgainstTheName) {
  const auto denied = folder_.write("Screenshot 2026-01-01.png", "");
  setScreenCapture(denied, "0");
  EXPECT_FALSE(isScreenshot(denied));
  const auto confirmed = folder_.write("photo.png", "");
  setScreenCapture(confirmed, "1");
  EXPECT_TRUE(isScreenshot(confirmed));
}

TEST_F(IsScreenshotTest, MetadataOfAnotherTypeLeaveTheDecisionToTheName) {
  const auto path = folder_.write("photo.png", "");
  setScreenCapture(path, "yes");
  EXPECT_FALSE(isScreenshot(path));
}

TEST_F(IsScreenshotTest, WithoutMetadataTheNameDecidesAndItsCaseCounts) {
  for (const auto* name : {"Screenshot 1.png", "Screen Shot 1.png", "CleanShot 1.png", "Simulator Screenshot 1.png"}) {
    EXPECT_TRUE(isScreenshot(folder_.write(name, ""))) << name;
  }
  for (const auto* name : {"screenshot 1.png", "My Screenshot.png", "photo.png"}) {
    EXPECT_FALSE(isScreenshot(folder_.write(name, ""))) << name;
  }
}

}  // namespace
}  // namespace Nimbrel
