#include "Support/Pictures.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/SystemCallTrace.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <signal.h>

#include <algorithm>
#include <filesystem>

namespace Nimbrel {
namespace {

using Testing::catchesSignal;
using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using Testing::waitUntil;

/// Our programs, each followed in all that it asks the kernel for.
class NetworkTest : public ::testing::Test {
 protected:
  NetworkTest() { Testing::writePicture(home_.desktop("Screenshot 1.png"), 400, 300, 1); }

  [[nodiscard]] bool seesHashed() {
    return waitUntil([&] {
      return !observer_->shots().empty() && observer_->shots().front()->phash != 0 &&
             observer_->shots().front()->ocrDone;
    });
  }
  void run(const std::string& program, const QStringList& arguments) {
    const auto process = trace_.start(program, arguments, home_.folder().path());
    EXPECT_TRUE(process->waitForFinished(60'000));
    EXPECT_EQ(process->exitCode(), 0) << program;
  }
  void end(QProcess& process) {
    ASSERT_TRUE(waitUntil([&] { return catchesSignal(process, SIGTERM); }));
    process.terminate();
    ASSERT_TRUE(process.waitForFinished());
  }
  /// A released build, whose feed lies where nobody answers.
  [[nodiscard]] std::string releasedProgram(const std::string& name) const {
    const std::filesystem::path folder(home_.folder().makeFolder("released"));
    const auto program = Testing::programPath("nimbrel").toStdString();
    std::filesystem::copy_file(program, folder / name, std::filesystem::copy_options::overwrite_existing);
    home_.folder().write("released/nimbrel-info.json",
                         R"({"SUFeedURL": "https://127.0.0.1:9/feed.xml",)"
                         R"( "SUPublicEDKey": "11qYAYKxCrfVS/7TyWQHOg7hcvPapiMlrwIaaPcHURo="})");
    return folder / name;
  }

  Testing::StoreHome home_;
  std::unique_ptr<Store> observer_ = home_.open(ProcessRole::mainApplication);
  Testing::SystemCallTrace trace_;
};

TEST_F(NetworkTest, TheWindowAndItsCompanionConnectToNothing) {
  const auto companion = trace_.start("nimbrel-menubar", {}, home_.folder().path());
  ASSERT_TRUE(seesHashed());
  const auto window = trace_.start("nimbrel", {}, home_.folder().path());
  ASSERT_TRUE(waitUntil([&] { return catchesSignal(*window, SIGTERM); }));
  // Long enough for what starts by itself with a window.
  Testing::runEventLoopFor(std::chrono::seconds(5));
  end(*window);
  end(*companion);
  ASSERT_TRUE(waitUntil([&] { return trace_.isOver(); }));
  for (const auto* program : {"nimbrel", "nimbrel-menubar", "nimbrel-reader"}) {
    EXPECT_THAT(trace_.programs(), Contains(program));
  }
  EXPECT_THAT(trace_.connections(), IsEmpty());
}

TEST_F(NetworkTest, TheHeadlessPassAndTheCommandsConnectToNothing) {
  run("nimbrel", {QStringLiteral("--scan"), QStringLiteral("--verbose")});
  run("nimbrelctl", {QStringLiteral("scan"), QStringLiteral("--wait")});
  run("nimbrelctl", {QStringLiteral("overview")});
  run("nimbrelctl", {QStringLiteral("capture"), QStringLiteral("--dry-run"), QStringLiteral("screen")});
  ASSERT_TRUE(waitUntil([&] { return trace_.isOver(); }));
  for (const auto* program : {"nimbrel", "nimbrelctl", "nimbrel-reader"}) {
    EXPECT_THAT(trace_.programs(), Contains(program));
  }
  EXPECT_THAT(trace_.connections(), IsEmpty());
}

TEST_F(NetworkTest, AReleasedBuildConnectsToItsFeedFromTheWindow) {
  const auto window = trace_.start(releasedProgram("nimbrel"), {}, home_.folder().path());
  EXPECT_TRUE(waitUntil([&] { return !trace_.connections().empty(); }));
  EXPECT_TRUE(waitUntil([&] {
    const auto connections = trace_.connections();
    return std::ranges::any_of(connections, [](const std::string& line) {
      return line.find("connect(") != std::string::npos && line.find("127.0.0.1") != std::string::npos;
    });
  }));
  end(*window);
  ASSERT_TRUE(waitUntil([&] { return trace_.isOver(); }));
}

TEST_F(NetworkTest, ItsCompanionDoesNot) {
  const auto companion = trace_.start(releasedProgram("nimbrel-menubar"), {}, home_.folder().path());
  ASSERT_TRUE(waitUntil([this] { return !observer_->shots().empty() && observer_->shots().front()->phash != 0; }));
  end(*companion);
  ASSERT_TRUE(waitUntil([&] { return trace_.isOver(); }));
  EXPECT_THAT(trace_.programs(), Contains("nimbrel-menubar"));
  EXPECT_THAT(trace_.connections(), IsEmpty());
}

}  // namespace
}  // namespace Nimbrel
