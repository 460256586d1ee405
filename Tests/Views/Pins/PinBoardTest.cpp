#include "Views/Pins/PinBoard.h"

#include "Support/FakeWindowStacking.h"
#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Pins/PinButton.h"
#include "Views/Sheets/SheetFixture.h"

#include <QPointer>
#include <QSemaphore>
#include <QTest>
#include <QThread>

#include <atomic>
#include <filesystem>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

constexpr int gateCount = 1000;

QImage plain(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::blue);
  return image;
}

class PinBoardTest : public Testing::SheetFixture {
 protected:
  ~PinBoardTest() override { gate_.release(gateCount); }

  /// A shot with a file of 240 x 160 pixels.
  ShotPtr addPicture(const std::string& name, const std::vector<std::string>& sensitive = {}) {
    addFile(name);
    return add({.name = name, .sensitive = sensitive});
  }
  /// The same with a picture that the gallery has shown.
  ShotPtr addPreviewed(const std::string& name, const std::vector<std::string>& sensitive = {}) {
    auto shot = addPicture(name, sensitive);
    previews_.store(plain(240, 160), shot->path);
    return shot;
  }
  /// A shot of 2560 x 1440 pixels.
  ShotPtr addLarge(const std::string& name) {
    Testing::writePicture(home_.desktop(name), 2560, 1440, 1);
    return add({.name = name});
  }
  [[nodiscard]] bool comesToHold(std::size_t pins) const {
    return waitUntil([this, pins] { return board_->count() == pins; });
  }
  void press(const PinnedView& view, const char* name) const {
    view.findChild<PinButton*>(QString::fromLatin1(name))->click();
  }
  void unlock(const ShotPtr& shot) {
    store_->withAccess({shot}, [] {});
    owner_->decide(true);
  }
  /// Everything that was begun is done, and what it led to.
  void finish() { board_.reset(); }
  void holdDecoders() { gate_.acquire(gateCount); }
  void letDecodersGoOn() { gate_.release(gateCount); }

  Testing::FakeWindowStacking stacking_;
  std::atomic_int decoded_ = 0;
  std::atomic_bool decodedInMainThread_ = false;
  QSemaphore gate_{gateCount};  ///< a decoder waits for it
  std::unique_ptr<PinBoard> board_ = std::make_unique<PinBoard>(
      *store_, previews_, stacking_, [this](const std::string& path, int maxPixel) -> QImage {
        ++decoded_;
        if (QThread::currentThread() == QCoreApplication::instance()->thread()) decodedInMainThread_ = true;
        gate_.acquire();
        gate_.release();
        return path.ends_with("broken.png") ? QImage() : plain(2560, 1440).scaledToWidth(std::min(2560, maxPixel));
      });
};

TEST_F(PinBoardTest, AShotIsPinnedOnceItsPictureIsDecoded) {
  const auto shot = addPicture("a.png");
  board_->pin(shot);
  EXPECT_EQ(board_->window(shot->id), nullptr);
  ASSERT_TRUE(comesToHold(1));
  const auto* window = board_->window(shot->id);
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->windowTitle(), QStringLiteral("a.png"));
  EXPECT_EQ(window->accessibleName(), QStringLiteral("a.png"));
  EXPECT_FALSE(decodedInMainThread_);
}

TEST_F(PinBoardTest, AShotThatTheGalleryShowedIsPinnedAtOnce) {
  const auto shot = addPreviewed("a.png");
  board_->pin(shot);
  ASSERT_NE(board_->window(shot->id), nullptr);
  EXPECT_TRUE(board_->window(shot->id)->isVisible());
}

TEST_F(PinBoardTest, WhatIsKeptOfAFormerFileOfThatNameIsNotPinned) {
  const auto shot = addPicture("a.png");
  previews_.store(plain(300, 160), shot->path);
  board_->pin(shot);
  EXPECT_EQ(board_->window(shot->id), nullptr);
  EXPECT_TRUE(comesToHold(1));
}

TEST_F(PinBoardTest, NothingOpensWhileTheScreenIsTaken) {
  const auto decoding = addPicture("a.png");
  const auto secret = addPicture("b.png", {"Password"});
  unlock(secret);
  holdDecoders();
  board_->pin(decoding);
  board_->pin(shot("b.png"));
  board_->setHeldBack(true);
  letDecodersGoOn();
  const auto previewed = addPreviewed("c.png");
  board_->pin(previewed);
  ASSERT_TRUE(waitUntil([this] { return decoded_ == 3; }));
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(board_->count(), 0U);
  store_->lockSensitive();
  board_->setHeldBack(false);
  EXPECT_TRUE(comesToHold(2));
  EXPECT_NE(board_->window(decoding->id), nullptr);
  EXPECT_NE(board_->window(previewed->id), nullptr);
}

TEST_F(PinBoardTest, MorePixelsThanThoseOfThePreviewFollow) {
  const auto shot = addLarge("a.png");
  previews_.store(plain(1600, 900), shot->path);
  board_->pin(shot);
  ASSERT_NE(board_->window(shot->id), nullptr);
  EXPECT_EQ(board_->window(shot->id)->picture().width(), 1600);
  const auto place = board_->window(shot->id)->geometry();
  EXPECT_TRUE(waitUntil(
      [&] { return board_->window(shot->id)->picture().cacheKey() != previews_.image(shot->path).cacheKey(); }));
  EXPECT_EQ(board_->window(shot->id)->geometry(), place);
}

TEST_F(PinBoardTest, WithoutMorePixelsThePreviewStays) {
  const auto shot = addLarge("broken.png");
  previews_.store(plain(1600, 900), shot->path);
  board_->pin(shot);
  ASSERT_TRUE(waitUntil([this] { return decoded_ == 1; }));
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  ASSERT_NE(board_->window(shot->id), nullptr);
  EXPECT_EQ(board_->window(shot->id)->picture().width(), 1600);
}

TEST_F(PinBoardTest, AShotIsPinnedOnce) {
  const auto shot = addPicture("a.png");
  board_->pin(shot);
  board_->pin(shot);
  ASSERT_TRUE(comesToHold(1));
  const auto* window = board_->window(shot->id);
  board_->pin(shot);
  EXPECT_EQ(board_->window(shot->id), window);
  finish();
  EXPECT_EQ(decoded_, 1);
}

TEST_F(PinBoardTest, AnIdThatCameAgainIsAnotherShot) {
  const auto shot = addPreviewed("a.png");
  board_->pin(shot);
  auto other = *shot;
  other.added = shot->added + Seconds(1);
  other.name = "b.png";
  board_->pin(std::make_shared<const Shot>(other));
  EXPECT_EQ(board_->count(), 1U);
  EXPECT_EQ(board_->window(shot->id)->windowTitle(), QStringLiteral("b.png"));
}

TEST_F(PinBoardTest, AFileThatCannotBeReadIsNotPinnedWithoutAWord) {
  store_->setStatus("");
  const auto shot = addPicture("broken.png");
  board_->pin(shot);
  ASSERT_TRUE(waitUntil([this] { return decoded_ == 1; }));
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(board_->count(), 0U);
  EXPECT_EQ(store_->status(), "");
  board_->pin(shot);
  EXPECT_TRUE(waitUntil([this] { return decoded_ == 2; })) << "it is tried again when that is asked for";
}

TEST_F(PinBoardTest, AFileThatHasGoneIsNotPinnedFromItsPreview) {
  const auto shot = addPreviewed("broken.png");
  std::filesystem::remove(shot->path);
  board_->pin(shot);
  EXPECT_EQ(board_->count(), 0U);
  finish();
}

TEST_F(PinBoardTest, EachFurtherPinStandsFurtherDownAndLeft) {
  std::vector<QPoint> places;
  for (const auto* name : {"a.png", "b.png", "c.png"}) {
    const auto shot = addPreviewed(name);
    board_->pin(shot);
    places.push_back(board_->window(shot->id)->pos());
  }
  EXPECT_EQ(places[1] - places[0], QPoint(-26, 26));
  EXPECT_EQ(places[2] - places[0], QPoint(-52, 52));
}

TEST_F(PinBoardTest, APinTakesThePlaceThatTheNumberOfOthersGives) {
  const auto first = addPreviewed("a.png");
  const auto second = addPreviewed("b.png");
  const auto third = addPreviewed("c.png");
  board_->pin(first);
  board_->pin(second);
  const auto place = board_->window(second->id)->pos();
  board_->unpin(first->id);
  board_->pin(third);
  EXPECT_EQ(board_->window(third->id)->pos(), place);
}

TEST_F(PinBoardTest, UnpinClosesTheWindow) {
  const auto shot = addPreviewed("a.png");
  board_->pin(shot);
  const QPointer<const QWidget> window = board_->window(shot->id);
  press(*board_->window(shot->id), "pin.unpin");
  EXPECT_EQ(board_->count(), 0U);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
  board_->unpin(shot->id);
  EXPECT_EQ(board_->count(), 0U);
}

TEST_F(PinBoardTest, EscapeClosesTheWindow) {
  const auto shot = addPreviewed("a.png");
  board_->pin(shot);
  QTest::keyClick(board_->window(shot->id), Qt::Key_Escape);
  EXPECT_EQ(board_->count(), 0U);
}

TEST_F(PinBoardTest, UnpinAllClosesWhatIsThereAndWhatIsOnItsWay) {
  board_->pin(addPreviewed("a.png"));
  board_->pin(addPreviewed("b.png"));
  ASSERT_TRUE(waitUntil([this] { return decoded_ == 2; }));
  holdDecoders();
  board_->pin(addPicture("c.png"));
  ASSERT_TRUE(waitUntil([this] { return decoded_ == 3; }));
  board_->unpinAll();
  EXPECT_EQ(board_->count(), 0U);
  letDecodersGoOn();
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(board_->count(), 0U);
}

TEST_F(PinBoardTest, LockingClosesPinsOfSensitiveShotsAlone) {
  const auto open = addPreviewed("a.png");
  const auto secret = addPreviewed("b.png", {"Password"});
  unlock(secret);
  board_->pin(open);
  board_->pin(shot("b.png"));
  ASSERT_EQ(board_->count(), 2U);
  store_->lockSensitive();
  EXPECT_NE(board_->window(open->id), nullptr);
  EXPECT_EQ(board_->window(secret->id), nullptr);
}

TEST_F(PinBoardTest, LockingStopsAPinOnItsWay) {
  const auto secret = addPicture("b.png", {"Password"});
  unlock(secret);
  holdDecoders();
  board_->pin(shot("b.png"));
  ASSERT_TRUE(waitUntil([this] { return decoded_ == 1; }));
  store_->lockSensitive();
  letDecodersGoOn();
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(board_->count(), 0U);
}

TEST_F(PinBoardTest, APinWhoseShotTurnsOutToBeSensitiveCloses) {
  const auto shot = addPreviewed("a.png");
  board_->pin(shot);
  store_->database().setOCR(shot->id, "the key is under the mat", {"Password"});
  store_->reload();
  EXPECT_EQ(board_->count(), 0U);
}

TEST_F(PinBoardTest, APinOutlivesItsFileAndItsRow) {
  const auto shot = addPreviewed("a.png");
  board_->pin(shot);
  std::filesystem::remove(shot->path);
  store_->forget({shot});
  ASSERT_NE(board_->window(shot->id), nullptr);
  EXPECT_TRUE(board_->window(shot->id)->isVisible());
}

TEST_F(PinBoardTest, OpenHandsTheFileToItsApplication) {
  const auto shot = addPreviewed("a.png");
  board_->pin(shot);
  press(*board_->window(shot->id), "pin.open");
  EXPECT_THAT(workspace_->files, ::testing::ElementsAre(shot->path));
  EXPECT_EQ(board_->count(), 1U);
}

TEST_F(PinBoardTest, OpenFindsAFileThatWasRenamed) {
  const auto shot = addPreviewed("a.png");
  board_->pin(shot);
  store_->rename(*shot, "b.png");
  press(*board_->window(shot->id), "pin.open");
  EXPECT_THAT(workspace_->files, ::testing::ElementsAre(home_.desktop("b.png")));
}

TEST_F(PinBoardTest, WhereTheDesktopDoesNotKeepPinsAboveThatIsToldOnce) {
  stacking_.places = false;
  board_->pin(addPreviewed("a.png"));
  EXPECT_EQ(store_->status(), "This desktop does not keep pins above other windows");
  store_->setStatus("");
  board_->pin(addPreviewed("b.png"));
  EXPECT_EQ(store_->status(), "");
}

TEST_F(PinBoardTest, WhereItDoesNothingIsTold) {
  store_->setStatus("");
  board_->pin(addPreviewed("a.png"));
  EXPECT_EQ(store_->status(), "");
}

TEST_F(PinBoardTest, PinsGoWithTheBoard) {
  const auto shot = addPreviewed("a.png");
  board_->pin(shot);
  const QPointer<const QWidget> window = board_->window(shot->id);
  board_.reset();
  EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace Nimbrel
