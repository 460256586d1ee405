#include "Updates/SavedDownload.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace Nimbrel {
namespace {

std::string nameOf(const std::string& url) { return downloadName({.version = "1.3", .url = url}); }

TEST(DownloadName, IsTheLastPartOfTheAddress) {
  EXPECT_EQ(nameOf("https://updates.example/a/nimbrel_1.3-1~deb12_amd64.deb"), "nimbrel_1.3-1~deb12_amd64.deb");
  EXPECT_EQ(nameOf("https://updates.example/nimbrel.deb?mirror=1#top"), "nimbrel.deb");
}

TEST(DownloadName, IsByTheVersionWhereThatIsNoPlainName) {
  for (const auto* url :
       {"https://updates.example", "https://updates.example/", "https://updates.example/.bashrc",
        "https://updates.example/a%2Fb.deb", "https://updates.example/..", "https://updates.example/a%20b",
        "https://updates.example/%0A", "https://updates.example/-rf", "https://updates.example/%C3%A4.deb"}) {
    EXPECT_EQ(nameOf(url), "nimbrel-1.3") << url;
  }
  EXPECT_EQ(nameOf("https://updates.example/" + std::string(101, 'a')), "nimbrel-1.3");
}

class SavedDownloadTest : public ::testing::Test {
 protected:
  static VerifiedUpdate update(const std::string& bytes) {
    return {.offer = {.version = "1.3", .url = "https://updates.example/nimbrel.deb"},
            .download = std::make_shared<const std::string>(bytes)};
  }
  [[nodiscard]] std::string save(const std::string& bytes) const {
    const auto path = saveDownload(update(bytes), folder_.path("Downloads"));
    EXPECT_TRUE(path);
    return path ? path.value() : std::string();
  }

  Testing::TemporaryFolder folder_;
};

TEST_F(SavedDownloadTest, LiesInTheFolderWhichIsMadeWhereItIsMissing) {
  EXPECT_EQ(save("new"), folder_.path("Downloads/nimbrel.deb"));
  EXPECT_EQ(Testing::contentOf(folder_.path("Downloads/nimbrel.deb")), "new");
}

TEST_F(SavedDownloadTest, OverwritesNothing) {
  folder_.write("Downloads/nimbrel.deb", "mine");
  EXPECT_EQ(save("new"), folder_.path("Downloads/nimbrel 2.deb"));
  EXPECT_EQ(Testing::contentOf(folder_.path("Downloads/nimbrel.deb")), "mine");
}

TEST_F(SavedDownloadTest, SaysWhatStoodInItsWay) {
  folder_.write("Downloads", "a file");
  const auto path = saveDownload(update("new"), folder_.path("Downloads"));
  ASSERT_FALSE(path);
  EXPECT_FALSE(path.error().message.empty());
}

}  // namespace
}  // namespace Nimbrel
