#include "Screencapture/RecordedMovie.h"

#include "Platform/MediaFile.h"
#include "Platform/MetadataStore.h"
#include "Support/SmallDisk.h"
#include "Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <numbers>
#include <random>
#include <utility>

namespace Nimbrel::Screencapture {

namespace {

using namespace std::chrono_literals;
using Testing::TemporaryFolder;

constexpr QSize size(160, 120);
const RecordedMovie::Time start{1000s};

QImage plain(QRgb colour) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(colour);
  return image;
}

bool isLike(const QImage& image, QColor colour) {
  const QColor middle = image.pixelColor(image.rect().center());
  const auto isNear = [](int one, int other) { return std::abs(one - other) < 30; };
  return isNear(middle.red(), colour.red()) && isNear(middle.green(), colour.green()) &&
         isNear(middle.blue(), colour.blue());
}

/// Gives out one block when it is first asked.
class OneSound final : public SoundSource {
 public:
  explicit OneSound(SoundBlock block) : blocks_{std::move(block)} {}
  std::vector<SoundBlock> take() override { return std::exchange(blocks_, {}); }

 private:
  std::vector<SoundBlock> blocks_;
};

std::vector<std::int16_t> tone(std::chrono::milliseconds length) {
  std::vector<std::int16_t> samples;
  for (std::int64_t i = 0; i < length.count() * SoundSource::sampleRate / 1000; ++i) {
    const auto wave = std::sin(2 * std::numbers::pi * 440 * static_cast<double>(i) / SoundSource::sampleRate);
    samples.insert(samples.end(), 2, static_cast<std::int16_t>(wave * 12000));
  }
  return samples;
}

class RecordedMovieTest : public ::testing::Test {
 protected:
  std::unique_ptr<RecordedMovie> begin(std::unique_ptr<SoundSource> sound = nullptr) {
    auto movie = RecordedMovie::begin(path_, size, "selection", std::move(sound));
    EXPECT_TRUE(movie) << movie.error().message;
    return std::move(movie).value();
  }
  [[nodiscard]] QImage frameAt(double time) const {
    const auto pictures = MediaFile::FrameGrabber::open(path_);
    if (!pictures) return {};
    auto frame = pictures.value()->frameAt(time);
    return frame ? frame.value() : QImage();
  }
  [[nodiscard]] double duration() const {
    const auto length = MediaFile::duration(path_);
    return length ? length.value() : -1;
  }
  [[nodiscard]] std::vector<std::string> names() const {
    std::vector<std::string> result;
    for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
      result.push_back(entry.path().filename());
    }
    return result;
  }

  TemporaryFolder folder_;
  std::string path_ = folder_.path("Recording.mov");
};

TEST_F(RecordedMovieTest, BeginsWithTheFirstFrameAndShowsEachAtItsTime) {
  const auto movie = begin();
  EXPECT_EQ(movie->addFrame(plain(0xFFFF0000), start), std::nullopt);
  EXPECT_EQ(movie->addFrame(plain(0xFF0000FF), start + 400ms), std::nullopt);
  EXPECT_EQ(movie->finish(start + 900ms), std::nullopt);
  EXPECT_NEAR(duration(), 0.9, 0.05);
  EXPECT_EQ(frameAt(0).size(), size);
  EXPECT_TRUE(isLike(frameAt(0), Qt::red));
  EXPECT_TRUE(isLike(frameAt(0.35), Qt::red));
  EXPECT_TRUE(isLike(frameAt(0.45), Qt::blue));
  EXPECT_THAT(names(), ::testing::ElementsAre("Recording.mov"));
}

TEST_F(RecordedMovieTest, IsMarkedAsACapture) {
  const auto movie = begin();
  EXPECT_EQ(MetadataStore::screenCaptureType(path_), "selection") << "also if it is not finished";
  EXPECT_EQ(movie->addFrame(plain(0xFFFF0000), start), std::nullopt);
  EXPECT_EQ(movie->finish(start + 100ms), std::nullopt);
  EXPECT_EQ(MetadataStore::isScreenCapture(path_), true);
  EXPECT_EQ(MetadataStore::screenCaptureType(path_), "selection");
}

TEST_F(RecordedMovieTest, ANameThatIsTakenIsRefusedAndLeftAlone) {
  folder_.write("Recording.mov", "somebody's");
  EXPECT_FALSE(RecordedMovie::begin(path_, size, "display", nullptr));
  EXPECT_EQ(Testing::contentOf(path_), "somebody's");
}

TEST_F(RecordedMovieTest, AFolderThatIsNotThereIsAnError) {
  EXPECT_FALSE(RecordedMovie::begin(folder_.path("none/Recording.mov"), size, "display", nullptr));
}

TEST_F(RecordedMovieTest, GivenUpItLeavesNothing) {
  auto movie = begin();
  EXPECT_EQ(movie->addFrame(plain(0xFFFF0000), start), std::nullopt);
  movie.reset();
  EXPECT_TRUE(names().empty());
}

TEST_F(RecordedMovieTest, WithoutAFrameItFailsAndLeavesNothing) {
  auto movie = begin();
  EXPECT_EQ(movie->goOn(start), std::nullopt);
  EXPECT_NE(movie->finish(start + 1s), std::nullopt);
  movie.reset();
  EXPECT_TRUE(names().empty());
}

TEST_F(RecordedMovieTest, AtAnyMomentWhatIsAtThePathCanBePlayed) {
  const auto movie = begin();
  auto time = start;
  EXPECT_EQ(movie->addFrame(plain(0xFF00FF00), time), std::nullopt);
  for (int i = 0; i < 300; ++i) {
    time += 33ms;
    ASSERT_EQ(movie->goOn(time), std::nullopt);
  }
  const auto copy = folder_.path("Copy.mov");
  std::filesystem::copy_file(path_, copy);
  path_ = copy;
  EXPECT_GT(duration(), 5) << "a still screen is not written";
  EXPECT_TRUE(isLike(frameAt(3), Qt::green));
}

TEST_F(RecordedMovieTest, SoundStandsAtItsTime) {
  const auto movie = begin(std::make_unique<OneSound>(SoundBlock{start + 500ms, tone(500ms)}));
  EXPECT_EQ(movie->addFrame(plain(0xFFFF0000), start), std::nullopt);
  EXPECT_EQ(movie->addFrame(plain(0xFF0000FF), start + 1s), std::nullopt);
  EXPECT_EQ(movie->finish(start + 1200ms), std::nullopt);
  double first = -1;
  int loudest = 0;
  const auto listen = [&](const MediaFile::SoundBuffer& buffer) {
    for (std::size_t i = 0; i < buffer.samples.size(); ++i) {
      const int loud = std::abs(buffer.samples[i]);
      loudest = std::max(loudest, loud);
      const auto time = buffer.start + static_cast<double>(i / SoundSource::channels) / SoundSource::sampleRate;
      if (loud > 3000 && first < 0) first = time;
    }
  };
  EXPECT_EQ(MediaFile::forEachSoundBuffer(path_, listen), std::nullopt);
  EXPECT_NEAR(first, 0.5, 0.05);
  EXPECT_GT(loudest, 8000);
}

TEST_F(RecordedMovieTest, SoundFromBeforeTheFirstFrameIsLeftOut) {
  const auto block = soundFrom({start - 100ms, tone(300ms)}, start);
  EXPECT_EQ(block.start, start);
  EXPECT_EQ(block.samples.size(), 2U * 48 * 200);
  EXPECT_TRUE(soundFrom({start - 1s, tone(300ms)}, start).samples.empty());
  EXPECT_EQ(soundFrom({start + 1s, tone(10ms)}, start).start, start + 1s);
}

/// Frames that cannot be made small, until the disk is full or there were enough of them.
std::optional<Error> fill(RecordedMovie& movie) {
  std::mt19937 random(1);
  auto frame = plain(0);
  for (int i = 0; i < 2000; ++i) {
    for (int y = 0; y < frame.height(); ++y) {
      auto* line = reinterpret_cast<QRgb*>(frame.scanLine(y));
      std::generate_n(line, frame.width(), [&] { return random() | 0xFF000000; });
    }
    if (auto failure = movie.addFrame(frame, start + i * 33ms)) return failure;
  }
  return std::nullopt;
}

TEST_F(RecordedMovieTest, AFullDiskEndsItWithWhatThereIs) {
  const int status = Testing::onSmallDisk(folder_.path(), 4 << 20, [this] {
    auto movie = RecordedMovie::begin(path_, size, "selection", nullptr);
    if (!movie) return 2;
    if (!fill(*movie.value())) return 3;
    if (!movie.value()->finish(start + 60s)) return 4;
    movie.value().reset();
    const auto length = MediaFile::duration(path_);
    if (!length || length.value() < 1) return 5;
    return frameAt(0.5).size() == size ? 0 : 6;
  });
  EXPECT_EQ(status, 0);
}

TEST_F(RecordedMovieTest, ADiskWithoutAnyRoomLeavesNoFile) {
  const int status = Testing::onSmallDisk(folder_.path(), 4096, [this] {
    auto movie = RecordedMovie::begin(path_, size, "selection", nullptr);
    if (movie) {
      if (!fill(*movie.value()) || !movie.value()->finish(start + 60s)) return 2;
      movie.value().reset();
    }
    return names().empty() ? 0 : 3;
  });
  EXPECT_EQ(status, 0);
}

}  // namespace

}  // namespace Nimbrel::Screencapture
