// Pins of the files that there may be, as they are decoded from the disk.

#include "Views/Pins/PinBoard.h"

#include "Support/FakeWindowStacking.h"
#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Sheets/SheetFixture.h"

#include <chrono>

namespace Nimbrel {
namespace {

using Testing::waitUntil;

class PinFilesTest : public Testing::SheetFixture {
 protected:
  ShotPtr addPicture(const std::string& name, const QImage& picture) {
    Testing::writePicture(picture, home_.desktop(name));
    return add({.name = name});
  }
  /// The window of a shot, once it is there.
  PinnedView* pinned(const ShotPtr& shot) {
    board_.pin(shot);
    EXPECT_TRUE(waitUntil([&] { return board_.window(shot->id) != nullptr; })) << shot->name;
    return board_.window(shot->id);
  }

  Testing::FakeWindowStacking stacking_;
  PinBoard board_{*store_, previews_, stacking_};
};

TEST_F(PinFilesTest, ASinglePixelIsShownInTheMiddleOfTheSmallestWindow) {
  auto* pin = pinned(addPicture("a.png", Testing::picture(1, 1)));
  ASSERT_NE(pin, nullptr);
  EXPECT_EQ(pin->size(), QSize(160, 120));
  EXPECT_EQ(pin->picturePlace(), QRectF(79.5, 59.5, 1, 1));
  EXPECT_FALSE(pin->grab().isNull());
}

TEST_F(PinFilesTest, AVeryWidePictureIsShownAcrossItsWindow) {
  auto* pin = pinned(addPicture("a.png", Testing::picture(30'000, 100)));
  ASSERT_NE(pin, nullptr);
  EXPECT_EQ(pin->size(), QSize(460, 120));
  EXPECT_NEAR(pin->picturePlace().width(), 460, 0.1);
  EXPECT_NEAR(pin->picturePlace().height(), 1.5, 0.1);
  EXPECT_FALSE(pin->grab().isNull());
}

TEST_F(PinFilesTest, WhatIsNoPictureIsNotPinnedWithoutAWord) {
  home_.addFile(home_.desktop("a.png"));
  const auto broken = add({.name = "a.png"});
  const auto whole = addPicture("b.png", Testing::picture(64, 48));
  store_->setStatus("");
  board_.pin(broken);
  ASSERT_NE(pinned(whole), nullptr);
  Testing::runEventLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(board_.window(broken->id), nullptr);
  EXPECT_EQ(store_->status(), "");
}

TEST_F(PinFilesTest, AFileThatIsReplacedLeavesItsPinAsItWas) {
  const auto shot = addPicture("a.png", Testing::picture(300, 200, 1));
  auto* pin = pinned(shot);
  ASSERT_NE(pin, nullptr);
  const auto before = pin->picture();
  Testing::writePicture(Testing::picture(100, 400, 2), shot->path);
  reload();
  EXPECT_EQ(board_.window(shot->id), pin);
  EXPECT_EQ(pin->picture(), before);
}

TEST_F(PinFilesTest, AShotThatWasRenamedMeanwhileIsPinnedFromWhereItIs) {
  const auto before = addPicture("a.png", Testing::picture(300, 200));
  store_->rename(*before, "b.png");
  auto* pin = pinned(before);
  ASSERT_NE(pin, nullptr);
  EXPECT_EQ(pin->windowTitle(), QStringLiteral("b.png"));
}

TEST_F(PinFilesTest, AShotThatTurnedOutToBeSensitiveMeanwhileIsNotPinned) {
  const auto before = addPicture("a.png", Testing::picture(300, 200));
  previews_.store(Testing::picture(300, 200), before->path);
  store_->database().setOCR(before->id, "the key is under the mat", {"Password"});
  reload();
  board_.pin(before);
  EXPECT_EQ(board_.window(before->id), nullptr);
}

}  // namespace
}  // namespace Nimbrel
