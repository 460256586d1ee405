#include "Views/Recording/FrameLoader.h"

#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QMutex>
#include <QSemaphore>
#include <QThread>
#include <QThreadPool>

#include <memory>
#include <optional>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using Testing::waitUntil;

/// Gives no picture before the test lets it, and remembers what it was asked for.
struct HeldRecording {
  QMutex mutex;
  std::vector<double> asked;
  QThread* thread = nullptr;
  QSemaphore turns;

  [[nodiscard]] std::size_t count() {
    const QMutexLocker lock(&mutex);
    return asked.size();
  }
};

FrameLoader::Grab grabFrom(const std::shared_ptr<HeldRecording>& recording) {
  return [recording](double seconds, QSize limit) {
    {
      const QMutexLocker lock(&recording->mutex);
      recording->asked.push_back(seconds);
      recording->thread = QThread::currentThread();
    }
    recording->turns.acquire();
    QImage image(limit, QImage::Format_RGB32);
    image.fill(Qt::white);
    return image;
  };
}

class FrameLoaderTest : public ::testing::Test {
 protected:
  FrameLoaderTest() : loader_(std::make_unique<FrameLoader>(grabFrom(recording_), threads_)) {
    QObject::connect(loader_.get(), &FrameLoader::loaded, loader_.get(), [this](double seconds, const QImage& frame) {
      loaded_.push_back(seconds);
      frame_ = frame;
    });
  }
  ~FrameLoaderTest() override { recording_->turns.release(100); }

  std::shared_ptr<HeldRecording> recording_ = std::make_shared<HeldRecording>();
  QThreadPool threads_;
  std::unique_ptr<FrameLoader> loader_;
  std::vector<double> loaded_;
  QImage frame_;
};

TEST_F(FrameLoaderTest, GivesThePictureOfAnotherThread) {
  recording_->turns.release();
  loader_->load(1.5, {8, 6});
  EXPECT_THAT(loaded_, ElementsAre());
  ASSERT_TRUE(waitUntil([this] { return !loaded_.empty(); }));
  EXPECT_THAT(loaded_, ElementsAre(1.5));
  EXPECT_EQ(frame_.size(), QSize(8, 6));
  EXPECT_NE(recording_->thread, QThread::currentThread());
}

TEST_F(FrameLoaderTest, OfThoseAskedForMeanwhileOnlyTheNewestIsFetched) {
  loader_->load(1, {8, 6});
  ASSERT_TRUE(waitUntil([this] { return recording_->count() == 1; }));
  for (const double seconds : {2.0, 3.0, 4.0}) loader_->load(seconds, {8, 6});
  recording_->turns.release(4);
  ASSERT_TRUE(waitUntil([this] { return loaded_.size() == 2; }));
  EXPECT_THAT(loaded_, ElementsAre(1, 4));
  EXPECT_THAT(recording_->asked, ElementsAre(1, 4));
  loader_->load(5, {8, 6});
  ASSERT_TRUE(waitUntil([this] { return loaded_.size() == 3; }));
  EXPECT_THAT(loaded_, ElementsAre(1, 4, 5));
}

TEST_F(FrameLoaderTest, GoesWithoutWaitingForAPicture) {
  loader_->load(1, {8, 6});
  loader_->load(2, {8, 6});
  ASSERT_TRUE(waitUntil([this] { return recording_->count() == 1; }));
  loader_.reset();
  recording_->turns.release(2);
  // The last to know of the recording is the thread that still works on it.
  EXPECT_TRUE(waitUntil([this] { return recording_.use_count() == 1; }));
  EXPECT_EQ(recording_->count(), 1U);
  EXPECT_THAT(loaded_, ElementsAre());
}

}  // namespace
}  // namespace Nimbrel
