#include "Platform/UserFolders.h"

#include "Support/EnvironmentVariable.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

namespace Nimbrel {

namespace {

using Testing::EnvironmentVariable;

class UserFoldersTest : public ::testing::Test {
 protected:
  EnvironmentVariable home_{"HOME", "/home/someone"};
  EnvironmentVariable data_{"XDG_DATA_HOME", std::nullopt};
  EnvironmentVariable configuration_{"XDG_CONFIG_HOME", std::nullopt};
};

}  // namespace

TEST_F(UserFoldersTest, LieInTheHomeFolderUnlessToldOtherwise) {
  const auto folders = UserFolders::ofCurrentUser();
  ASSERT_TRUE(folders.has_value());
  EXPECT_EQ(folders->home, "/home/someone");
  EXPECT_EQ(folders->applicationSupport, "/home/someone/.local/share/Nimbrel");
  EXPECT_EQ(folders->preferences, "/home/someone/.config/Nimbrel");
}

TEST_F(UserFoldersTest, LieWhereTheVariablesSay) {
  const EnvironmentVariable data("XDG_DATA_HOME", "/data");
  const EnvironmentVariable configuration("XDG_CONFIG_HOME", "/configuration/");
  const auto folders = UserFolders::ofCurrentUser();
  ASSERT_TRUE(folders.has_value());
  EXPECT_EQ(folders->home, "/home/someone");
  EXPECT_EQ(folders->applicationSupport, "/data/Nimbrel");
  EXPECT_EQ(folders->preferences, "/configuration/Nimbrel");
}

TEST_F(UserFoldersTest, RelativeAndEmptyValuesAreIgnored) {
  for (const char* value : {"", "data", "./data", "~/data"}) {
    const EnvironmentVariable data("XDG_DATA_HOME", value);
    const EnvironmentVariable configuration("XDG_CONFIG_HOME", value);
    const auto folders = UserFolders::ofCurrentUser();
    ASSERT_TRUE(folders.has_value());
    EXPECT_EQ(folders->applicationSupport, "/home/someone/.local/share/Nimbrel");
    EXPECT_EQ(folders->preferences, "/home/someone/.config/Nimbrel");
  }
}

TEST_F(UserFoldersTest, HaveNoSlashAtTheirEnd) {
  const EnvironmentVariable home("HOME", "/home/someone//");
  EXPECT_EQ(UserFolders::ofCurrentUser()->home, "/home/someone");
}

TEST_F(UserFoldersTest, TheAccountsHomeServesWhereTheVariableNamesNone) {
  const passwd* account = ::getpwuid(::getuid());
  ASSERT_NE(account, nullptr);
  for (const auto& value : {std::optional<std::string>(), std::optional<std::string>("relative")}) {
    const EnvironmentVariable home("HOME", value);
    const auto folders = UserFolders::ofCurrentUser();
    ASSERT_TRUE(folders.has_value());
    EXPECT_EQ(folders->home, account->pw_dir);
  }
}

}  // namespace Nimbrel
