#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/StoreHome.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <algorithm>
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
  void TearDown() override {
    ASSERT_EQ(worker_->state(), QProcess::Running);
    worker_->terminate();
    ASSERT_TRUE(worker_->waitForFinished());
    EXPECT_EQ(worker_->exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(worker_->exitCode(), 0);
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
  /// Each try is a new file: when the companion has heard of the client in front cannot be seen from outside.
  [[nodiscard]] bool isAttributed(const Application& application) {
    return waitUntil(
        [&] { return appOf(catalogued("Screenshot " + std::to_string(++files_) + ".png")) == application; });
  }

  Testing::DesktopSession session_;
  StoreHome home_;
  std::unique_ptr<Store> observer_ = home_.open(ProcessRole::mainApplication);
  std::unique_ptr<QProcess> worker_ = Testing::startProgram("nimbrel-menubar", {}, home_.folder().path());
  int files_ = 0;
};

TEST_F(AttributionTest, AFreshFileBelongsToTheClientInFrontAndAnOldOneToNobody) {
  const DesktopClient client({"xmessage", "hello"});
  ASSERT_TRUE(isAttributed(notices));
  EXPECT_TRUE(shotNamed(*observer_, "Screenshot " + std::to_string(files_) + ".png")->appAttributionTrusted);
  const auto old = catalogued("Screenshot old.png", 121);
  EXPECT_EQ(appOf(old), Application{});
  EXPECT_FALSE(old->appAttributionTrusted);
}

TEST_F(AttributionTest, FollowsTheFocusAndTheEndOfAClient) {
  const DesktopClient client({"xmessage", "hello"});
  ASSERT_TRUE(isAttributed(notices));
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
  const DesktopClient client({"xmessage", "hello"});
  ASSERT_TRUE(isAttributed(notices));
  session_.kill();
  EXPECT_NE(catalogued("Screenshot after.png"), nullptr);
  EXPECT_EQ(worker_->state(), QProcess::Running);
}

}  // namespace
}  // namespace Nimbrel
