#include "Linux/X11/WindowFacts.h"
#include "Linux/X11/X11WindowFocus.h"

#include "Support/DesktopSession.h"
#include "Support/ProgramRun.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <unistd.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace Nimbrel {

namespace {

using Testing::DesktopClient;
using Testing::waitUntil;

class WindowFocusTest : public ::testing::Test {
 protected:
  /// A window of 200 x 100 of that class, which the window manager gives the keyboard.
  [[nodiscard]] static std::unique_ptr<DesktopClient> window(const std::string& name, const std::string& process) {
    return std::make_unique<DesktopClient>(std::vector<std::string>{
        Testing::programPath("TestWindow").toStdString(), "WM_CLASS", name + "/" + name, "_NET_WM_PID", process});
  }
  [[nodiscard]] std::string classInFront() {
    if (!connection_->isUp()) return {};
    const auto window = activeWindow(*connection_);
    return window ? factsOf(*connection_, *window).className : std::string();
  }
  [[nodiscard]] bool comesToFront(const std::string& name) {
    return waitUntil([&] { return classInFront() == name; });
  }

  Testing::DesktopSession session_;
  std::shared_ptr<XcbConnection> connection_ = std::make_shared<XcbConnection>();
  std::unique_ptr<WindowFocus> focus_ = makeX11WindowFocus(connection_);
};

TEST_F(WindowFocusTest, WithoutAWindowThereIsNone) { EXPECT_EQ(focus_->current(), std::nullopt); }

TEST_F(WindowFocusTest, TheWindowWithTheKeyboardIsToldWithItsPlace) {
  const auto client = window("Editor", "own");
  ASSERT_TRUE(comesToFront("Editor"));
  const auto current = focus_->current();
  ASSERT_TRUE(current);
  EXPECT_EQ(current->id, *activeWindow(*connection_));
  EXPECT_FALSE(current->isOurs);
  EXPECT_EQ(current->place.size(), QSize(200, 100));
  EXPECT_TRUE(QRect(0, 0, 1280, 800).contains(current->place)) << current->place.x() << "," << current->place.y();
}

TEST_F(WindowFocusTest, AWindowOfThisProcessIsOurs) {
  const auto client = window("Own", std::to_string(::getpid()));
  ASSERT_TRUE(comesToFront("Own"));
  ASSERT_TRUE(focus_->current());
  EXPECT_TRUE(focus_->current()->isOurs);
}

TEST_F(WindowFocusTest, TheKeyboardGoesBackToAWindow) {
  const auto editor = window("Editor", "own");
  ASSERT_TRUE(comesToFront("Editor"));
  const auto former = focus_->current();
  ASSERT_TRUE(former);
  const auto other = window("Other", "own");
  ASSERT_TRUE(comesToFront("Other"));
  focus_->giveTo(former->id);
  EXPECT_TRUE(comesToFront("Editor"));
}

TEST_F(WindowFocusTest, AWindowThatIsGoneGetsNothing) {
  auto editor = window("Editor", "own");
  ASSERT_TRUE(comesToFront("Editor"));
  const auto former = focus_->current();
  ASSERT_TRUE(former);
  editor->end();
  const auto other = window("Other", "own");
  ASSERT_TRUE(comesToFront("Other"));
  focus_->giveTo(former->id);
  Testing::runEventLoopFor(std::chrono::milliseconds(200));
  EXPECT_EQ(classInFront(), "Other");
}

TEST_F(WindowFocusTest, WithoutADisplayThereIsNone) {
  session_.kill();
  EXPECT_EQ(focus_->current(), std::nullopt);
  focus_->giveTo(1);
}

}  // namespace
}  // namespace Nimbrel
