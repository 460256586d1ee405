#include "Platform/MetadataStore.h"

#include "Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/xattr.h>

#include <filesystem>
#include <string>

namespace Nimbrel {

namespace {

constexpr const char* isCapture = "user.kMDItemIsScreenCapture";
constexpr const char* captureType = "user.kMDItemScreenCaptureType";

class MetadataStoreTest : public ::testing::Test {
 protected:
  void leave(const char* attribute, const std::string& value) const {
    ASSERT_EQ(::setxattr(file_.c_str(), attribute, value.data(), value.size(), 0), 0);
  }

  Testing::TemporaryFolder folder_;
  std::string file_ = folder_.write("shot.png", "content");
};

}  // namespace

TEST_F(MetadataStoreTest, AFileWithoutAttributesSaysNothing) {
  EXPECT_EQ(MetadataStore::isScreenCapture(file_), std::nullopt);
  EXPECT_EQ(MetadataStore::screenCaptureType(file_), std::nullopt);
}

TEST_F(MetadataStoreTest, OneIsYesAndZeroIsNo) {
  leave(isCapture, "1");
  EXPECT_EQ(MetadataStore::isScreenCapture(file_), true);
  leave(isCapture, "0");
  EXPECT_EQ(MetadataStore::isScreenCapture(file_), false);
}

TEST_F(MetadataStoreTest, AnythingElseIsNeitherYesNorNo) {
  for (const std::string value : {"", "2", "01", "1 ", "true", "yes"}) {
    leave(isCapture, value);
    EXPECT_EQ(MetadataStore::isScreenCapture(file_), std::nullopt) << value;
  }
}

TEST_F(MetadataStoreTest, TheTypeIsTheTextThatWasLeft) {
  for (const std::string value : {"selection", "window", "display", "quelque chose d'été", ""}) {
    leave(captureType, value);
    EXPECT_EQ(MetadataStore::screenCaptureType(file_), value);
  }
}

TEST_F(MetadataStoreTest, ATypeLongerThanAnyKnownOneIsNone) {
  leave(captureType, std::string(1024, 't'));
  EXPECT_EQ(MetadataStore::screenCaptureType(file_), std::string(1024, 't'));
  leave(captureType, std::string(1025, 't'));
  EXPECT_EQ(MetadataStore::screenCaptureType(file_), std::nullopt);
}

TEST_F(MetadataStoreTest, ALinkHasWhatItsFileHas) {
  leave(isCapture, "1");
  leave(captureType, "window");
  const auto link = folder_.path("link");
  std::filesystem::create_symlink(file_, link);
  EXPECT_EQ(MetadataStore::isScreenCapture(link), true);
  EXPECT_EQ(MetadataStore::screenCaptureType(link), "window");
}

TEST_F(MetadataStoreTest, AFileThatIsNotThereSaysNothing) {
  leave(isCapture, "1");
  for (const std::string& path : {folder_.path("missing"), std::string(), file_ + '\0' + "more"}) {
    EXPECT_EQ(MetadataStore::isScreenCapture(path), std::nullopt) << path;
    EXPECT_EQ(MetadataStore::screenCaptureType(path), std::nullopt) << path;
  }
}

TEST_F(MetadataStoreTest, WhatIsLeftIsRead) {
  for (const std::string type : {"selection", "window", "display", ""}) {
    EXPECT_TRUE(MetadataStore::markScreenCapture(file_, type));
    EXPECT_EQ(MetadataStore::isScreenCapture(file_), true);
    EXPECT_EQ(MetadataStore::screenCaptureType(file_), type);
  }
}

TEST_F(MetadataStoreTest, WhatIsLeftTakesThePlaceOfWhatWasThere) {
  leave(isCapture, "0");
  leave(captureType, "a longer type than the new one");
  EXPECT_TRUE(MetadataStore::markScreenCapture(file_, "window"));
  EXPECT_EQ(MetadataStore::isScreenCapture(file_), true);
  EXPECT_EQ(MetadataStore::screenCaptureType(file_), "window");
  EXPECT_EQ(Testing::contentOf(file_), "content");
}

TEST_F(MetadataStoreTest, ATypeTooLongToBeReadIsRefused) {
  EXPECT_FALSE(MetadataStore::markScreenCapture(file_, std::string(1025, 't')));
  EXPECT_EQ(MetadataStore::isScreenCapture(file_), std::nullopt);
  EXPECT_EQ(MetadataStore::screenCaptureType(file_), std::nullopt);
}

TEST_F(MetadataStoreTest, NothingIsLeftWithAFileThatIsNotThere) {
  for (const std::string& path : {folder_.path("missing"), std::string(), file_ + '\0' + "more"}) {
    EXPECT_FALSE(MetadataStore::markScreenCapture(path, "window")) << path;
  }
  EXPECT_EQ(MetadataStore::isScreenCapture(file_), std::nullopt);
}

TEST_F(MetadataStoreTest, NothingIsLeftWithWhatKeepsNoNotes) {
  EXPECT_FALSE(MetadataStore::markScreenCapture("/proc/self/status", "window"));
}

TEST_F(MetadataStoreTest, AFileIsSaidToBeNoCapture) {
  for (int time = 0; time < 2; ++time) {
    EXPECT_TRUE(MetadataStore::markNoScreenCapture(file_));
    EXPECT_EQ(MetadataStore::isScreenCapture(file_), false);
    leave(isCapture, "1");
  }
  EXPECT_FALSE(MetadataStore::markNoScreenCapture(folder_.path("missing")));
  EXPECT_FALSE(MetadataStore::markNoScreenCapture("/proc/self/status"));
}

}  // namespace Nimbrel
