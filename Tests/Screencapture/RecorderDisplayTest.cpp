// With a display for the stop control.

#include "Platform/MediaFile.h"
#include "Screencapture/RecorderFixture.h"
#include "Support/DesktopSession.h"

namespace Nimbrel::Screencapture {

using ::testing::AllOf;
using ::testing::Each;
using ::testing::IsEmpty;
using ::testing::Not;
using Testing::numberedPicture;
using Testing::ScreenDouble;
using Testing::waitUntil;

TEST_F(RecorderOnWaylandTest, AStopControlWhoseDisplayGoesAwayLeavesTheMovie) {
  Testing::DesktopSession session;  // which says that it is X11's
  qputenv("XDG_SESSION_TYPE", "wayland");
  qputenv("QT_QPA_PLATFORM", "xcb");
  const auto screen = ScreenDouble::open(pipeWire_, numberedPicture(3, {160, 120}));
  cast_.show({{screen->node(), {}}});
  start({QStringLiteral("-v"), QStringLiteral("-m")});
  EXPECT_TRUE(waitUntil([this] { return MediaFile::duration(target_).hasValue(); })) << "nothing is recorded";
  session.kill();
  EXPECT_EQ(exitStatus(), Done);
  EXPECT_THAT(Testing::readMovie(target_).numbers(), AllOf(Not(IsEmpty()), Each(3)));
}

}  // namespace Nimbrel::Screencapture
