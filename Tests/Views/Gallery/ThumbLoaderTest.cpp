#include "Views/Gallery/ThumbLoader.h"

#include "Support/Pictures.h"
#include "Support/TemporaryFolder.h"
#include "Support/Waiting.h"

#include <gmock/gmock.h>

#include <QMutex>
#include <QSemaphore>
#include <QThread>

#include <algorithm>
#include <filesystem>
#include <map>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using Testing::waitUntil;
using Places = std::vector<ThumbLoader::Place>;

/// Decodes nothing before the test lets it, and remembers what it was asked for.
class HeldDecoder {
 public:
  ~HeldDecoder() { release(1000); }

  [[nodiscard]] ThumbLoader::Decoder decoder() {
    return [this](const std::string& path, int maxPixel) {
      {
        const QMutexLocker lock(&mutex_);
        asked_.push_back(path);
        sides_.push_back(maxPixel);
        threads_.push_back(QThread::currentThread());
      }
      turns_.acquire();
      const QMutexLocker lock(&mutex_);
      if (broken_.contains(path)) return QImage();
      QImage image(4, 3, QImage::Format_RGB32);
      image.fill(Qt::white);
      return image;
    };
  }

  void release(int decodes) { turns_.release(decodes); }
  void breakFile(const std::string& path) {
    const QMutexLocker lock(&mutex_);
    broken_[path] = true;
  }
  void mendFile(const std::string& path) {
    const QMutexLocker lock(&mutex_);
    broken_.erase(path);
  }
  [[nodiscard]] std::vector<std::string> asked() const { return copyOf(asked_); }
  [[nodiscard]] std::vector<int> sides() const { return copyOf(sides_); }
  [[nodiscard]] std::vector<QThread*> threads() const { return copyOf(threads_); }
  [[nodiscard]] bool hasBegun(std::size_t decodes) const {
    return waitUntil([&] { return asked().size() == decodes; });
  }

 private:
  template <class T>
  std::vector<T> copyOf(const std::vector<T>& values) const {
    const QMutexLocker lock(&mutex_);
    return values;
  }

  mutable QMutex mutex_;
  std::vector<std::string> asked_;
  std::vector<int> sides_;
  std::vector<QThread*> threads_;
  std::map<std::string, bool> broken_;
  QSemaphore turns_;
};

class ThumbLoaderTest : public ::testing::Test {
 protected:
  ThumbLoaderTest() {
    QObject::connect(&loader_, &ThumbLoader::thumbLoaded, &loader_,
                     [this](const std::string& path, const QImage& image) {
                       thumbsLoaded_.push_back(path);
                       EXPECT_FALSE(image.isNull());
                       EXPECT_EQ(QThread::currentThread(), loader_.thread());
                     });
    QObject::connect(&loader_, &ThumbLoader::previewLoaded, &loader_,
                     [this](const std::string& path) { previewsLoaded_.push_back(path); });
  }
  // Before the loader waits for what it has begun.
  ~ThumbLoaderTest() override { held_.release(1000); }

  void showThumbs(const std::vector<std::string>& paths) { loader_.showThumbs(openPlaces(paths)); }
  void showPreviews(const std::vector<std::string>& paths) { loader_.showPreviews(openPlaces(paths)); }
  static Places openPlaces(const std::vector<std::string>& paths) {
    Places places;
    for (const auto& path : paths) places.push_back({.path = path, .isObscured = false});
    return places;
  }
  /// Lets everything be decoded that is still to be.
  void finish(std::size_t decodes) {
    held_.release(1000);
    ASSERT_TRUE(held_.hasBegun(decodes));
    ASSERT_TRUE(waitUntil([&] { return thumbsLoaded_.size() + previewsLoaded_.size() >= decodes; }));
  }

  HeldDecoder held_;
  ThumbCache thumbs_;
  GalleryPreviewCache previews_;
  std::vector<std::string> thumbsLoaded_;
  std::vector<std::string> previewsLoaded_;
  ThumbLoader loader_{thumbs_, previews_, held_.decoder()};
};

TEST_F(ThumbLoaderTest, TwoThumbnailsAreDecodedAtATimeInOtherThreads) {
  showThumbs({"a", "b", "c"});
  ASSERT_TRUE(held_.hasBegun(2));
  Testing::runEventLoopFor(std::chrono::milliseconds(20));
  EXPECT_THAT(held_.asked(), UnorderedElementsAre("a", "b"));
  finish(3);
  EXPECT_THAT(held_.sides(), ElementsAre(640, 640, 640));
  for (const auto* thread : held_.threads()) EXPECT_NE(thread, QThread::currentThread());
  for (const auto* path : {"a", "b", "c"}) EXPECT_TRUE(thumbs_.holds(path)) << path;
}

TEST_F(ThumbLoaderTest, APreviewIsDecodedBesideTheThumbnailsAndOneAtATime) {
  showThumbs({"a", "b", "c"});
  showPreviews({"a", "b"});
  ASSERT_TRUE(held_.hasBegun(3));
  EXPECT_EQ(std::ranges::count(held_.sides(), 1600), 1);
  finish(5);
  EXPECT_TRUE(previews_.holds("a"));
  EXPECT_TRUE(previews_.holds("b"));
}

TEST_F(ThumbLoaderTest, WhatCameOntoTheScreenLastGoesFirst) {
  showThumbs({"a", "b", "c", "d"});
  ASSERT_TRUE(held_.hasBegun(2));
  showThumbs({"a", "b", "c", "d", "e", "f"});
  for (std::size_t decodes = 3; decodes <= 6; ++decodes) {
    held_.release(1);
    ASSERT_TRUE(held_.hasBegun(decodes));
  }
  const auto asked = held_.asked();
  EXPECT_THAT(std::vector(asked.begin() + 2, asked.end()), ElementsAre("e", "f", "c", "d"));
}

TEST_F(ThumbLoaderTest, WhatIsScrolledAwayBeforeItsTurnIsNotDecoded) {
  showThumbs({"a", "b", "c"});
  ASSERT_TRUE(held_.hasBegun(2));
  showThumbs({"d"});
  finish(3);
  Testing::runEventLoopFor(std::chrono::milliseconds(20));
  EXPECT_THAT(held_.asked(), UnorderedElementsAre("a", "b", "d"));
}

TEST_F(ThumbLoaderTest, AThumbnailThatIsScrolledAwayWhileItIsDecodedIsCachedAllTheSame) {
  showThumbs({"a"});
  ASSERT_TRUE(held_.hasBegun(1));
  showThumbs({});
  finish(1);
  EXPECT_TRUE(thumbs_.holds("a"));
}

TEST_F(ThumbLoaderTest, APreviewThatIsScrolledAwayWhileItIsDecodedIsDropped) {
  showPreviews({"a"});
  ASSERT_TRUE(held_.hasBegun(1));
  showPreviews({"b"});
  held_.release(2);
  ASSERT_TRUE(waitUntil([&] { return previews_.holds("b"); }));
  EXPECT_FALSE(previews_.holds("a"));
  EXPECT_THAT(previewsLoaded_, ElementsAre("b"));
}

TEST_F(ThumbLoaderTest, AnObscuredShotIsNeverDecoded) {
  loader_.showThumbs({{.path = "a", .isObscured = true}, {.path = "b", .isObscured = false}});
  loader_.showPreviews({{.path = "a", .isObscured = true}});
  finish(1);
  Testing::runEventLoopFor(std::chrono::milliseconds(20));
  EXPECT_THAT(held_.asked(), ElementsAre("b"));
}

TEST_F(ThumbLoaderTest, AShotIsDecodedOnceItIsNoLongerObscured) {
  loader_.showThumbs({{.path = "a", .isObscured = true}});
  loader_.showThumbs({{.path = "a", .isObscured = false}});
  finish(1);
  EXPECT_TRUE(thumbs_.holds("a"));
}

TEST_F(ThumbLoaderTest, AShotObscuredBeforeItsTurnIsNotDecoded) {
  showThumbs({"a", "b", "c"});
  ASSERT_TRUE(held_.hasBegun(2));
  loader_.showThumbs({{.path = "a"}, {.path = "b"}, {.path = "c", .isObscured = true}});
  finish(2);
  Testing::runEventLoopFor(std::chrono::milliseconds(20));
  EXPECT_THAT(held_.asked(), UnorderedElementsAre("a", "b"));
}

TEST_F(ThumbLoaderTest, WhatIsCachedIsNotDecodedAgain) {
  thumbs_.store(CompactImage(Testing::picture(8, 8)), "a");
  previews_.store(Testing::picture(8, 8), "a");
  showThumbs({"a", "b"});
  showPreviews({"a"});
  finish(1);
  EXPECT_THAT(held_.asked(), ElementsAre("b"));
}

TEST_F(ThumbLoaderTest, WhatReappearsWhileItIsDecodedIsNotDecodedTwice) {
  showThumbs({"a"});
  ASSERT_TRUE(held_.hasBegun(1));
  showThumbs({});
  showThumbs({"a"});
  finish(1);
  Testing::runEventLoopFor(std::chrono::milliseconds(20));
  EXPECT_THAT(held_.asked(), ElementsAre("a"));
}

TEST_F(ThumbLoaderTest, AFileThatCannotBeDecodedIsTriedAgainWhenItNextAppearsAndNotBefore) {
  held_.breakFile("a");
  held_.release(1000);
  showThumbs({"a"});
  showThumbs({"a", "b"});
  ASSERT_TRUE(waitUntil([&] { return thumbs_.holds("b"); }));
  showThumbs({"a", "b", "c"});
  ASSERT_TRUE(waitUntil([&] { return thumbs_.holds("c"); }));
  EXPECT_EQ(std::ranges::count(held_.asked(), "a"), 1);
  EXPECT_THAT(thumbsLoaded_, UnorderedElementsAre("b", "c"));
  held_.mendFile("a");
  showThumbs({});
  showThumbs({"a"});
  ASSERT_TRUE(waitUntil([&] { return thumbs_.holds("a"); }));
}

TEST_F(ThumbLoaderTest, APreviewThatCannotBeDecodedIsNotCached) {
  held_.breakFile("a");
  held_.release(1000);
  showPreviews({"a", "b"});
  ASSERT_TRUE(waitUntil([&] { return previews_.holds("b"); }));
  EXPECT_FALSE(previews_.holds("a"));
  EXPECT_THAT(previewsLoaded_, ElementsAre("b"));
}

TEST(ThumbLoaderEnd, ALoaderThatGoesWhileItDecodesDeliversNothing) {
  HeldDecoder held;
  ThumbCache thumbs;
  GalleryPreviewCache previews;
  {
    ThumbLoader loader(thumbs, previews, held.decoder());
    loader.showThumbs({{.path = "a"}, {.path = "b"}, {.path = "c"}});
    ASSERT_TRUE(held.hasBegun(2));
    held.release(1000);
  }
  Testing::runEventLoopFor(std::chrono::milliseconds(10));
  EXPECT_EQ(thumbs.size(), 0U);
}

/// With files on the disk and what decodes them in the application.
class ThumbLoaderOfFiles : public ::testing::Test {
 protected:
  Testing::TemporaryFolder folder_;
  ThumbCache thumbs_;
  GalleryPreviewCache previews_;
  ThumbLoader loader_{thumbs_, previews_};
};

TEST_F(ThumbLoaderOfFiles, ThumbnailsAndPreviewsHaveTheirSizes) {
  const auto path = folder_.path("large.png");
  Testing::writePicture(path, 2000, 1000, 1);
  loader_.showThumbs({{.path = path}});
  loader_.showPreviews({{.path = path}});
  ASSERT_TRUE(waitUntil([&] { return thumbs_.holds(path) && previews_.holds(path); }));
  EXPECT_EQ(thumbs_.image(path).size(), QSize(640, 320));
  EXPECT_EQ(previews_.image(path).size(), QSize(1600, 800));
}

TEST_F(ThumbLoaderOfFiles, FilesThatAreGoneBrokenOrFoldersGiveNothing) {
  const auto broken = folder_.write("broken.png", "no picture");
  const auto folder = folder_.makeFolder("folder.png");
  const auto good = folder_.path("good.png");
  Testing::writePicture(good);
  loader_.showThumbs({{.path = folder_.path("gone.png")}, {.path = broken}, {.path = folder}, {.path = good}});
  ASSERT_TRUE(waitUntil([&] { return thumbs_.holds(good); }));
  EXPECT_EQ(thumbs_.size(), 1U);
}

TEST_F(ThumbLoaderOfFiles, AFileThatVanishesBeforeItsTurnAndComesBackIsShownThen) {
  const auto path = folder_.path("shot.png");
  const auto other = folder_.path("other.png");
  Testing::writePicture(path);
  Testing::writePicture(other);
  std::filesystem::remove(path);
  loader_.showThumbs({{.path = path}, {.path = other}});
  ASSERT_TRUE(waitUntil([&] { return thumbs_.holds(other); }));
  Testing::writePicture(path, 50, 40);
  ASSERT_TRUE(waitUntil([&] {
    loader_.showThumbs({});
    loader_.showThumbs({{.path = path}});
    return thumbs_.holds(path);
  }));
  EXPECT_EQ(thumbs_.image(path).size(), QSize(50, 40));
}

TEST_F(ThumbLoaderOfFiles, AFileReplacedInPlaceKeepsItsThumbnailWhileThatIsCached) {
  const auto path = folder_.path("shot.png");
  Testing::writePicture(path, 50, 40);
  loader_.showThumbs({{.path = path}});
  ASSERT_TRUE(waitUntil([&] { return thumbs_.holds(path); }));
  Testing::writePicture(path, 60, 40);
  loader_.showThumbs({});
  loader_.showThumbs({{.path = path}});
  Testing::runEventLoopFor(std::chrono::milliseconds(20));
  EXPECT_EQ(thumbs_.image(path).width(), 50);
}

}  // namespace
}  // namespace Nimbrel
