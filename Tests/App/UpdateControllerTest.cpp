#include "App/UpdateController.h"

#include "Support/FakeWorkspace.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"

#include <gmock/gmock.h>

#include <QFileInfo>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class UpdateControllerTest : public ::testing::Test {
 protected:
  void check(UpdateSettings settings) { UpdateController(std::move(settings), *store_, workspace_).checkForUpdates(); }

  Testing::StoreHome home_;
  std::unique_ptr<Store> store_ = home_.open(ProcessRole::tool);
  Testing::FakeWorkspace workspace_;
};

TEST_F(UpdateControllerTest, ABuildWithoutUpdatesSaysThatNoneAreSetUp) {
  check({});
  EXPECT_EQ(store_->status(), "No updates are set up for this build");
  EXPECT_THAT(workspace_.urls, IsEmpty());
}

TEST_F(UpdateControllerTest, AReleasedBuildOpensThePlaceOfItsUpdates) {
  check({.feedURL = "https://updates.example/nimbrel", .publicKey = "key"});
  EXPECT_EQ(store_->status(), "");
  EXPECT_THAT(workspace_.urls, ElementsAre("https://updates.example/nimbrel"));
}

TEST_F(UpdateControllerTest, ThisBuildHasPlaceholdersBesideItsProgram) {
  const auto folder = QFileInfo(Testing::programPath("nimbrel")).path().toStdString();
  const auto settings = UpdateSettings::read(folder + "/nimbrel-info.json");
  EXPECT_THAT(settings.feedURL, StartsWith("NIMBREL_"));
  EXPECT_THAT(settings.publicKey, StartsWith("NIMBREL_"));
  EXPECT_FALSE(settings.isConfigured(ProcessRole::mainApplication));
}

}  // namespace
}  // namespace Nimbrel
