#include "Screencapture/ScreenFrames.h"

#include "Screencapture/PaintedScreen.h"
#include "Support/DesktopSession.h"

#include <gtest/gtest.h>

#include <optional>

namespace Nimbrel::Screencapture {

namespace {

using Testing::PaintedScreen;

void movePointer(const X11Display& display, QPoint place) {
  xcb_warp_pointer(display.get(), XCB_NONE, display.root(), 0, 0, 0, 0, static_cast<std::int16_t>(place.x()),
                   static_cast<std::int16_t>(place.y()));
  const XcbOwned<xcb_query_pointer_reply_t> done(
      xcb_query_pointer_reply(display.get(), xcb_query_pointer(display.get(), display.root()), nullptr));
}

bool isPlain(const QImage& image, QColor colour) {
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (image.pixelColor(x, y) != colour) return false;
    }
  }
  return true;
}

class ScreenFramesTest : public ::testing::Test {
 protected:
  /// The next picture, if it is another.
  [[nodiscard]] std::optional<QImage> next() {
    auto frame = frames_.value()->next();
    EXPECT_TRUE(frame) << frame.error().message;
    return frame ? frame.value() : std::nullopt;
  }

  Testing::DesktopSession session_;
  PaintedScreen screen_{Qt::red};
  Result<std::unique_ptr<ScreenFrames>> frames_ = ScreenFrames::open({100, 100, 64, 48});
};

TEST_F(ScreenFramesTest, ShowTheAreaAndNothingElse) {
  const auto frame = next();
  ASSERT_TRUE(frame);
  EXPECT_EQ(frame->size(), QSize(64, 48));
  EXPECT_TRUE(isPlain(*frame, Qt::red));
}

TEST_F(ScreenFramesTest, AreGivenOutWhenTheyChange) {
  ASSERT_TRUE(next());
  EXPECT_FALSE(next());
  EXPECT_FALSE(next());
  screen_.paint(Qt::blue);
  const auto blue = next();
  ASSERT_TRUE(blue);
  EXPECT_TRUE(isPlain(*blue, Qt::blue));
  EXPECT_FALSE(next());
  EXPECT_TRUE(isPlain(*blue, Qt::blue)) << "it does not last until the next one";
}

TEST_F(ScreenFramesTest, ShowThePointer) {
  ASSERT_TRUE(next());
  movePointer(screen_.display(), {130, 120});
  const auto frame = next();
  ASSERT_TRUE(frame);
  EXPECT_FALSE(isPlain(*frame, Qt::red));
  EXPECT_TRUE(isPlain(frame->copy(0, 0, 10, 48), Qt::red)) << "it is elsewhere";
  movePointer(screen_.display(), {0, 0});
  const auto without = next();
  ASSERT_TRUE(without);
  EXPECT_TRUE(isPlain(*without, Qt::red));
}

TEST_F(ScreenFramesTest, EndWithTheScreen) {
  ASSERT_TRUE(next());
  session_.kill();
  EXPECT_FALSE(frames_.value()->next());
}

TEST_F(ScreenFramesTest, AnAreaThatIsNotOnTheScreenIsAnError) {
  EXPECT_FALSE(ScreenFrames::open({1200, 100, 100, 100}));
  EXPECT_FALSE(ScreenFrames::open({-10, 0, 100, 100}));
  EXPECT_FALSE(ScreenFrames::open({}));
}

TEST(OtherScreenFramesTest, ColoursOfOtherThanEightBitsAreAnErrorThatSaysSo) {
  const Testing::DesktopSession session(16);
  const auto frames = ScreenFrames::open({0, 0, 100, 100});
  ASSERT_FALSE(frames);
  EXPECT_NE(frames.error().message.find("8 bits"), std::string::npos);
}

TEST(OtherScreenFramesTest, WithoutADisplayThereIsAnError) { EXPECT_FALSE(ScreenFrames::open({0, 0, 100, 100})); }

}  // namespace

}  // namespace Nimbrel::Screencapture
