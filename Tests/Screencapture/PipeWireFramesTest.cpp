#include "Screencapture/PipeWireFrames.h"

#include "Screencapture/ScreenDouble.h"
#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QImage>

#include <fcntl.h>
#include <unistd.h>

#include <mutex>
#include <optional>
#include <string>

namespace Nimbrel::Screencapture {

namespace {

using Testing::picture;
using Testing::ScreenDouble;
using Testing::waitUntil;

/// What came, kept for the thread of the test.
class Heard {
 public:
  PipeWireFrames::Events events() {
    return {.look =
                [this](const QImage& frame) {
                  const std::scoped_lock lock(mutex_);
                  ++looks_;
                  if (!frame.isNull()) last_ = frame;
                },
            .ended =
                [this](const std::string& reason) {
                  const std::scoped_lock lock(mutex_);
                  ++ends_;
                  reason_ = reason;
                }};
  }

  [[nodiscard]] QImage last() const { return read(last_); }
  [[nodiscard]] int looks() const { return read(looks_); }
  [[nodiscard]] int ends() const { return read(ends_); }
  [[nodiscard]] std::string reason() const { return read(reason_); }

 private:
  template <class Value>
  Value read(const Value& value) const {
    const std::scoped_lock lock(mutex_);
    return value;
  }

  mutable std::mutex mutex_;
  QImage last_;
  int looks_ = 0;
  int ends_ = 0;
  std::string reason_;
};

class PipeWireFramesTest : public ::testing::Test {
 protected:
  void look(const ScreenDouble& screen) {
    const int remote = daemon_.connect();
    auto frames = PipeWireFrames::open(remote, screen.node(), heard_.events());
    ::close(remote);
    ASSERT_TRUE(frames) << frames.error().message;
    frames_ = std::move(frames).value();
  }

  /// Whether the picture is what is seen, now or soon.
  [[nodiscard]] bool isSeen(const QImage& wanted) {
    return waitUntil([&] { return heard_.last() == wanted; });
  }

  Testing::PipeWireDaemon daemon_;
  Heard heard_;
  std::unique_ptr<PipeWireFrames> frames_;
};

}  // namespace

TEST_F(PipeWireFramesTest, PicturesComeInEachFormatWithTheirColours) {
  for (const auto format :
       {SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRA, SPA_VIDEO_FORMAT_RGBx, SPA_VIDEO_FORMAT_RGBA}) {
    const auto shown = picture(160, 90, static_cast<int>(format));
    const auto screen = ScreenDouble::open(daemon_, shown, format);
    look(*screen);
    EXPECT_TRUE(isSeen(shown)) << format;
    frames_.reset();
  }
}

TEST_F(PipeWireFramesTest, ChangesOfThePictureAreSeen) {
  const auto screen = ScreenDouble::open(daemon_, picture(64, 48, 1));
  look(*screen);
  for (int seed = 1; seed < 4; ++seed) {
    screen->show(picture(64, 48, seed));
    EXPECT_TRUE(isSeen(picture(64, 48, seed)));
  }
}

TEST_F(PipeWireFramesTest, AScreenThatChangesItsSizeIsFollowed) {
  const auto screen = ScreenDouble::open(daemon_, picture(160, 90));
  look(*screen);
  EXPECT_TRUE(isSeen(picture(160, 90)));
  for (const auto& size : {QSize(320, 200), QSize(33, 17)}) {
    screen->show(picture(size.width(), size.height()));
    EXPECT_TRUE(isSeen(picture(size.width(), size.height())));
  }
}

TEST_F(PipeWireFramesTest, OnlyThePartThatCountsIsTaken) {
  const auto shown = picture(160, 90);
  const auto screen = ScreenDouble::open(daemon_, shown);
  screen->crop(QRect(10, 20, 50, 40));
  look(*screen);
  EXPECT_TRUE(isSeen(shown.copy(10, 20, 50, 40)));
  screen->crop(QRect(140, 0, 500, 500));
  EXPECT_TRUE(isSeen(shown.copy(140, 0, 20, 90)));
}

TEST_F(PipeWireFramesTest, PipeWireThatEndsIsToldOnce) {
  const auto screen = ScreenDouble::open(daemon_, picture(64, 48));
  look(*screen);
  EXPECT_TRUE(isSeen(picture(64, 48)));
  daemon_.kill();
  EXPECT_TRUE(waitUntil([&] { return heard_.ends() > 0; }));
  const int looks = heard_.looks();
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(heard_.ends(), 1);
  EXPECT_EQ(heard_.looks(), looks);
}

TEST_F(PipeWireFramesTest, LooksGoOnWhereNothingIsShown) {
  const int remote = daemon_.connect();
  const auto frames = PipeWireFrames::open(remote, 77, heard_.events());
  ::close(remote);
  ASSERT_TRUE(frames);
  EXPECT_TRUE(waitUntil([&] { return heard_.looks() > 3; }));
  EXPECT_TRUE(heard_.last().isNull());
  EXPECT_EQ(heard_.ends(), 0);
}

TEST_F(PipeWireFramesTest, NothingComesOnceItIsGivenUp) {
  const auto screen = ScreenDouble::open(daemon_, picture(64, 48));
  look(*screen);
  EXPECT_TRUE(isSeen(picture(64, 48)));
  frames_.reset();
  const int looks = heard_.looks();
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(heard_.looks(), looks);
  EXPECT_EQ(heard_.ends(), 0);
}

TEST_F(PipeWireFramesTest, WhatIsNoConnectionIsAnError) { EXPECT_FALSE(PipeWireFrames::open(-1, 1, heard_.events())); }

TEST_F(PipeWireFramesTest, AConnectionToNobodyEnds) {
  const Testing::TemporaryFolder folder;
  const int file = ::open(folder.write("file", "no answer of PipeWire's").c_str(), O_RDWR);
  const auto frames = PipeWireFrames::open(file, 1, heard_.events());
  ::close(file);
  EXPECT_TRUE(!frames || waitUntil([&] { return heard_.ends() > 0; }));
}

}  // namespace Nimbrel::Screencapture
