// What is told of screenshots that have just come.

#include "CaptureFixture.h"

#include <algorithm>
#include <string>
#include <vector>

namespace Nimbrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FreshShotTest : public Testing::CaptureFixture {
 protected:
  void SetUp() override {
    open();
    QObject::connect(store_.get(), &Store::freshShotArrived, store_.get(), [this](const ShotPtr& shot) {
      told_.push_back(shot->name);
      wasAmongShots_ = std::ranges::find(store_->shots(), shot) != store_->shots().end();
    });
  }
  /// A screenshot in a source folder, so old.
  void put(const std::string& name, double age) const {
    const auto path = home_.addFile(home_.desktop(name));
    Testing::setModificationTime(path, secondsSince1970(home_.now) - age);
  }
  void scanTwice() {
    store_->scan();
    store_->scan();
  }

  std::vector<std::string> told_;
  bool wasAmongShots_ = false;
};

TEST_F(FreshShotTest, ACaptureIsTold) {
  take();
  ASSERT_EQ(told_.size(), 1U);
  EXPECT_EQ(told_.front(), store_->shots().front()->name);
  EXPECT_TRUE(wasAmongShots_);
}

TEST_F(FreshShotTest, ARecordingAndACaptureThatWasCancelledAreNot) {
  record();
  begin(CaptureMode::area);
  tool_->end(0);
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(FreshShotTest, WhatTheFirstScanFindsIsNotTold) {
  put("Screenshot 1.png", 1);
  scanTwice();
  EXPECT_EQ(store_->shots().size(), 1U);
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(FreshShotTest, WhatALaterScanFindsIsToldOnce) {
  store_->scan();
  put("Screenshot 1.png", 1);
  scanTwice();
  EXPECT_THAT(told_, ElementsAre("Screenshot 1.png"));
  EXPECT_TRUE(wasAmongShots_);
}

TEST_F(FreshShotTest, OfSeveralTheNewestIsTold) {
  store_->scan();
  put("Screenshot old.png", 60);
  put("Screenshot new.png", 5);
  put("Screenshot middle.png", 20);
  store_->scan();
  EXPECT_THAT(told_, ElementsAre("Screenshot new.png"));
  EXPECT_EQ(store_->status(), "Added 3 shots");
}

TEST_F(FreshShotTest, AFileOlderThanTwoMinutesIsNotTold) {
  store_->scan();
  put("Screenshot 1.png", 121);
  store_->scan();
  EXPECT_THAT(told_, IsEmpty());
  put("Screenshot 2.png", 120);
  store_->scan();
  EXPECT_THAT(told_, ElementsAre("Screenshot 2.png"));
}

TEST_F(FreshShotTest, AFileFromTheFutureIsNotTold) {
  store_->scan();
  put("Screenshot 1.png", -1);
  store_->scan();
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(FreshShotTest, OneThatIsFiledAtOnceIsToldAsItIsThen) {
  store_->settings().autoFile.set(true);
  store_->settings().renameOnFile.set(false);
  store_->scan();
  ShotPtr fresh;
  QObject::connect(store_.get(), &Store::freshShotArrived, store_.get(), [&](const ShotPtr& shot) { fresh = shot; });
  put("Screenshot 1.png", 1);
  store_->scan();
  ASSERT_NE(fresh, nullptr);
  EXPECT_TRUE(fresh->filed);
  EXPECT_TRUE(fresh->path.starts_with(home_.path("Pictures/Nimbrel/"))) << fresh->path;
}

TEST_F(FreshShotTest, OfAWindowAndItsCompanionOneAloneTells) {
  const auto companion = home_.open(ProcessRole::menuBarCompanion);
  std::vector<std::string> toldByCompanion;
  QObject::connect(companion.get(), &Store::freshShotArrived, companion.get(),
                   [&](const ShotPtr& shot) { toldByCompanion.push_back(shot->name); });
  take();
  companion->scan();
  EXPECT_EQ(told_.size(), 1U);
  EXPECT_THAT(toldByCompanion, IsEmpty()) << "the one that took it has told";
  put("Screenshot 1.png", 1);
  companion->scan();
  store_->scan();
  store_->scan();
  EXPECT_THAT(toldByCompanion, ElementsAre("Screenshot 1.png"));
  EXPECT_EQ(told_.size(), 1U) << "the one that found it has told";
}

}  // namespace
}  // namespace Nimbrel
