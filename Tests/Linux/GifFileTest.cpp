#include "Platform/GifFile.h"

#include "Support/GifReading.h"
#include "Support/Pictures.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"

#include <QColor>
#include <QPainter>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using namespace Testing;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::SizeIs;

class GifFileTest : public ::testing::Test {
 protected:
  [[nodiscard]] std::string path() const { return folder_.path("a.gif"); }

  /// Writes the frames and reads them back.
  [[nodiscard]] StoredGif written(const std::vector<QImage>& frames, double delay = 0.1) const {
    const auto gif = GifFile::create(path());
    EXPECT_TRUE(gif);
    for (const auto& frame : frames) EXPECT_TRUE(gif->add(frame, delay));
    EXPECT_TRUE(gif->finish());
    return readGif(path());
  }

  /// The delays of so many frames that all differ.
  [[nodiscard]] std::vector<int> delaysOf(int count, double delay) const {
    std::vector<QImage> frames;
    for (int i = 0; i < count; ++i) {
      QImage frame(4, 4, QImage::Format_RGB32);
      frame.fill(qRgb(i, 255 - i, 0));
      frames.push_back(frame);
    }
    return written(frames, delay).delays();
  }

  TemporaryFolder folder_;
};

/// A window with words in it, in few colours.
QImage windowWith(const QString& words, QSize size = {200, 120}) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(QColor(250, 250, 251));
  QPainter painter(&image);
  painter.fillRect(0, 0, size.width(), 24, QColor(220, 222, 228));
  painter.drawText(10, 60, words);
  return image;
}

/// All colours of the screen running into each other.
QImage gradient(QSize size, int shift = 0) {
  QImage image(size, QImage::Format_RGB32);
  for (int y = 0; y < size.height(); ++y) {
    for (int x = 0; x < size.width(); ++x) {
      image.setPixel(x, y, qRgb((x + shift) % 256, y * 255 / size.height(), (x + y) % 256));
    }
  }
  return image;
}

/// The mean difference of a channel.
double difference(const QImage& one, const QImage& other) {
  double sum = 0;
  for (int y = 0; y < one.height(); ++y) {
    for (int x = 0; x < one.width(); ++x) {
      const QRgb a = one.pixel(x, y);
      const QRgb b = other.pixel(x, y);
      sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
    }
  }
  return sum / (3.0 * one.width() * one.height());
}

TEST_F(GifFileTest, PlaysForEver) { EXPECT_TRUE(written({windowWith(QStringLiteral("one"))}).loopsForEver); }

TEST_F(GifFileTest, ShowsFewColoursAsTheyAre) {
  const std::vector frames{windowWith(QStringLiteral("one")), windowWith(QStringLiteral("one two")),
                           windowWith(QStringLiteral("three"))};
  const auto gif = written(frames);
  EXPECT_EQ(gif.size, QSize(200, 120));
  ASSERT_THAT(gif.images, SizeIs(3));
  for (std::size_t i = 0; i < frames.size(); ++i) EXPECT_EQ(gif.images[i].shown, frames[i]) << i;
}

TEST_F(GifFileTest, StoresWhatHasChanged) {
  auto first = windowWith(QStringLiteral("one"));
  auto second = first;
  QPainter(&second).fillRect(30, 40, 5, 7, Qt::red);
  const auto gif = written({first, second});
  ASSERT_THAT(gif.images, SizeIs(2));
  EXPECT_EQ(gif.images[1].place, QRect(30, 40, 5, 7));
  EXPECT_EQ(gif.images[1].ownColours, 2) << "red, and transparent";
  EXPECT_EQ(gif.images[1].disposal, 1) << "stays where it is";
  EXPECT_EQ(gif.images[1].shown, second);
}

TEST_F(GifFileTest, KeepsAFrameInWhichNothingChanges) {
  const auto frame = windowWith(QStringLiteral("one"));
  const auto gif = written({frame, frame, frame});
  ASSERT_THAT(gif.images, SizeIs(3));
  EXPECT_EQ(gif.images[2].place.size(), QSize(1, 1));
  EXPECT_EQ(gif.images[2].shown, frame);
  EXPECT_THAT(gif.delays(), ElementsAre(10, 10, 10));
}

TEST_F(GifFileTest, NeedsATableOnlyWhereTheFilesDoesNotFit) {
  const auto empty = windowWith({});
  auto moved = empty;
  QPainter(&moved).fillRect(20, 50, 30, 30, QColor(220, 222, 228));
  const auto gif = written({empty, moved});
  EXPECT_EQ(gif.colours, 4) << "two colours, transparent, and what rounds up";
  EXPECT_EQ(gif.images[0].ownColours, 0);
  EXPECT_EQ(gif.images[1].ownColours, 0);
}

TEST_F(GifFileTest, TellsTwoHundredAndFiftyFiveColoursApart) {
  QImage image(255, 3, QImage::Format_RGB32);
  for (int y = 0; y < 3; ++y) {
    for (int x = 0; x < 255; ++x) image.setPixel(x, y, qRgb(x, 200, 255 - x));
  }
  const auto gif = written({image});
  EXPECT_EQ(gif.colours, 256);
  EXPECT_EQ(gif.images[0].shown, image);
}

TEST_F(GifFileTest, ComesCloseToManyColours) {
  const auto frame = gradient({400, 300});
  const auto gif = written({frame});
  EXPECT_LT(difference(gif.images[0].shown, frame), 9);
}

TEST_F(GifFileTest, KeepsThePlainColoursAmongMany) {
  auto frame = gradient({400, 300});
  QPainter(&frame).fillRect(0, 0, 200, 100, QColor(31, 33, 38));
  const auto gif = written({frame});
  EXPECT_EQ(gif.images[0].shown.copy(0, 0, 200, 100), frame.copy(0, 0, 200, 100));
}

TEST_F(GifFileTest, FollowsColoursThatTheFirstFrameDidNotHave) {
  const auto first = gradient({300, 200});
  const auto second = first.rgbSwapped().mirrored();
  const auto gif = written({first, second});
  EXPECT_GT(gif.images[1].ownColours, 0);
  EXPECT_LT(difference(gif.images[1].shown, second), 9);
}

TEST_F(GifFileTest, ShowsAGradientAsManyShades) {
  QImage frame(600, 40, QImage::Format_RGB32);
  for (int x = 0; x < 600; ++x) {
    for (int y = 0; y < 40; ++y) frame.setPixel(x, y, qRgb(x * 255 / 599, y * 3, 128));
  }
  const auto shown = written({frame}).images[0].shown;
  // Over a few pixels the mean is right, though each of them alone has one of 255 colours.
  EXPECT_LT(difference(shown.scaled(75, 5, Qt::IgnoreAspectRatio, Qt::SmoothTransformation),
                       frame.scaled(75, 5, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)),
            1.5);
}

TEST_F(GifFileTest, LeavesAloneWhatStandsStill) {
  auto first = gradient({300, 200});
  auto second = first;
  QPainter(&second).drawImage(150, 0, gradient({150, 200}, 77));
  const auto gif = written({first, second, first});
  const auto still = [&](std::size_t image) { return gif.images[image].shown.copy(0, 0, 150, 200); };
  EXPECT_EQ(still(1), still(0));
  EXPECT_EQ(still(2), still(0));
}

TEST_F(GifFileTest, LeavesAloneWhatTremblesUnseen) {
  const auto first = gradient({300, 200});
  auto second = first;
  std::mt19937 random(7);
  for (int y = 0; y < 200; ++y) {
    for (int x = 0; x < 300; ++x) {
      if (random() % 2 == 0) second.setPixel(x, y, first.pixel(x, y) ^ 0x010101);
    }
  }
  const auto gif = written({first, second});
  EXPECT_LT(difference(gif.images[0].shown, gif.images[1].shown), 0.5);
}

TEST_F(GifFileTest, SeesTheSmallestChangeAmongFewColours) {
  QImage first(40, 30, QImage::Format_RGB32);
  first.fill(qRgb(100, 100, 100));
  auto second = first;
  second.fill(qRgb(101, 100, 100));
  EXPECT_EQ(written({first, second}).images[1].shown, second);
}

TEST_F(GifFileTest, EndsEachFrameAtTheNearestHundredth) {
  EXPECT_THAT(delaysOf(6, 1.0 / 3), ElementsAre(33, 34, 33, 33, 34, 33));
  EXPECT_TRUE(QFile::remove(QString::fromStdString(path())));
  EXPECT_THAT(delaysOf(7, 1.0 / 7), ElementsAre(14, 15, 14, 14, 14, 15, 14));
}

TEST_F(GifFileTest, DoesNotDriftOverManyFrames) {
  for (const int perSecond : {3, 7, 11, 15, 30}) {
    const auto delays = delaysOf(180, 1.0 / perSecond);
    ASSERT_THAT(delays, SizeIs(180));
    int sum = 0;
    for (std::size_t i = 0; i < delays.size(); ++i) {
      sum += delays[i];
      EXPECT_NEAR(sum, 100.0 * static_cast<double>(i + 1) / perSecond, 0.5 + 1e-6);
    }
    EXPECT_TRUE(QFile::remove(QString::fromStdString(path())));
  }
}

TEST_F(GifFileTest, LeavesOutFramesThatWouldBeTooShort) {
  const auto delays = delaysOf(180, 2.0 / 180);
  EXPECT_THAT(delays, Each(Ge(2)));
  EXPECT_EQ(std::accumulate(delays.begin(), delays.end(), 0), 200);
}

TEST_F(GifFileTest, GivesTheRestToTheLastFrame) {
  // They would end at 2, 3 and 5 hundredths, then at 7 and 8: the last one of a single hundredth is left out.
  EXPECT_THAT(delaysOf(5, 1.0 / 60), ElementsAre(2, 3, 3));
}

TEST_F(GifFileTest, ShowsASingleFrameHoweverShort) {
  EXPECT_THAT(delaysOf(1, 0.01), ElementsAre(1));
  EXPECT_TRUE(QFile::remove(QString::fromStdString(path())));
  EXPECT_THAT(delaysOf(1, 0), ElementsAre(0));
  EXPECT_TRUE(QFile::remove(QString::fromStdString(path())));
  EXPECT_THAT(delaysOf(1, std::nan("")), ElementsAre(0));
}

TEST_F(GifFileTest, ShowsNoFrameLongerThanTheFormatKnows) {
  EXPECT_THAT(delaysOf(2, 1000), ElementsAre(65535, 65535));
  EXPECT_TRUE(QFile::remove(QString::fromStdString(path())));
  EXPECT_THAT(delaysOf(1, std::numeric_limits<double>::infinity()), ElementsAre(65535));
}

TEST_F(GifFileTest, TakesAnySize) {
  for (const QSize size : {QSize(1, 1), QSize(3, 1), QSize(1, 77), QSize(301, 7), QSize(30000, 3), QSize(65535, 1)}) {
    const auto frame = windowWith(QStringLiteral("x"), size);
    auto second = frame;
    second.setPixel(size.width() - 1, size.height() - 1, qRgb(1, 2, 3));
    const auto gif = written({frame, second});
    EXPECT_EQ(gif.size, size);
    ASSERT_THAT(gif.images, SizeIs(2));
    EXPECT_EQ(gif.images[0].shown, frame);
    EXPECT_EQ(gif.images[1].shown, second);
    EXPECT_TRUE(QFile::remove(QString::fromStdString(path())));
  }
}

TEST_F(GifFileTest, RefusesFramesThatDoNotFit) {
  const auto gif = GifFile::create(path());
  EXPECT_FALSE(gif->add(QImage(), 0.1));
  EXPECT_FALSE(gif->add(QImage(65536, 1, QImage::Format_RGB32), 0.1));
  EXPECT_TRUE(gif->add(windowWith({}), 0.1));
  EXPECT_FALSE(gif->add(windowWith({}, {201, 120}), 0.1));
  EXPECT_TRUE(gif->finish());
  EXPECT_THAT(readGif(path()).images, SizeIs(1));
}

TEST_F(GifFileTest, IsOpaque) {
  QImage frame(20, 10, QImage::Format_ARGB32);
  frame.fill(qRgba(200, 100, 50, 0));
  const auto gif = written({frame});
  EXPECT_EQ(gif.images[0].shown.pixel(3, 3), qRgb(200, 100, 50));
}

TEST_F(GifFileTest, ReplacesNothing) {
  const auto taken = folder_.write("a.gif", "mine");
  EXPECT_FALSE(GifFile::create(taken));
  EXPECT_EQ(contentOf(taken), "mine");
  EXPECT_FALSE(GifFile::create(folder_.path("no such folder/a.gif")));
}

TEST_F(GifFileTest, CannotBeFinishedWithoutAFrame) { EXPECT_FALSE(GifFile::create(path())->finish()); }

TEST_F(GifFileTest, TellsThatTheDiskIsFull) {
  const auto folder = folder_.makeFolder("disk");
  const int outcome = onSmallDisk(folder, 64 << 10, [&] {
    const auto gif = GifFile::create(folder + "/a.gif");
    if (!gif) return 1;
    bool taken = true;
    for (int i = 0; i < 8; ++i) taken = gif->add(gradient({400, 300}, 31 * i), 0.1) && taken;
    return taken || gif->finish() ? 2 : 0;
  });
  EXPECT_EQ(outcome, 0);
}

TEST_F(GifFileTest, TellsAtTheEndThatTheDiskIsFull) {
  const auto folder = folder_.makeFolder("disk");
  const int outcome = onSmallDisk(folder, 4096, [&] {
    const auto filler = std::string(4096, 'x');
    const auto gif = GifFile::create(folder + "/a.gif");
    auto* file = std::fopen((folder + "/filler").c_str(), "wb");
    std::fwrite(filler.data(), 1, filler.size(), file);
    std::fclose(file);
    if (!gif || !gif->add(windowWith({}), 0.1)) return 1;
    return gif->finish() ? 2 : 0;
  });
  EXPECT_EQ(outcome, 0);
}

}  // namespace
}  // namespace Nimbrel
