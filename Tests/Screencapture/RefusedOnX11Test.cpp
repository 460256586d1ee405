#include "Screencapture/TestScreen.h"
#include "Support/EnvironmentVariable.h"
#include "Support/Waiting.h"

#include <chrono>

namespace Nimbrel {

namespace {

using Testing::waitUntil;

const QStringList selection{QStringLiteral("-i"), QStringLiteral("-s")};

class RefusedOnX11 : public Testing::ScreenTest {
 protected:
  void holdPointer() const {
    const auto cookie =
        xcb_grab_pointer(display().get(), 0, display().root(), XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
    const Screencapture::XcbOwned<xcb_grab_pointer_reply_t> reply(
        xcb_grab_pointer_reply(display().get(), cookie, nullptr));
    ASSERT_TRUE(reply && reply->status == XCB_GRAB_STATUS_SUCCESS);
  }
  void letGoOfPointer() const {
    xcb_ungrab_pointer(display().get(), XCB_CURRENT_TIME);
    display().flush();
  }
};

TEST_F(RefusedOnX11, AnotherProgramThatHoldsThePointer) {
  holdPointer();
  const auto process = start(selection);
  EXPECT_EQ(statusOf(*process), 3);
  EXPECT_NE(process->readAllStandardError().indexOf("holds keyboard or pointer"), -1);
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(RefusedOnX11, AMenuThatClosesInTimeIsWaitedFor) {
  holdPointer();
  const auto process = start(selection);
  Testing::runEventLoopFor(std::chrono::milliseconds(300));
  EXPECT_FALSE(hasOverlay()) << "what takes no clicks is not to be seen";
  letGoOfPointer();
  EXPECT_TRUE(waitUntil([this] { return hasOverlay(); }));
  act(QStringLiteral("key Escape"));
  EXPECT_EQ(statusOf(*process), 0);
}

TEST_F(RefusedOnX11, AFileThatIsThereAlready) {
  folder_.write("picture.png", "somebody's");
  for (const auto& options : {selection, QStringList{QStringLiteral("-m")}}) {
    const auto process = start(options);
    EXPECT_EQ(statusOf(*process), 1);
    EXPECT_FALSE(process->readAllStandardError().isEmpty());
  }
  EXPECT_EQ(Testing::contentOf(path()), "somebody's");
}

TEST_F(RefusedOnX11, AFileThatComesWhileTheUserSelects) {
  const auto process = startOverlay(selection);
  folder_.write("picture.png", "somebody's");
  act(QStringLiteral("mousemove 100 150 mousedown 1 mousemove 200 200 mousemove 401 351 mouseup 1"));
  EXPECT_EQ(statusOf(*process), 1);
  EXPECT_EQ(Testing::contentOf(path()), "somebody's");
}

TEST_F(RefusedOnX11, AFolderThatCannotBeWrittenTo) {
  const auto output =
      Testing::runProgram("nimbrel-screencapture",
                          {QStringLiteral("-m"), QStringLiteral("-d"), QStringLiteral("/proc/a.png")}, home_.path());
  EXPECT_EQ(output.status, 1);
  EXPECT_NE(output.errors.find("cannot be written"), std::string::npos) << output.errors;
}

TEST_F(RefusedOnX11, ArgumentsThatAreNoneOfThose) {
  const auto output =
      Testing::runProgram("nimbrel-screencapture",
                          {QStringLiteral("-s"), QStringLiteral("-d"), QString::fromStdString(path())}, home_.path());
  EXPECT_EQ(output.status, 2);
  EXPECT_TRUE(output.errors.starts_with("usage:")) << output.errors;
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(RefusedOnX11, ADisplayThatGoesAway) {
  const auto process = startOverlay(selection);
  session_.kill();
  EXPECT_EQ(statusOf(*process), 1);
  EXPECT_NE(process->readAllStandardError().indexOf("The display has gone"), -1);
  EXPECT_TRUE(isFolderEmpty());
}

TEST_F(RefusedOnX11, ADisplayThatIsNotThere) {
  const Testing::EnvironmentVariable display("DISPLAY", ":4711");
  for (const auto& options : {selection, QStringList{QStringLiteral("-m")}}) {
    EXPECT_EQ(statusOf(*start(options)), 1);
  }
  EXPECT_TRUE(isFolderEmpty());
}

}  // namespace

}  // namespace Nimbrel
