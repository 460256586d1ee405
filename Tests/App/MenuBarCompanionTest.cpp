#include "App/MenuBarCompanion.h"

#include "Support/LogRecorder.h"
#include "Support/ProgramRun.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <signal.h>

#include <filesystem>

namespace Nimbrel {
namespace {

using Testing::startProgram;
using Testing::waitUntil;

class MenuBarCompanionTest : public ::testing::Test {
 protected:
  MenuBarCompanionTest() {
    folders_ = {.home = home_.path(),
                .applicationSupport = home_.makeFolder(".local/share/Nimbrel"),
                .preferences = home_.path(".config/Nimbrel"),
                .caches = home_.path(".cache/Nimbrel")};
  }

  /// A companion that only leaves a mark behind; returns the folder it lies in.
  std::string markingProgram() {
    const auto program = home_.write("bin/nimbrel-menubar", "#!/bin/sh\n: >\"" + mark() + "\"\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    return home_.path("bin");
  }
  [[nodiscard]] std::string mark() const { return home_.path("started"); }
  [[nodiscard]] bool wasStarted() const { return std::filesystem::exists(mark()); }

  Testing::TemporaryFolder home_;
  UserFolders folders_;
  AppIdentity application_ = AppIdentity::fromProgramName("nimbrel");
};

TEST_F(MenuBarCompanionTest, HasTheIdentifierOfTheApplicationWithASuffix) {
  EXPECT_EQ(MenuBarCompanion::bundleIdentifier(), AppIdentity::bundleIdentifier() + ".menubar");
  EXPECT_EQ(MenuBarCompanion::bundleIdentifier(), AppIdentity::fromProgramName("nimbrel-menubar").processIdentifier());
}

TEST_F(MenuBarCompanionTest, IsStartedWhereNoneRuns) {
  MenuBarCompanion::launchIfNeeded(application_, folders_, markingProgram());
  EXPECT_TRUE(waitUntil([this] { return wasStarted(); }));
}

TEST_F(MenuBarCompanionTest, IsNotStartedWhileOneRuns) {
  auto running = MenuBarCompanion::announce(folders_);
  ASSERT_TRUE(running);
  EXPECT_TRUE(MenuBarCompanion::isRunning(folders_));
  EXPECT_FALSE(MenuBarCompanion::announce(folders_)) << "there is one";
  MenuBarCompanion::launchIfNeeded(application_, folders_, markingProgram());
  running.reset();
  EXPECT_FALSE(MenuBarCompanion::isRunning(folders_));
  MenuBarCompanion::launchIfNeeded(application_, folders_, home_.makeFolder("empty"));
  EXPECT_FALSE(wasStarted());
}

TEST_F(MenuBarCompanionTest, StartsNoOther) {
  MenuBarCompanion::launchIfNeeded(AppIdentity::fromProgramName("nimbrel-menubar"), folders_, markingProgram());
  EXPECT_FALSE(wasStarted());
  EXPECT_FALSE(MenuBarCompanion::isRunning(folders_));
}

TEST_F(MenuBarCompanionTest, AMissingProgramIsSilentAndAFailureIsLogged) {
  const Testing::LogRecorder log;
  MenuBarCompanion::launchIfNeeded(application_, folders_, home_.makeFolder("empty"));
  EXPECT_THAT(log.lines(), ::testing::IsEmpty());
  home_.write("broken/nimbrel-menubar", "");
  MenuBarCompanion::launchIfNeeded(application_, folders_, home_.path("broken"));
  EXPECT_THAT(log.lines(), ::testing::ElementsAre(::testing::StartsWith("Nimbrel menu bar launch failed: ")));
}

TEST_F(MenuBarCompanionTest, StartsTheApplicationWithTheTokenAndRaisesNothingItself) {
  const auto program = home_.write("bin/nimbrel", "#!/bin/sh\nprintf %s \"$XDG_ACTIVATION_TOKEN\" >\"" + mark() +
                                                      ".new\"\nmv \"" + mark() + ".new\" \"" + mark() + "\"\n");
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  MenuBarCompanion::openMainApp(AppIdentity::fromProgramName("nimbrel-menubar"), home_.path("bin"), "token",
                                [] { FAIL(); });
  ASSERT_TRUE(waitUntil([this] { return wasStarted(); }));
  EXPECT_EQ(Testing::contentOf(mark()), "token");
}

TEST_F(MenuBarCompanionTest, AnApplicationThatCannotBeStartedIsLogged) {
  const Testing::LogRecorder log;
  MenuBarCompanion::openMainApp(AppIdentity::fromProgramName("nimbrel-menubar"), home_.makeFolder("empty"), {},
                                [] { FAIL(); });
  EXPECT_THAT(log.lines(), ::testing::ElementsAre(::testing::StartsWith("Nimbrel window launch failed: ")));
}

TEST_F(MenuBarCompanionTest, InTheApplicationItselfNothingNewIsOpened) {
  int raised = 0;
  MenuBarCompanion::openMainApp(application_, markingProgram(), {}, [&] { ++raised; });
  EXPECT_EQ(raised, 1);
  EXPECT_FALSE(wasStarted());
}

TEST_F(MenuBarCompanionTest, IsKnownWhileItsProgramRuns) {
  const auto companion = startProgram("nimbrel-menubar", {}, home_.path());
  EXPECT_TRUE(waitUntil([this] { return MenuBarCompanion::isRunning(folders_); }));
  companion->kill();
  EXPECT_TRUE(companion->waitForFinished());
  EXPECT_TRUE(waitUntil([this] { return !MenuBarCompanion::isRunning(folders_); }));
}

}  // namespace
}  // namespace Nimbrel
