#include "Views/Sheets/DuplicatesView.h"

#include "Support/Waiting.h"
#include "Views/Sheets/DuplicateButton.h"
#include "Views/Sheets/DuplicateList.h"
#include "Views/Sheets/DuplicateStrip.h"
#include "Views/Sheets/SheetFixture.h"

#include <QGuiApplication>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>
#include <array>

namespace Nimbrel {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using Testing::waitUntil;

constexpr std::int64_t looks = 0xFF00;
constexpr std::int64_t otherLooks = 0x0F0F0F0F00000000;

class DuplicatesViewTest : public Testing::SheetFixture {
 protected:
  void openSheet() {
    sheet_ = new DuplicatesView(*store_, thumbs_, previews_, &window_);
    sheet_->open();
  }
  [[nodiscard]] QPushButton* confirm() const { return in<QPushButton>(*sheet_, "duplicates.confirm"); }
  [[nodiscard]] DuplicateButton* button(const std::string& name) const {
    for (auto* one : sheet_->findChildren<DuplicateButton*>()) {
      if (one->shot()->name == name && one->isVisibleTo(sheet_)) return one;
    }
    ADD_FAILURE() << name;
    return nullptr;
  }
  [[nodiscard]] std::vector<std::string> captions() const {
    std::vector<std::pair<int, std::string>> placed;
    for (const auto* label : sheet_->findChildren<QLabel*>(QStringLiteral("duplicateCaption"))) {
      placed.emplace_back(label->mapTo(sheet_.data(), QPoint()).y(), label->text().toStdString());
    }
    std::ranges::sort(placed);
    std::vector<std::string> texts;
    for (const auto& [y, text] : placed) texts.push_back(text);
    return texts;
  }

  QPointer<DuplicatesView> sheet_;
};

TEST_F(DuplicatesViewTest, WithoutAClickTheNewestOfEachGroupStays) {
  add({.name = "a1.png", .daysAgo = 1, .bytes = 100'000, .hash = looks});
  add({.name = "a2.png", .daysAgo = 2, .bytes = 200'000, .hash = looks});
  add({.name = "a3.png", .daysAgo = 3, .bytes = 300'000, .hash = looks});
  add({.name = "b1.png", .daysAgo = 0, .hash = otherLooks});
  add({.name = "b2.png", .daysAgo = 4, .bytes = 1'500'000, .hash = otherLooks});
  add({.name = "alone.png", .daysAgo = 1, .hash = 1});
  openSheet();
  EXPECT_EQ(sheet_->width(), 700);
  EXPECT_THAT(captions(), ElementsAre("3 similar · Yesterday", "2 similar · Today"));
  EXPECT_TRUE(button("a1.png")->isKeeper());
  EXPECT_FALSE(button("a2.png")->isKeeper());
  EXPECT_EQ(footerOf(*sheet_), "3 to trash · 2 MB");
  confirm()->click();
  EXPECT_THAT(trashed(), ElementsAre("a2.png", "a3.png", "b2.png"));
}

TEST_F(DuplicatesViewTest, AClickChoosesWhichOneStays) {
  add({.name = "a1.png", .daysAgo = 1, .hash = looks});
  add({.name = "a2.png", .daysAgo = 2, .favorite = true, .hash = looks});
  openSheet();
  QTest::mouseClick(button("a2.png"), Qt::LeftButton);
  EXPECT_TRUE(button("a2.png")->isKeeper());
  EXPECT_EQ(button("a2.png")->text(), QStringLiteral("Keep"));
  EXPECT_EQ(button("a1.png")->text(), QStringLiteral("Trash"));
  confirm()->click();
  EXPECT_THAT(trashed(), ElementsAre("a1.png"));
}

TEST_F(DuplicatesViewTest, FavouritesAreNotSpared) {
  add({.name = "a1.png", .daysAgo = 1, .hash = looks});
  add({.name = "a2.png", .daysAgo = 2, .favorite = true, .hash = looks});
  openSheet();
  confirm()->click();
  EXPECT_THAT(trashed(), ElementsAre("a2.png"));
}

TEST_F(DuplicatesViewTest, WithoutGroupsNothingIsSelected) {
  add({.name = "a.png", .hash = looks});
  add({.name = "without looks.png"});
  add({.name = "also without.png"});
  openSheet();
  EXPECT_EQ(placeholderOf(*sheet_), "No Duplicates: Nothing in the library looks repeated.");
  EXPECT_EQ(footerOf(*sheet_), "Nothing selected");
  EXPECT_FALSE(confirm()->isEnabled());
}

TEST_F(DuplicatesViewTest, AChosenShotThatIsGoneGivesWayToTheNewest) {
  add({.name = "a1.png", .daysAgo = 1, .hash = looks});
  add({.name = "a2.png", .daysAgo = 2, .hash = looks});
  const auto chosen = add({.name = "a3.png", .daysAgo = 3, .hash = looks});
  openSheet();
  button("a3.png")->click();
  store_->forget({chosen});
  EXPECT_TRUE(button("a1.png")->isKeeper());
  confirm()->click();
  EXPECT_THAT(trashed(), ElementsAre("a2.png"));
}

TEST_F(DuplicatesViewTest, ANewerShotMakesAnotherGroupOfIt) {
  add({.name = "a1.png", .daysAgo = 1, .hash = looks});
  add({.name = "a2.png", .daysAgo = 2, .hash = looks});
  openSheet();
  button("a2.png")->click();
  add({.name = "a0.png", .daysAgo = 0, .hash = looks});
  EXPECT_TRUE(button("a0.png")->isKeeper());
  EXPECT_EQ(footerOf(*sheet_), "2 to trash · 2 MB");
}

TEST_F(DuplicatesViewTest, AProtectedShotIsLockedAndMayBeChosenAllTheSame) {
  addFile("a2.png");
  add({.name = "a1.png", .daysAgo = 1, .hash = looks});
  add({.name = "a2.png", .daysAgo = 2, .hash = looks, .sensitive = {"Password"}});
  openSheet();
  auto* locked = button("a2.png");
  EXPECT_TRUE(locked->isLocked());
  EXPECT_EQ(locked->accessibleName(), QStringLiteral("Sensitive screenshot, Trash"));
  locked->click();
  EXPECT_TRUE(locked->isKeeper());
  EXPECT_TRUE(owner_->reasons.empty()) << "nobody is asked";
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_FALSE(locked->hasThumb());
  EXPECT_FALSE(thumbs_.holds(home_.desktop("a2.png")));
}

TEST_F(DuplicatesViewTest, ThumbnailsComeWhenTheyAreDecodedAndGoWhenTheShotIsLocked) {
  addFile("a1.png", 1);
  addFile("a2.png", 1);
  add({.name = "a1.png", .daysAgo = 1, .hash = looks});
  add({.name = "a2.png", .daysAgo = 2, .hash = looks, .sensitive = {"Email"}});
  store_->settings().protectSensitive.set(false);
  openSheet();
  ASSERT_TRUE(waitUntil([this] { return button("a1.png")->hasThumb() && button("a2.png")->hasThumb(); }));
  store_->settings().protectSensitive.set(true);
  EXPECT_TRUE(button("a2.png")->isLocked());
  EXPECT_FALSE(button("a2.png")->hasThumb());
}

TEST_F(DuplicatesViewTest, AFileThatIsGoneShowsNoPicture) {
  add({.name = "a1.png", .daysAgo = 1, .hash = looks});
  add({.name = "a2.png", .daysAgo = 2, .hash = looks});
  openSheet();
  Testing::runEventLoopFor(std::chrono::milliseconds(50));
  EXPECT_FALSE(button("a1.png")->hasThumb());
  EXPECT_TRUE(confirm()->isEnabled());
}

TEST_F(DuplicatesViewTest, AnyNumberOfShotsHasButtonsForWhatIsSeenAlone) {
  for (int i = 0; i < 300; ++i) {
    Shot shot;
    shot.name = std::to_string(i) + ".png";
    shot.path = home_.desktop(shot.name);
    shot.date = home_.now - Seconds(i);
    store_->database().setHash(store_->database().insert(shot), looks);
  }
  reload();
  openSheet();
  EXPECT_LT(sheet_->findChildren<DuplicateButton*>().size(), 10);
  auto* strip = sheet_->findChild<DuplicateStrip*>();
  auto* bar = strip->findChild<QScrollArea*>()->horizontalScrollBar();
  bar->setValue(bar->maximum());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_LT(sheet_->findChildren<DuplicateButton*>().size(), 12);
  button("299.png")->click();
  EXPECT_TRUE(button("299.png")->isKeeper());
  confirm()->click();
  EXPECT_EQ(trashed().size(), 299U);
}

TEST_F(DuplicatesViewTest, TheWheelOverAStripScrollsTheList) {
  for (int group = 0; group < 4; ++group) {
    const auto name = std::to_string(group);
    add({.name = name + "a.png", .daysAgo = 1, .hash = otherLooks >> (8 * group)});
    add({.name = name + "b.png", .daysAgo = 2, .hash = otherLooks >> (8 * group)});
  }
  openSheet();
  auto* list = in<DuplicateList>(*sheet_, "duplicateList");
  auto* strip = sheet_->findChild<DuplicateStrip*>()->findChild<QScrollArea*>();
  EXPECT_EQ(strip->verticalScrollBar()->maximum(), 0);
  ASSERT_GT(list->verticalScrollBar()->maximum(), 0);
  const QPointF pointer(100, 50);
  QWheelEvent wheel(pointer, strip->viewport()->mapToGlobal(pointer), {}, {0, -120}, Qt::NoButton, {},
                    Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(strip->viewport(), &wheel);
  if (!wheel.isAccepted()) QCoreApplication::sendEvent(list->viewport(), &wheel);
  EXPECT_GT(list->verticalScrollBar()->value(), 0);
}

TEST_F(DuplicatesViewTest, TheArrowsGoAlongTheStripAndSpaceChooses) {
  for (int i = 0; i < 9; ++i) add({.name = std::to_string(i) + ".png", .daysAgo = double(i), .hash = looks});
  openSheet();
  ASSERT_TRUE(QTest::qWaitForWindowActive(sheet_));
  button("0.png")->setFocus();
  for (int i = 0; i < 8; ++i) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_EQ(QApplication::focusWidget(), button("8.png"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  EXPECT_TRUE(button("8.png")->isKeeper());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  EXPECT_EQ(trashed().size(), 8U) << "Return is the default button's";
}

TEST_F(DuplicatesViewTest, InScriptsFromTheRightTheFirstStandsThere) {
  add({.name = "a1.png", .daysAgo = 1, .hash = looks});
  add({.name = "a2.png", .daysAgo = 2, .hash = looks});
  const auto restore = qScopeGuard([] { QGuiApplication::setLayoutDirection(Qt::LeftToRight); });
  QGuiApplication::setLayoutDirection(Qt::RightToLeft);
  openSheet();
  const auto x = [&](const char* name) { return button(name)->mapTo(sheet_.data(), QPoint()).x(); };
  EXPECT_GT(x("a1.png"), x("a2.png"));
}

TEST_F(DuplicatesViewTest, Pictures) {
  for (int i = 0; i < 5; ++i) {
    const auto name = "a" + std::to_string(i) + ".png";
    addFile(name, 3);
    add({.name = name, .daysAgo = i / 10.0, .bytes = 400'000, .hash = looks});
  }
  for (int i = 0; i < 3; ++i) {
    const auto name = "b" + std::to_string(i) + ".png";
    addFile(name, 7);
    add({.name = name, .daysAgo = 1 + i / 10.0, .bytes = 600'000, .hash = otherLooks});
  }
  add({.name = "c0.png", .daysAgo = 4, .hash = 0x7777777777777777, .sensitive = {"Password"}});
  add({.name = "c1.png", .daysAgo = 5, .hash = 0x7777777777777777, .sensitive = {"Password"}});
  openSheet();
  button("b1.png")->click();
  ASSERT_TRUE(waitUntil([this] {
    return std::ranges::all_of(std::array{"a0.png", "a1.png", "a2.png", "a3.png", "b0.png", "b1.png", "b2.png"},
                               [this](const char* name) { return button(name)->hasThumb(); });
  }));
  keepPictures(*sheet_, QStringLiteral("sheet-duplicates"));
  const auto image = sheet_->grab().toImage();
  const auto edge = [&](const char* name) {
    return image.pixelColor(button(name)->mapTo(sheet_.data(), QPoint(1, DuplicateButton::thumbHeight / 2)));
  };
  EXPECT_EQ(edge("b1.png"), themeColor(Token::Accent));
  EXPECT_NE(edge("b2.png"), themeColor(Token::Accent));
  const auto* caption = sheet_->findChild<QLabel*>(QStringLiteral("duplicateCaption"));
  EXPECT_EQ(caption->palette().color(caption->foregroundRole()), themeColor(Token::Secondary));
}

}  // namespace

}  // namespace Nimbrel
