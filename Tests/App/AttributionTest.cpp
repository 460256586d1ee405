#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <signal.h>

#include <chrono>

namespace Nimbrel {
namespace {

using Testing::DesktopClient;
using Testing::shotNamed;
using Testing::StoreHome;
using Testing::waitUntil;

const Application notices{"Notice Board", "org.example.Notices"};

/// The companion on a desktop of its own, whose catalogue the test looks into as another process.
class AttributionTest : public ::testing::Test {
 protected:
  AttributionTest() {
    Testing::installDesktopEntry(home_.path(".local/share"), notices.bundleID,
                                 "Name=Notice Board\nExec=xmessage hello\nStartupWMClass=Xmessage\n");
  }

  [[nodiscard]] ShotPtr catalogued(const std::string& name, double secondsAgo = 0) {
    const auto path = home_.addFile(home_.desktop(name));
    if (secondsAgo > 0) {
      const auto now = std::chrono::duration<double>(std::chrono::system_clock::now().time_since_epoch());
      Testing::setModificationTime(path, now.count() - secondsAgo);
    }
    EXPECT_TRUE(waitUntil([&] {
      return std::ranges::any_of(observer_->shots(), [&](const ShotPtr& shot) { return shot->name == name; });
    }));
    return shotNamed(*observer_, name);
  }
  [[nodiscard]] static Application appOf(const ShotPtr& shot) { return {shot->appName, shot->bundleID}; }
  /// Each try is a new file, since a process of another user's time hears of the change when it does.
  [[nodiscard]] bool isAttributed(const Application& application) {
    return waitUntil(
        [&] { return appOf(catalogued("Screenshot " + std::to_string(++files_) + ".png")) == application; });
  }

  Testing::DesktopSession session_;
  StoreHome home_;
  std::unique_ptr<Store> observer_ = home_.open(ProcessRole::mainApplication);
  int files_ = 0;
};

TEST_F(AttributionTest, AFreshFileBelongsToTheClientInFrontAndAnOldOneToNobody) {
  const auto worker = Testing::startProgram("nimbrel-menubar", {}, home_.folder().path());
  const DesktopClient client({"xmessage", "hello"});
  ASSERT_TRUE(isAttributed(notices));
  EXPECT_TRUE(shotNamed(*observer_, "Screenshot " + std::to_string(files_) + ".png")->appAttributionTrusted);
  const auto old = catalogued("Screenshot old.png", 121);
  EXPECT_EQ(appOf(old), Application{});
  EXPECT_FALSE(old->appAttributionTrusted);
}

TEST_F(AttributionTest, FollowsTheFocusAndTheEndOfAClient) {
  const DesktopClient client({"xmessage", "hello"});
  const auto worker = Testing::startProgram("nimbrel-menubar", {}, home_.folder().path());
  DesktopClient other({Testing::programPath("TestWindow").toStdString(), "WM_CLASS", "other/Other"});
  EXPECT_TRUE(isAttributed({"Other", ""}));
  Testing::bringToFront("Xmessage");
  EXPECT_TRUE(isAttributed(notices));
  Testing::bringToFront("Other");
  EXPECT_TRUE(isAttributed({"Other", ""}));
  other.end();
  EXPECT_TRUE(isAttributed(notices)) << "the window manager hands the focus on";
}

TEST_F(AttributionTest, TheWorkerOutlivesItsServer) {
  const auto worker = Testing::startProgram("nimbrel-menubar", {}, home_.folder().path());
  const DesktopClient client({"xmessage", "hello"});
  ASSERT_TRUE(isAttributed(notices));
  session_.kill();
  EXPECT_NE(catalogued("Screenshot after.png"), nullptr);
  EXPECT_EQ(worker->state(), QProcess::Running);
  ASSERT_EQ(kill(static_cast<pid_t>(worker->processId()), SIGTERM), 0);
  ASSERT_TRUE(worker->waitForFinished());
  EXPECT_EQ(worker->exitCode(), 0);
}

}  // namespace
}  // namespace Nimbrel
