#include "Views/Sheets/ShrinkView.h"

#include "Support/Pictures.h"
#include "Support/Waiting.h"
#include "Views/Sheets/SheetFixture.h"

#include <QCheckBox>
#include <QPushButton>
#include <QSlider>
#include <QTableView>
#include <QTest>

#include <filesystem>

namespace Nimbrel {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Testing::waitUntil;

class ShrinkViewTest : public Testing::SheetFixture {
 protected:
  void openSheet() {
    sheet_ = new ShrinkView(*store_, &window_);
    sheet_->open();
  }
  /// Shots that become smaller.
  void addShrinkable(int count) {
    for (int i = 0; i < count; ++i) {
      const auto name = "Screenshot " + std::to_string(i) + ".png";
      Testing::writePicture(Testing::grainyPicture(160, 120, i), home_.desktop(name));
      add({.name = name,
           .bytes = static_cast<std::int64_t>(std::filesystem::file_size(home_.desktop(name))),
           .filed = true});
    }
  }
  [[nodiscard]] QPushButton* confirm() const { return in<QPushButton>(*sheet_, "shrink.confirm"); }
  [[nodiscard]] bool isOpen() const { return sheet_ && sheet_->isVisible(); }

  QPointer<ShrinkView> sheet_;
};

TEST_F(ShrinkViewTest, ListsWhatIsInTheLibraryTheLargestFirst) {
  add({.name = "small.png", .bytes = 388'000});
  add({.name = "large.png", .bytes = 2'400'000});
  add({.name = "waiting.png", .bytes = 9'000'000, .filed = false});
  add({.name = "done.HEIC", .bytes = 9'000'000});
  openSheet();
  EXPECT_EQ(sheet_->width(), 620);
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("large.png", "small.png"));
  EXPECT_EQ(footerOf(*sheet_), "2 shots · 2.8 MB");
  in<QCheckBox>(*sheet_, "shrink.filedOnly")->click();
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("waiting.png", "large.png", "small.png"));
}

TEST_F(ShrinkViewTest, WithNothingFiledItSaysThatEverythingIsHeic) {
  add({.name = "waiting.png", .filed = false});
  openSheet();
  EXPECT_EQ(placeholderOf(*sheet_), "Nothing to Shrink: Everything is already HEIC.");
  EXPECT_FALSE(confirm()->isEnabled());
}

TEST_F(ShrinkViewTest, TheSliderSetsTheQualityInStepsOfFiveHundredths) {
  openSheet();
  auto* slider = in<QSlider>(*sheet_, "shrink.quality");
  const auto* text = in<QLabel>(*sheet_, "shrink.qualityText");
  EXPECT_EQ(text->text(), QStringLiteral("0.90"));
  QTest::keyClick(slider, Qt::Key_Right);
  EXPECT_DOUBLE_EQ(store_->settings().heicQuality(), 0.95);
  EXPECT_EQ(text->text(), QStringLiteral("0.95"));
  QTest::keyClick(slider, Qt::Key_Home);
  EXPECT_DOUBLE_EQ(store_->settings().heicQuality(), 0.6);
  QTest::keyClick(slider, Qt::Key_End);
  EXPECT_DOUBLE_EQ(store_->settings().heicQuality(), 1.0);
  EXPECT_EQ(text->text(), QStringLiteral("1.00"));
}

TEST_F(ShrinkViewTest, AQualityBetweenTheStepsStaysUntilTheSliderMoves) {
  store_->settings().heicQuality.set(0.87);
  openSheet();
  EXPECT_EQ(in<QLabel>(*sheet_, "shrink.qualityText")->text(), QStringLiteral("0.87"));
  EXPECT_DOUBLE_EQ(store_->settings().heicQuality(), 0.87);
}

TEST_F(ShrinkViewTest, StaysWithItsProgressUntilItIsDone) {
  addShrinkable(3);
  openSheet();
  confirm()->click();
  EXPECT_TRUE(isOpen());
  EXPECT_EQ(footerOf(*sheet_), "Shrinking 1 of 3…");
  EXPECT_FALSE(confirm()->isEnabled());
  ASSERT_TRUE(waitUntil([this] { return !isOpen(); }));
  EXPECT_EQ(trashed().size(), 3U);
}

TEST_F(ShrinkViewTest, CancelStopsBeforeTheNextShotAndCloses) {
  addShrinkable(4);
  openSheet();
  QObject::connect(store_.get(), &Store::shrinkProgressChanged, sheet_, [this] {
    if (store_->shrinkProgress() && store_->shrinkProgress()->done == 1) {
      in<QPushButton>(*sheet_, "shrink.cancel")->click();
    }
  });
  confirm()->click();
  ASSERT_TRUE(waitUntil([this] { return !isOpen(); }));
  EXPECT_EQ(trashed().size(), 1U);
  EXPECT_FALSE(store_->shrinkProgress());
}

TEST_F(ShrinkViewTest, ClosingTheWindowCancelsToo) {
  addShrinkable(3);
  openSheet();
  confirm()->click();
  sheet_->close();
  EXPECT_FALSE(store_->shrinkProgress());
  EXPECT_THAT(trash_->asked, IsEmpty());
  EXPECT_EQ(store_->status(), "Nothing to shrink");
}

TEST_F(ShrinkViewTest, ACatalogueThatChangesWhileItShrinksDoesNotDisturbIt) {
  addShrinkable(3);
  openSheet();
  QObject::connect(store_.get(), &Store::shrinkProgressChanged, store_.get(), [this] {
    if (store_->shrinkProgress() && store_->shrinkProgress()->done == 1) add({.name = "more.png"});
  });
  confirm()->click();
  ASSERT_TRUE(waitUntil([this] { return !isOpen(); }));
  EXPECT_EQ(trashed().size(), 3U);
}

TEST_F(ShrinkViewTest, WaitsForWhatIsBeingShrunkAlreadyAndClosesAfterItsOwn) {
  addShrinkable(3);
  openSheet();
  store_->recompressInBackground({shot("Screenshot 0.png")});
  confirm()->click();
  EXPECT_TRUE(isOpen());
  ASSERT_TRUE(waitUntil([this] { return !isOpen(); }));
  EXPECT_EQ(trash_->asked.size(), 2U);
  EXPECT_THAT(trashed(), ::testing::UnorderedElementsAre("Screenshot 1.png", "Screenshot 2.png"));
}

TEST_F(ShrinkViewTest, ProtectedShotsAreNamedByWhatTheyAre) {
  add({.name = "password.png", .sensitive = {"Password"}});
  openSheet();
  EXPECT_THAT(columnOf(*sheet_, 0), ElementsAre("Sensitive screenshot"));
}

TEST_F(ShrinkViewTest, Pictures) {
  add({.name = "halden-budget.png", .bytes = 2'400'000});
  add({.name = "Halden ground site.png", .bytes = 1'900'000});
  add({.name = "hidden.png", .bytes = 1'100'000, .sensitive = {"Password"}});
  add({.name = "November plan.png", .bytes = 986'000});
  openSheet();
  keepPictures(*sheet_, QStringLiteral("sheet-shrink"));
  store_->forget(store_->shots());
  EXPECT_FALSE(confirm()->isEnabled());
  keepPictures(*sheet_, QStringLiteral("sheet-shrink-empty"));
}

}  // namespace

}  // namespace Nimbrel
