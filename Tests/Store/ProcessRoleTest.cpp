#include "Store/ProcessRole.h"

#include <gtest/gtest.h>

#include <vector>

namespace Nimbrel {
namespace {

using Arguments = std::vector<std::string_view>;

ProcessRole role(std::string_view program, const Arguments& arguments) {
  return processRole(AppIdentity::fromProgramName(program), arguments);
}

TEST(ProcessRole, FollowsFromNameAndArguments) {
  EXPECT_EQ(role("nimbrel", {}), ProcessRole::mainApplication);
  EXPECT_EQ(role("nimbrel-menubar", {}), ProcessRole::menuBarCompanion);
  EXPECT_EQ(role("nimbrel", {"--scan"}), ProcessRole::headless);
  EXPECT_EQ(role("nimbrel-menubar", {"x", "--scan"}), ProcessRole::headless);
}

TEST(ProcessRole, ArgumentsAreMatchedExactly) {
  EXPECT_EQ(role("nimbrel", {"--scan=1"}), ProcessRole::mainApplication);
  EXPECT_EQ(role("nimbrel", {"-scan", "--Scan", "scan"}), ProcessRole::mainApplication);
}

TEST(ProcessRole, VerboseWithoutScanHasNoMeaning) {
  EXPECT_EQ(role("nimbrel", {"--verbose"}), ProcessRole::mainApplication);
}

TEST(ProcessRole, TheCompanionAndTheHeadlessPassAreWorkers) {
  EXPECT_TRUE(isBackgroundWorker(ProcessRole::menuBarCompanion));
  EXPECT_TRUE(isBackgroundWorker(ProcessRole::headless));
  EXPECT_FALSE(isBackgroundWorker(ProcessRole::mainApplication));
  EXPECT_FALSE(isBackgroundWorker(ProcessRole::tool));
}

}  // namespace
}  // namespace Nimbrel
